// The code file: its layout, what is read of files that others wrote, and the fields that it is made of.
#include "base/numbers.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/xml_champs.h"
#include "core/xml_utf8.h"
#include "support/case_rows.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
using namespace veltora;
using namespace std::string_literals;

/// A table from bytes, in an installation directory of its own.
struct Lecture {
  explicit Lecture(const std::string& octets) {
    dossier.ecrire("essai", octets);
    table.viderTable();
    table.nomFichier = cheminInstallation(L"essai");
    resultat = table.chargerXML();
  }
  DossierEssai dossier;
  tableCodification table;
  int resultat;
};

std::string enregistrement(const std::string& champs) {
  return "<codifPoints><TBdata><codifPoint>" + champs + "</codifPoint></TBdata></codifPoints>";
}

/// "code|libelle|taille|decimales|layerCode|coulLayerBlock" of each row.
std::string resume(const tableCodification& table) {
  std::string texte;
  for (const codifPoint& l : table.codes) {
    texte += (texte.empty() ? "" : " ; ") + std::to_string(l.code) + "|" + base::toUtf8(l.libelle) + "|" +
             base::ecrireReel(l.tailleBlock) + "|" + std::to_string(l.precisionAltitudes) + "|" +
             base::toUtf8(l.layers[layerCode]) + "|" + std::to_string(l.coulLayers[layerBlock]);
  }
  return texte;
}

TEST(FichierDesCodes, IsLaidOutByteForByte) {
  const DossierEssai dossier;
  tableCodification table;
  table.viderTable();
  codifPoint ligne;
  ligne.code = 9999;
  ligne.libelle = L"Arbre é <&\"'> €";
  ligne.chemin = L"C:\\blocs\\arbre.dwg";
  ligne.tailleBlock = 0.1234567;
  ligne.precisionAltitudes = 3;
  ligne.layers = {L"0", L"A1", L"N 2", L"", L"C4"};
  ligne.coulLayers = {1, 2, 3, 256, 0};
  table.codes.Add(ligne);
  EXPECT_EQ(table.sauverXML(cheminInstallation(L"sortie")), 1);
  EXPECT_EQ(dossier.lire("sortie"), R"(<codifPoints>
    <TBdata>
        <codifPoint>
            <code>9999</code>
            <libelle mode="utf8">Arbre é &lt;&amp;&quot;&apos;&gt; €</libelle>
            <chemin mode="utf8">C:\blocs\arbre.dwg</chemin>
            <tailleBlock>0.123457</tailleBlock>
            <precisionAltitudes>3</precisionAltitudes>
            <layerBlock mode="utf8">0</layerBlock>
            <layerAltitudes mode="utf8">A1</layerAltitudes>
            <layerNumero mode="utf8">N 2</layerNumero>
            <layerObs mode="utf8"></layerObs>
            <layerCode mode="utf8">C4</layerCode>
            <coulLayerBlock>1</coulLayerBlock>
            <coulLayerAltitudes>2</coulLayerAltitudes>
            <coulLayerNumero>3</coulLayerNumero>
            <coulLayerObs>256</coulLayerObs>
            <coulLayerCode>0</coulLayerCode>
        </codifPoint>
    </TBdata>
</codifPoints>
)");
}

TEST(FichierDesCodes, HasTheBytesOfTheLibrarysOwnSaving) {
  const DossierEssai dossier;
  tableCodification table;
  table.getOuCreerCode(7).libelle = L"a \x01 ]]> é";
  table.getOuCreerCode(8).libelle.clear();
  for (const bool vide : {false, true}) {
    if (vide) table.viderTable();
    TiXmlDocument document;
    table.ecrireXML(document);
    ASSERT_TRUE(document.SaveFile((dossier.chemin / "temoin").string()));
    EXPECT_EQ(texteXML(document), dossier.lire("temoin"));
  }
}

