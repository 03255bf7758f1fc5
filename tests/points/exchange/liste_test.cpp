// Lists of coordinates of any form: what they are taken for, what is read of them.

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "points/exchange/lecture_liste.h"
#include "points/exchange/verifier_xyz.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace veltora {
namespace {

/// The points of a drawing about (1000, 5000), and a code table that knows "Station".
reperesListe reperes() {
  return {rectangleDe({{1000.0, 5000.0}, {1200.0, 5300.0}}),
          [](std::wstring_view texte) { return base::toLower(texte) == L"station"; }};
}

std::string avecTabulations(std::string texte) {
  for (std::size_t i = 0; (i = texte.find("→", i)) != std::string::npos;) texte.replace(i, 3, "\t");
  return texte;
}

optionsListe optionsDe(const std::string& cellule) {
  optionsListe options;
  std::istringstream mots(cellule);
  for (std::string mot; mots >> mot;) {
    std::wstring raison;
    if (mot.starts_with("dec="))
      options.decimale = mot[4];
    else if (mot == "codes")
      options.codesTexte = true;
    else
      EXPECT_TRUE(lireColonnes(base::fromUtf8(mot), options.colonnes, raison)) << mot;
  }
  return options;
}

std::string texteForme(const formeListe& forme) {
  if (!forme.trouvee()) return {};
  const std::string separateur = forme.separateur == '\t'  ? "→"
                                 : forme.separateur == ' ' ? "_"
                                                           : std::string(1, forme.separateur);
  return separateur + ' ' + forme.decimale + base::formater(" %d ", forme.ligneTitres) +
         base::toUtf8(texteColonnes(forme.colonnes));
}

/// "name x y z code obs" of each point, then "!" and the lines of doubts, "-" and those of other remarks.
std::string texteListe(const listeLue& liste) {
  std::string texte;
  for (const ligneListe& l : liste.lignes) {
    const pointXYZ& p = l.point;
    texte += texte.empty() ? "" : " // ";
    texte += (p.nom.empty() ? "?" : base::toUtf8(p.nom)) + base::formater(" %.10g %.10g ", p.x, p.y);
    texte += p.z == base::Z_ABSENT ? "-" : base::formater("%.10g", p.z);
    texte += l.libelle < 0 ? base::formater(" %d", p.code)
                           : " =" + base::toUtf8(liste.libelles[static_cast<std::size_t>(l.libelle)]);
    if (l.table >= 0) texte += " @" + base::toUtf8(liste.tables[static_cast<std::size_t>(l.table)]);
    if (l.table >= 0 && l.table == liste.courante) texte += "!";
    texte += (p.obs.empty() ? "" : " ") + base::toUtf8(p.obs);
  }
  for (const base::Remarque& r : liste.remarques)
    texte += base::formater(r.douteuse ? " !%d" : " -%d", r.ligne);
  return texte;
}

TEST(ListeCoordonnees, IsTakenForWhatItIs) {
  for (const CaseRow& row : caseRows("points/cases/listes.txt", "formes")) {
    const std::string octets = avecTabulations(row[0]);
    const formeListe forme = reconnaitreListe(octets, optionsDe(row[1]), reperes());
    EXPECT_EQ(texteForme(forme), row[2]) << row;
    const std::string ouverte = forme.questions.empty() ? "" : base::toUtf8(forme.questions[0].phrase());
    EXPECT_EQ(ouverte.substr(0, row[4].empty() ? ouverte.size() : row[4].size()), row[4]) << row;
    if (!row[4].empty() || !forme.trouvee()) continue;
    // Lines in front of the points are remarks of their own.
    std::string lue = texteListe(lireListe(octets, forme));
    if (forme.premiereLigne > 2) lue = lue.substr(0, lue.rfind(" -1"));
    EXPECT_EQ(lue, row[3]) << row;
  }
}

TEST(ListeCoordonnees, AnAnswerLeavesItsQuestionClosed) {
  for (const CaseRow& row : caseRows("points/cases/listes.txt", "formes")) {
    const std::string octets = avecTabulations(row[0]);
    const formeListe forme = reconnaitreListe(octets, optionsDe(row[1]), reperes());
    for (const questionListe& question : forme.questions) {
      for (const questionListe::reponse& reponse : question.reponses) {
        const formeListe apres = reconnaitreListe(octets, reponse.options, reperes());
        EXPECT_TRUE(apres.trouvee()) << row;
        for (const questionListe& autre : apres.questions) EXPECT_NE(autre.texte, question.texte) << row;
      }
    }
  }
}

TEST(ListeCoordonnees, AnXyzListWhoseColumnsLookExchangedIsAsked) {
  for (const CaseRow& row : caseRows("points/cases/listes.txt", "xyz")) {
    const std::vector<questionListe> questions = verifierXyz(avecTabulations(row[0]), reperes());
    const std::string ouverte = questions.empty() ? "" : base::toUtf8(questions[0].phrase());
    EXPECT_EQ(ouverte.substr(0, row.at(1).empty() ? ouverte.size() : row.at(1).size()), row.at(1)) << row;
    EXPECT_LE(questions.size(), 1U) << row;
  }
}

/// Random points written in random forms.
class EcritureAuHasard {
public:
  explicit EcritureAuHasard(unsigned graine) : m_hasard(graine) {}

