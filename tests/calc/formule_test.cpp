#include "calc/formule.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace veltora {
namespace {

struct Cas {
  const char* texte;
  bool bon;
  double valeur;
  const char* imprime;
};

tableVariables variables() {
  tableVariables table;
  table.definir("D1", 4.0);
  table.definir("x", -2.0);
  return table;
}

TEST(Formule, ValeursEtFormesImprimees) {
  const Cas cas[] = {
      {"1+2*3", true, 7, "( 1.0000 + ( 2.0000 * 3.0000 ) )"},
      {".5", true, 0.5, "0.5000"},
      {"1.5E3", true, 1500, "1500.0000"},
      {"1e3", true, 1000, "1000.0000"},
      {"1.E3", false, 0, "Erreur !!!"},
      {"1E", false, 0, "Erreur !!!"},
      {"1.", false, 0, "Erreur !!!"},
      {"1E+2", true, 100, "100.0000"},
      {"d1*D1", true, 16, "( d1 * D1 )"},
      {"1d", false, 1, "1.0000"},
      {"-d1", true, -4, "(-d1)"},
      {"--d1", true, 4, "d1"},
      {"inconnu", true, 0, "inconnu"},
      {"1/0", true, 0, "( 1.0000 / 0.0000 )"},
      {"   \t", true, 0, "Erreur !!!"},
      {"", true, 0, "Erreur !!!"},
      {"2+", true, 2, "#ERR"},
      {"2*", true, 0, "#ERR"},
      {"(1+2", false, 3, "( 1.0000 + 2.0000 )"},
      {"1)", false, 1, "1.0000"},
      {"(1+2)*(3 - 1)", true, 6, "( ( 1.0000 + 2.0000 ) * ( 3.0000 - 1.0000 ) )"},
      {"()", true, 0, "Erreur !!!"},
      {"d1+\xE9", false, 4, "#ERR"},
      {"1 0", true, 10, "10.0000"},
      {"1,5", false, 1, "1.0000"},
      {"1.2.3", false, 1.2, "1.2000"},
      {"1E+", false, 0, "Erreur !!!"},
      {"2**3", true, 0, "( 2.0000 * #ERR )"},
      {"^2", true, 0, "#ERR"},
      {"-", true, 0, "Erreur !!!"},
      {")", false, 0, "Erreur !!!"},
      {"((1)", false, 1, "1.0000"},
      {"d1(2)", false, 4, "d1"},
      {"2^-1", true, 0.5, "( 2.0000 ^ -1.0000 )"},
      {"-2^2", true, 0.25, "( -2.0000 ^ 2.0000 )"},
  };
  const tableVariables table = variables();
  for (const Cas& c : cas) {
    formule f;
    EXPECT_EQ(f.analyser(c.texte), c.bon) << c.texte;
    EXPECT_DOUBLE_EQ(f.evaluer(table, false), c.valeur) << c.texte;
    std::string texte;
    f.imprimer(texte);
    EXPECT_EQ(texte, c.imprime) << c.texte;
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
  for (const char* unite : {"(", "1+", "2^", "-("}) {
    std::string texte;
    for (int i = 0; i < 200000; ++i) texte += unite;
    formule f;
    EXPECT_FALSE(f.analyser(texte)) << unite;
    f.evaluer(variables(), false);
  }
  std::string longue = "1";
  for (int i = 0; i < formule::kProfondeurMax / 2; ++i) longue += "+1";
  formule f;
  EXPECT_TRUE(f.analyser(longue));
  EXPECT_EQ(f.evaluer(variables(), false), formule::kProfondeurMax / 2 + 1);
}

}  // namespace
}  // namespace veltora
