#include "calc/formule.h"

#include "support/case_rows.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace veltora {
namespace {

tableVariables variables() {
  tableVariables table;
  table.definir("D1", 4.0);
  table.definir("x", -2.0);
  return table;
}

TEST(Formule, ValeursEtFormesImprimees) {
  const tableVariables table = variables();
  for (const CaseRow& cas : caseRows("calc/cases/formulas.txt", "formulas")) {
    formule f;
    EXPECT_EQ(f.analyser(cas[0]), cas[1] == "yes") << cas;
    EXPECT_DOUBLE_EQ(f.evaluer(table, false), cas.number(2)) << cas;
    std::string texte;
    f.imprimer(texte);
    EXPECT_EQ(texte, cas[3]) << cas;
  }
}

double valeur(const char* texte) {
  formule f;
  EXPECT_TRUE(f.analyser(texte)) << texte;
  return f.evaluer(variables(), false);
}

TEST(Formule, FormulePencheLesChainesVersLaDroite) {
  EXPECT_EQ(valeur("10-3-2"), 9);
  EXPECT_EQ(valeur("8/4/2"), 4);
  EXPECT_EQ(valeur("2^3^2"), 512);
  EXPECT_EQ(valeur("10-3+2"), 5);
}

TEST(Formule, FormuleSigneDevantParentheseEstPerdu) { EXPECT_EQ(valeur("-(2)"), 2); }

TEST(Formule, FormulePuissanceDeBaseNegative) {
  EXPECT_EQ(valeur("(-2)^3"), -0.125);
  EXPECT_EQ(valeur("x^-3"), -0.125);
  EXPECT_EQ(valeur("(-2)^0.5"), 0);
  EXPECT_EQ(valeur("0^2"), 0);
  EXPECT_EQ(valeur("4^0.5"), 2);
}

TEST(Formule, LesIndexMemorisesSuiventLaTable) {
  tableVariables table = variables();
  formule f;
  ASSERT_TRUE(f.analyser("d1+nouveau"));
  EXPECT_EQ(f.evaluer(table, true), 4);
  table.definir("NOUVEAU", 1.0, "ajouté après");
  table.definir("d1", 5.0, "sans effet");
  EXPECT_EQ(f.evaluer(table, true), 6);
  EXPECT_EQ(table.commentaire(table.chercher("d1")), "");
  std::vector<std::string> noms;
  f.listerVariables(noms);
  EXPECT_EQ(noms, (std::vector<std::string>{"d1", "nouveau"}));
  table.supprimer(0);
  EXPECT_EQ(table.chercher("nouveau"), 1);
  EXPECT_THROW(table.supprimer(5), std::invalid_argument);
}

TEST(Formule, UneProfondeurSansFinEstRefusee) {
  formule f;
  for (const char* unite : {"(", "1+", "2^", "-("}) {
    std::string texte;
    for (int i = 0; i < 200000; ++i) texte += unite;
    EXPECT_FALSE(f.analyser(texte)) << unite;
    f.evaluer(variables(), false);
  }
  std::string longue = "1";
  for (int i = 0; i < formule::kProfondeurMax / 2; ++i) longue += "+1";
  for (int fois = 0; fois < 3; ++fois) EXPECT_TRUE(f.analyser(longue)) << "each text starts anew";
  EXPECT_EQ(f.evaluer(variables(), false), formule::kProfondeurMax / 2 + 1);
}

}  // namespace
}  // namespace veltora