TEST(FichierDesCodes, ReadsBackWhatItWrote) {
  const DossierEssai dossier;
  tableCodification table;
  const std::vector<std::wstring> libelles{L"Arbre",  L"é€",         L"a & <b> \"c\" 'd'",
                                           L"&#x41;", L"&#x <coupe", L""};
  for (std::size_t i = 0; i < libelles.size(); ++i)
    table.getOuCreerCode(200 + static_cast<int>(i)).libelle = libelles[i];
  table.sauverXML();
  const tableCodification relue;
  ASSERT_EQ(relue.codes.size(), table.codes.size());
  for (std::size_t i = 0; i < libelles.size(); ++i) EXPECT_EQ(relue.codes[i + 2].libelle, libelles[i]);
  EXPECT_EQ(relue.codes[0].chemin, table.codes[0].chemin);
  EXPECT_EQ(relue.codes[0].layers, table.codes[0].layers);
}

TEST(FichierDesCodes, ReadsFilesOfOthers) {
  for (const CaseRow& cas : caseRows("codes/cases/fichiers.txt", "read", ';')) {
    const Lecture lecture(cas[1].starts_with("text ") ? cas[1].substr(5) : enregistrement(cas[1].substr(7)));
    EXPECT_EQ(lecture.resultat, 1) << cas;
    EXPECT_EQ(resume(lecture.table), cas[2]) << cas;
  }
  const std::pair<std::string, const char*> octets[] = {
      {"<codifPoints><TBdata><codifPoint><code>2</code></codifPoint><codifPoint/></TBdata></codifPoints>",
       "2|Point Topo|1.0|2|_ Codes Points|7 ; 1|Point Topo|1.0|2|_ Codes Points|7"},
      {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- < > "
       "-->\r\n<codifPoints>\r\n\t<TBdata>\r\n\t\t<codifPoint>"
       "\r\n<code>\r\n 12 \r\n</code><!-- x --></codifPoint></TBdata>\r\n</codifPoints>\r\n\r\n ",
       "12|Point Topo|1.0|2|_ Codes Points|7"},
      {"\xEF\xBB\xBF" + enregistrement("<libelle mode='utf8'>\xC3\xA9</libelle>"),
       "1|é|1.0|2|_ Codes Points|7"},
      {enregistrement("<libelle>\xE9\x80</libelle><layerCode mode='ASC'>\xC9</layerCode>"), "1|é€|1.0|2|É|7"},
      // What the library reads without quotes, blanks or end, and what it ignores behind the element.
      {"<codifPoints a=1 b='2'c=\"<\"><TBdata><codifPoint n=x/></TBdata></codifPoints>",
       "1|Point Topo|1.0|2|_ Codes Points|7"},
      {enregistrement("<code>5</code>") + "x", "5|Point Topo|1.0|2|_ Codes Points|7"},
      {enregistrement("<code>5</code>") + enregistrement("<code>6</code>"),
       "5|Point Topo|1.0|2|_ Codes Points|7"},
      {enregistrement("<code>5</code>") + "<!-- ", "5|Point Topo|1.0|2|_ Codes Points|7"},
      {enregistrement("<code>5</code>") + "\0\0"s, "5|Point Topo|1.0|2|_ Codes Points|7"},
      {"<?xml version=\"1.0\"><!DOCTYPE codifPoints>" + enregistrement("<code>5</code>"),
       "5|Point Topo|1.0|2|_ Codes Points|7"},
      {"<?xml version='1.0' encoding='ISO-8859-1'?>" +
           enregistrement("<libelle mode='autre'>\xC3\xA9</libelle>"),
       "1|é|1.0|2|_ Codes Points|7"},
  };
  for (const auto& [contenu, attendu] : octets) {
    const Lecture lecture(contenu);
    EXPECT_EQ(lecture.resultat, 1) << contenu;
    EXPECT_EQ(resume(lecture.table), attendu) << contenu;
  }
}

TEST(FichierDesCodes, lireXML_bornes_TakesValuesAsTheyStand) {
  for (const int code : {0, -5, 10000}) {
    const Lecture lecture(enregistrement("<code>" + std::to_string(code) +
                                         "</code><precisionAltitudes>12"
                                         "</precisionAltitudes><tailleBlock>-3</tailleBlock>"
                                         "<coulLayerBlock>257</coulLayerBlock>"));
    ASSERT_EQ(lecture.table.codes.size(), 1u);
    EXPECT_EQ(resume(lecture.table), std::to_string(code) + "|Point Topo|-3.0|12|_ Codes Points|257");
    EXPECT_EQ(texteAltitude(1.5, lecture.table.codes[0].precisionAltitudes), L"1.500000000000");
  }
}

