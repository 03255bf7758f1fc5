// Coordinate files: reading, writing, order, size; the text form of a point.

#include "points/exchange/exporter_points.h"
#include "points/exchange/table_obs_xyz.h"
#include "support/atelier.h"
#include "support/dossier_essai.h"

#include <algorithm>
#include <sstream>

namespace {

using namespace veltora;

/// "name x y z code obs" of each line, z "-" when absent; then the remarks.
std::string texteDe(const tableObsXYZ& table) {
  std::ostringstream sortie;
  for (const pointXYZ& l : table.lignes) {
    sortie << base::toUtf8(l.nom) << ' ' << l.x << ' ' << l.y << ' ';
    if (l.z == Z_ABSENT)
      sortie << '-';
    else
      sortie << l.z;
    sortie << ' ' << l.code << (l.obs.empty() ? "" : " ") << base::toUtf8(l.obs) << '|';
  }
  for (const base::Remarque& remarque : table.remarques) sortie << '!' << remarque.ligne;
  return sortie.str();
}

TEST(TableObsXYZ, ReadsLinesByTheirWords) {
  const struct {
    const char* octets;
    const char* lu;
  } cas[] = {
      {"P1 1 2", "P1 1 2 - 1|"},
      {"P1 1 2 3", "P1 1 2 3 1|"},
      {"P1 1 2 3 7", "P1 1 2 3 7|"},
      {"P1 1 2 3 0", "P1 1 2 3 1|"},
      {"P1 1 2 3 abc", "P1 1 2 3 1|"},
      {"P1 1 2 3 7 mur   en\tpierre ", "P1 1 2 3 7 mur en pierre|"},
      {"\n \t\n  P1\t1.5\t-2.25 \r\nP2 3 4\r\n", "P1 1.5 -2.25 - 1|P2 3 4 - 1|"},
      {"P1 1", "!1"},
      {"P1 1 2x\nP2 1 2", "P2 1 2 - 1|!1"},
      {"P1 .5 2\nP2 1 nan\nP3 inf 1\nP4 1 2", "P4 1 2 - 1|!1!2!3"},
      {"P1 1 2 12,5", "P1 1 2 12 1|!1"},
      {"P1 1 2 ?", "P1 1 2 0 1|!1"},
      {"P1 1 2 1e999", "P1 1 2 - 1|!1"},
      {"P1 1 2 99999999999999997748809823456034029568.000000", "P1 1 2 - 1|"},
      {"\xC9t\xE9 1 2 3 1 \x80", "Été 1 2 3 1 €|"},
      {"Un_nom_assez_long 1 2", "Un_nom_assez_long 1 2 - 1|"},
      {"", ""},
  };
  for (const auto& c : cas) {
    tableObsXYZ table;
    table.lire(c.octets);
    EXPECT_EQ(texteDe(table), c.lu) << c.octets;
  }
}

TEST(TableObsXYZ, ALineIsReadUpTo1024Characters) {
  tableObsXYZ table;
  table.lire("P1 1 2 3 7 " + std::string(1100, 'x') + "\nP2 1 2");
  ASSERT_EQ(table.lignes.size(), 2U);
  EXPECT_EQ(table.lignes[0].obs.size(), tableObsXYZ::kLongueurLigne - 11);
  EXPECT_EQ(table.remarques.begin()->phrase(),
            L"ligne 1 : coupée après 1024 caractères, « P1 1 2 3 7 " + std::wstring(29, L'x') + L"… »");
}

TEST(TableObsXYZ, FilesAreNamedTrimmedAndReplacedWhole) {
  const DossierEssai dossier;
  const std::wstring racine = base::fromUtf8(dossier.chemin.string());
  dossier.ecrire("a.xyz", "P1 1 2\n");
  tableObsXYZ table;
  EXPECT_EQ(table.charger((L" \t" + racine + L"/a.xyz ,;.").c_str()), 1);
  EXPECT_EQ(table.charger((racine + L"/absent.xyz").c_str()), 0);
  EXPECT_EQ(table.charger(L" ,;."), 0);
  EXPECT_EQ(table.charger(), 0) << "no name at all";
  EXPECT_EQ(texteDe(table), "P1 1 2 - 1|") << "a failure changes nothing";
  table.nomFichier = racine + L"/a.xyz";
  EXPECT_EQ(table.charger(nullptr, false), 1);
  EXPECT_EQ(table.lignes.size(), 2U);
  EXPECT_NE(table.lignes[0].numeroInterne, table.lignes[1].numeroInterne);
  EXPECT_EQ(table.sauver((racine + L"/b").c_str()), 1);
  EXPECT_EQ(dossier.lire("b.xyz"), table.contenu());
  EXPECT_EQ(table.sauver((racine + L"/c.XYZ").c_str()), 1);
  EXPECT_EQ(dossier.lire("c.XYZ"), table.contenu());
  EXPECT_EQ(table.sauver(L";"), 0);
  EXPECT_EQ(table.sauver((racine + L"/absent/d").c_str()), 0);

  const auto ici = std::filesystem::current_path();
  std::filesystem::create_directory(dossier.chemin / "sous");
  std::filesystem::current_path(dossier.chemin / "sous");
  EXPECT_EQ(table.charger(L"../a.xyz"), 1) << "the dots of a relative path are no ornament";
  EXPECT_EQ(table.sauver(L" ./e.xyz"), 1);
  std::filesystem::current_path(ici);
}

TEST(TableObsXYZ, ReadsFilesOfEitherCodePage) {
  const DossierEssai dossier;
  const std::wstring fichier = base::fromUtf8((dossier.chemin / "a.xyz").string());
  tableObsXYZ table;
  for (const char* octets : {"\xC9t\xE9 1 2 3 7 b\xE2ti\n", "\xC3\x89t\xC3\xA9 1 2 3 7 b\xC3\xA2ti\n",
                             "\xEF\xBB\xBF\xC3\x89t\xC3\xA9 1 2 3 7 b\xC3\xA2ti\n"}) {
    dossier.ecrire("a.xyz", octets);
    ASSERT_EQ(table.charger(fichier.c_str()), 1);
    ASSERT_EQ(table.lignes.size(), 1U) << octets;
    EXPECT_EQ(table.lignes[0].nom, L"Été");
    EXPECT_EQ(table.lignes[0].obs, L"bâti");
  }
  dossier.ecrire("a.xyz", "\xEF\xBB\xBFP1 1 2\n");
  ASSERT_EQ(table.charger(fichier.c_str()), 1);
  EXPECT_EQ(table.lignes.at(0).nom, L"P1") << "the mark is no part of the first name";
}

TEST(TableObsXYZ, WritesWhatItReadsBack) {
  tableObsXYZ table;
  table.lire("P1 650000.123456 6860000.5 102.5 7 bord de \xE9tang\nP2 -1 2 0\n");
  EXPECT_EQ(table.contenu(),
            "\n        P1\t 650000.123456\t6860000.500000\t    102.500000\t     7 bord de \xE9tang"
            "\n        P2\t     -1.000000\t      2.000000\t      0.000000\t     1");
  tableObsXYZ relue;
  relue.lire(table.contenu());
  EXPECT_EQ(texteDe(relue), texteDe(table));
}

TEST(TableObsXYZ, XyzAltitudeEnClair) {
  tableObsXYZ table;
  table.lire("P1 1 2");
  EXPECT_NE(table.contenu().find("\t99999999999999997748809823456034029568.000000\t"), std::string::npos);
  tableObsXYZ relue;
  relue.lire(table.contenu());
  EXPECT_EQ(texteDe(relue), "P1 1 2 - 1|");
}

TEST(TableObsXYZ, ComparesLinesByTheirRunningNumbers) {
  tableObsXYZ table;
  table.lire("B2 3 1 5 4\na10 1 2 4 4\nA9 2 1 4 3\n");
  const auto ordre = [&](int colonne) {
    std::vector<long long> numeros;
    for (const pointXYZ& ligne : table.lignes) numeros.push_back(ligne.numeroInterne);
    const auto comparer = table.comparateur(colonne);
    std::stable_sort(numeros.begin(), numeros.end(),
                     [&](long long a, long long b) { return comparer(a, b) < 0; });
    std::string noms;
    for (const long long numero : numeros) noms += base::toUtf8(table.chercher(numero)->nom) + ' ';
    return noms;
  };
  const char* attendus[] = {"A9 a10 B2 ", "a10 A9 B2 ", "B2 A9 a10 ",
                            "a10 A9 B2 ", "A9 B2 a10 ", "B2 a10 A9 "};
  for (int colonne = 0; colonne < 6; ++colonne) EXPECT_EQ(ordre(colonne), attendus[colonne]) << colonne;
  const long long premiere = table.lignes[0].numeroInterne;
  EXPECT_EQ(table.comparateur(1)(premiere, -1), 0) << "a line that is not there";
  EXPECT_EQ(table.chercher(-1), nullptr);
  table.renumeroter(L"S", 5, L"x");
  EXPECT_EQ(table.lignes[2].nom, L"S7x");
}

TEST(TexteDuPoint, ColumnsByTabs) {
  EXPECT_EQ(texteDuPoint(unPoint(L"P1", 650000.12346, 6860000, 102.5, 7)),
            "        P1\t    650000.1235\t   6860000.0000\t       102.5000\t    7\n");
  EXPECT_EQ(texteDuPoint(unPoint(L"Été", 1, 2, 0, 12345)),
            "       \xC9t\xE9\t         1.0000\t         2.0000\t         0.0000\t12345\n");
}

TEST(TexteDuPoint, TexteZBlanc) {
  const std::string ligne = texteDuPoint(unPoint(L"P1", 1, 2, Z_ABSENT, 7));
  EXPECT_EQ(ligne, "        P1\t         1.0000\t         2.0000\t               \t    7\n");
  // Read as a coordinate file, the code counts as the altitude; a remark says so.
  tableObsXYZ table;
  table.lire(ligne);
  EXPECT_EQ(texteDe(table), "P1 1 2 7 1|!1");
  EXPECT_EQ(table.remarques.begin()->texte, L"colonne Z vide, le mot suivant est lu comme altitude");
  table.colonneZCompte = true;
  table.lire(ligne);
  EXPECT_EQ(texteDe(table), "P1 1 2 - 7|") << "what one call does";
}

}  // namespace