  int entier(int bas, int haut) { return std::uniform_int_distribution<int>(bas, haut)(m_hasard); }

  /// Makes a file. @param attendu  what must be read of it
  std::wstring ecrire(std::string& attendu) {
    const wchar_t separateur = L";\t, "[entier(0, 3)];
    const bool virgule = entier(0, 1) == 1;
    const bool guillemets = separateur == L',' && virgule;
    const wchar_t* milliers = separateur == L' ' || entier(0, 1) == 0 ? L"" : L"\u00A0";
    const bool titres = entier(0, 1) == 1;
    std::vector<int> ordre{0, 1, 2, 3, 4};
    if (titres) std::shuffle(ordre.begin(), ordre.end(), m_hasard);
    const std::wstring noms[] = {L"Numéro", L"X", L"Y", L"Altitude", L"Code"};
    std::wstring texte;
    const auto rangee = [&](const std::wstring(&champs)[5]) {
      for (int i = 0; i < 5; ++i) {
        const std::wstring& champ = champs[ordre[static_cast<std::size_t>(i)]];
        texte += (i > 0 ? std::wstring(1, separateur) : L"") + (guillemets ? L'"' + champ + L'"' : champ);
      }
      texte += entier(0, 1) == 1 ? L"\r\n" : L"\n";
    };
    if (titres) rangee(noms);
    for (int n = entier(1, 12), i = 0; i < n; ++i) {
      const int x = 652000000 + entier(0, 999999);
      const int y = 1862000000 + entier(0, 999999);
      const int z = entier(1000, 999999);
      const int code = entier(1, 9999);
      const auto nombre = [&](int millimetres, int millions) {
        return decimal(millimetres, millions, virgule, milliers);
      };
      rangee({L"É" + std::to_wstring(i), nombre(x, 0), nombre(y, 5), nombre(z, 0), std::to_wstring(code)});
      attendu += base::formater("%sÉ%d %d.%03d %d.%03d %d.%03d %d", i > 0 ? "|" : "", i, x / 1000, x % 1000,
                                y / 1000 + 5000000, y % 1000, z / 1000, z % 1000, code);
    }
    return texte;
  }

private:
  static std::wstring decimal(int millimetres, int millions, bool virgule, const std::wstring& milliers) {
    const std::string entiers = std::to_string(millimetres / 1000 + millions * 1000000);
    std::wstring texte;
    for (std::size_t i = 0; i < entiers.size(); ++i) {
      if (i > 0 && (entiers.size() - i) % 3 == 0) texte += milliers;
      texte += static_cast<wchar_t>(entiers[i]);
    }
    return texte + (virgule ? L"," : L".") + base::formater(L"%03d", millimetres % 1000);
  }
  std::mt19937 m_hasard;
};

TEST(ListeCoordonnees, WhatAnyFormWritesIsReadBack) {
  for (unsigned graine = 1; graine <= 400; ++graine) {
    EcritureAuHasard ecriture(graine);
    std::string attendu;
    const std::wstring texte = ecriture.ecrire(attendu);
    const std::string octets = ecriture.entier(0, 1) == 1 ? base::toUtf8(texte) : base::narrow(texte);
    const formeListe forme = reconnaitreListe(octets, {}, {});
    ASSERT_TRUE(forme.questions.empty()) << graine << "\n"
                                         << base::toUtf8(forme.questions[0].texte) << "\n"
                                         << octets;
    std::string lu;
    for (const ligneListe& l : lireListe(octets, forme).lignes)
      lu += base::formater("%s%s %.3f %.3f %.3f %d", lu.empty() ? "" : "|", base::toUtf8(l.point.nom),
                           l.point.x, l.point.y, l.point.z, l.point.code);
    ASSERT_EQ(lu, attendu) << graine << "\n" << octets;
  }
}

}  // namespace
}  // namespace veltora