TEST(FichierDesCodes, WhatIsNoCodeFileReadsAsEmpty) {
  const std::string bon = enregistrement("<code>5</code>");
  std::string profond;
  for (int i = 0; i < 200000; ++i) profond += "<a>";
  std::string profondFerme = profond;
  for (int i = 0; i < 200000; ++i) profondFerme += "</a>";
  std::vector<std::string> fautifs = {"",
                                      " \r\n",
                                      bon.substr(0, bon.size() - 20),
                                      bon.substr(0, bon.size() - 1),
                                      "<?xml " + bon,
                                      bon.substr(0, 20) + '\0' + bon.substr(20),
                                      profond,
                                      profondFerme,
                                      "<?xml version='> <!-- ' ?>" + profondFerme + "-->" + bon,
                                      "\xFF\xFE<\0c\0>\0"s};
  for (const CaseRow& cas : caseRows("codes/cases/fichiers.txt", "empty", ';')) fautifs.push_back(cas[1]);
  for (std::size_t i = 0; i < fautifs.size(); ++i) {
    const Lecture lecture(fautifs[i]);
    EXPECT_EQ(lecture.resultat, 0) << i << " " << fautifs[i].substr(0, 80);
    EXPECT_EQ(resume(lecture.table), "") << i;
  }
}

TEST(FichierDesCodes, ARecordReadAloneLooksAtItsNameOnly) {
  const DossierEssai dossier;
  TiXmlDocument document;
  ASSERT_TRUE(analyserXML(document, "<CODIFPOINT><code>4</code></CODIFPOINT>"));
  codifPoint ligne;
  EXPECT_EQ(ligne.lireXML(*document.RootElement()), 1);
  EXPECT_EQ(ligne.code, 4);
  ASSERT_TRUE(analyserXML(document, "<point><code>5</code></point>"));
  EXPECT_EQ(ligne.lireXML(*document.RootElement()), 0);
  EXPECT_EQ(ligne.code, 4);
}

TEST(Utf8DuSysteme, utf8_substituts_AreTwoSequencesOfThreeBytes) {
  EXPECT_EQ(utf8DepuisTexte(L"a\u00E9\u20AC"), "a\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(utf8DepuisTexte(L"\U0001F600"), "\xED\xA0\xBD\xED\xB8\x80");
  EXPECT_EQ(texteDepuisUtf8("\xED\xA0\xBD\xED\xB8\x80"), L"\U0001F600") << "the two units meet again";
  EXPECT_EQ(utf8DepuisTexte(std::wstring(1, static_cast<wchar_t>(0x110000))), "?");
}

TEST(Utf8DuSysteme, utf8_plan0_GivesAQuestionMarkAbove65535) {
  EXPECT_EQ(texteDepuisUtf8("\xF0\x9F\x98\x80z"), L"?z");
  EXPECT_EQ(texteDepuisUtf8("\xF8\x88\x80\x80\x80z"), L"?z") << "five bytes";
  EXPECT_EQ(texteDepuisUtf8("\xFD\xBF\xBF\xBF\xBF\xBFz"), L"?z") << "six bytes";
  EXPECT_EQ(texteDepuisUtf8("\xEF\xBF\xBF"), L"\uFFFF");
  EXPECT_EQ(texteDepuisUtf8("\xFC\x80\x80\x80\x81\x81"), L"A") << "six bytes for a small value";
}

TEST(Utf8DuSysteme, utf8_troncature_KeepsWhatWasDecoded) {
  EXPECT_EQ(texteDepuisUtf8("ab\xC3"), L"ab");
  EXPECT_EQ(texteDepuisUtf8("ab\xE2\x82z"), L"ab") << "malformed: the rest is lost";
  EXPECT_EQ(texteDepuisUtf8("a\x80\xFF\xFE\xBFz"), L"az") << "no lead bytes: skipped";
  EXPECT_EQ(texteDepuisUtf8(""), L"");
}

}  // namespace
