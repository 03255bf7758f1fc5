#include "base/files.h"
#include "report/html_document.h"
#include "report/html_style.h"
#include "report/html_table.h"
#include "report/html_text.h"
#include "report/plume_rapport.h"
#include "report/report_setup.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <functional>
#include <limits>
#include <vector>

namespace veltora {
namespace {

TEST(HtmlSize, PrintsWholeAndFractionalValues) {
  struct Cas {
    double valeur;
    int unite;
    const char* css;
  };
  const std::vector<Cas> cas = {{10.0, 1, "10pt"}, {10.5, 1, "10.50pt"}, {5.5, 0, "5.50 %"},
                                {50.0, 0, "50%"},  {-3.0, 2, "-3mm"},    {1.25, 3, "1.25cm"},
                                {1.0, 4, "1pc"},   {1.0, 5, "1in"},      {0.0, 6, "0px"},
                                {7.0, 7, "7"},     {0.001, -1, "0.00"},  {3e9, 6, "3000000000.00px"}};
  for (const Cas& c : cas) EXPECT_EQ(htmlSize(c.valeur, c.unite).css(), c.css);
  EXPECT_EQ(htmlSize().css(), "0px");
  EXPECT_FALSE(htmlSize(std::numeric_limits<double>::quiet_NaN(), 6).css().empty());
}

TEST(HtmlColor, NamedColoursHaveTheirPlaces) {
  struct Cas {
    int index;
    const char* css;
  };
  const std::vector<Cas> cas = {{0, "rgb(240,248,255)"}, {60, "rgb(255,240,245)"},  {112, "rgb(128,0,128)"},
                                {113, "rgb(255,0,0)"},   {136, "rgb(255,255,255)"}, {139, "rgb(154,205,50)"}};
  for (const Cas& c : cas) {
    htmlColor couleur;
    couleur.setRGB(1, 2, 3);
    couleur.setCouleurNommee(c.index);
    EXPECT_EQ(couleur.css(), c.css) << c.index;
  }
  htmlColor couleur;
  couleur.setRGB(1, 2, 3);
  for (const int index : {-1, 140, std::numeric_limits<int>::min()}) couleur.setCouleurNommee(index);
  EXPECT_EQ(couleur.css(), "rgb(1,2,3)");
}

struct CasStyle {
  const char* nom;
  std::function<void(htmlStyle&)> regler;
  const char* css;
};

const htmlSize kDeux(2.0, htmlSize::px);

const std::vector<CasStyle> kStyles = {
    {"nothing", [](htmlStyle&) {}, ";"},
    {"size only begins with a semicolon", [](htmlStyle& s) { s.setFontSize(kDeux); }, ";font-size:2px;"},
    {"one family", [](htmlStyle& s) { s.setFontFamily("Arial"); }, " font-family:'Arial';"},
    {"two families", [](htmlStyle& s) { s.setFontFamily("Arial", "serif"); },
     " font-family:'Arial','serif';"},
    {"italic and bold", [](htmlStyle& s) { s.setBold(), s.setItalic(); },
     ";font-style:italic;font-weight:bold;"},
    {"normal", [](htmlStyle& s) { s.setBold(false), s.setItalic(false); },
     ";font-style:normal;font-weight:normal;"},
    {"no decoration", [](htmlStyle& s) { s.setTextDecoration(0); }, ";text-decoration:none;"},
    {"underline keeps its blank", [](htmlStyle& s) { s.setTextDecoration(1); },
     ";text-decoration:underline ;"},
    {"all decorations", [](htmlStyle& s) { s.setTextDecoration(15); },
     ";text-decoration:underline overline line-through blink;"},
    {"attachment fixed", [](htmlStyle& s) { s.setBackgroundAttachment(2); }, ";background-attachment:fixed;"},
    {"position Y alone", [](htmlStyle& s) { s.setBackgroundPositionY(kDeux); },
     ";background-position: 0px 2px;"},
    {"position X alone", [](htmlStyle& s) { s.setBackgroundPositionX(kDeux); },
     ";background-position: 2px 0px;"},
    {"align", [](htmlStyle& s) { s.setTextAlign(4); }, ";text-align:center;"},
    {"align other", [](htmlStyle& s) { s.setTextAlign(3); }, ";text-align:justify;"},
    {"last setting wins", [](htmlStyle& s) { s.setTextAlign(1), s.setTextAlign(2); }, ";text-align:right;"},
    {"the order is fixed",
     [](htmlStyle& s) {
       s.setBorderBottomColor(htmlColor()), s.setBorderRightStyle(4), s.setBorderTopWidth(kDeux);
       s.setPaddingBottom(kDeux), s.setMarginRight(kDeux), s.setMarginLeft(kDeux), s.setLetterSpacing(kDeux);
       s.setLineHeight(kDeux), s.setTextIndent(kDeux), s.setColor(htmlColor()),
           s.setBackgroundColor(htmlColor());
     },
     ";color:rgb(0,0,0);background-color:rgb(0,0,0);text-indent:2px;line-height:2px;letter-spacing:2px;"
     "margin-left:2px;margin-right:2px;padding-bottom:2px;border-top-width:2px;border-right-style:solid;"
     "border-bottom-color:rgb(0,0,0);"},
};

TEST(HtmlStyle, PrintsItsPropertiesInOrder) {
  for (const CasStyle& c : kStyles) {
    htmlStyle style;
    c.regler(style);
    EXPECT_EQ(style.css(), c.css) << c.nom;
  }
}

TEST(HtmlStyle, FondSansParenthese) {
  htmlStyle style;
  style.setBackgroundImage("logo.png");
  EXPECT_EQ(style.css(), ";background-image:url('logo.png';");
}

TEST(HtmlStyle, RepetitionParAttachement) {
  const std::vector<const char*> mots = {"no-repeat", "repeat", "repeat-x", "repeat-y"};
  for (std::uint8_t i = 0; i < mots.size(); ++i) {
    htmlStyle style;
    style.setBackgroundRepeat(9);
    EXPECT_EQ(style.css(), ";");
    style.setBackgroundAttachment(i);
    EXPECT_EQ(style.css(), std::string(";background-attachment:") + (i == 2 ? "fixed" : "scroll") +
                               ";background-repeat:" + mots[i] + ";");
  }
}

TEST(HtmlTable, cellspacing_blanc_RowsAndOpeningTag) {
  htmlTable table;
  EXPECT_EQ(table.fermerTable(), "<table >\n</table>");
  preparerTable(table);
  table.setBordure(-1, 1);
  table.ouvrirLigne();
  table.ajouterCellule("a", "class=celnorm align=right");
  table.ouvrirLigne("x=1");
  table.ajouterCelluleEntier(-4, "");
  table.ajouterCelluleDouble(1.0 / 3.0, 4, "b");
  const std::string attendu =
      "<table text-align=\"center\" border=\"0\" cellpadding=\"0\" cellspacing =\"0\">\n"
      "<tr ><td class=celnorm align=right>a</td></tr><tr x=1><td >-4</td><td b>0.3333</td></tr></table>";
  EXPECT_EQ(table.fermerTable(), attendu);
  EXPECT_EQ(table.fermerTable(), attendu) << "a second call adds no further end of row";
  table.vider();
  EXPECT_EQ(table.fermerTable(),
            "<table text-align=\"center\" border=\"0\" cellpadding=\"0\" cellspacing =\"0\">\n</table>");
}

TEST(HtmlTable, largeur_ouverte_couleurs_diese_OptionalAttributesInTheirOrder) {
  htmlTable table;
  table.setBorderColorDark(0x00FF00);
  table.setBgColor(0xEFEFEF);
  table.setLargeur(80, 0);
  table.setAlignement(9);
  table.setBordure(-1, 1);
  table.setCellPadding(-1);
  EXPECT_EQ(
      table.fermerTable(),
      "<table text-align=\" width=\"80% bgcolor=#\"=#EFEFEF\" bordercolordark=#\"=#00FF00\">\n</table>");
  table.reserver(std::numeric_limits<std::size_t>::max(), 100);
  EXPECT_NE(table.fermerTable(), "");
}

htmlDocument petitDocument() {
  htmlDocument document;
  ajouterPrologue(document);
  document.ajouterStyle("sans", htmlStyle().css());
  document.ajouterEntete("<title>Essai</title>");
  document.ajouterCorps(htmlText("Polygonale ferm\xE9"
                                 "e",
                                 attributs::kGrand)
                            .html());
  return document;
}

TEST(HtmlDocument, BothFormsMatchTheirGoldens) {
  htmlDocument document = petitDocument();
  EXPECT_TRUE(memeQueReference("rapport_simple.html", document.contenu()));
  document.format = htmlDocument::word;
  EXPECT_TRUE(memeQueReference("rapport_word.doc", document.contenu()));
}

TEST(PlumeRapport, NamesWithTheSignsOfMarkupAreText) {
  htmlDocument document;
  {
    plumeRapport plume(document);
    plume.paragraphe(L"|w| < 3 & <b>", "");
    plume.paragrapheBalise(L"<b>" + echappe(std::wstring_view(L"A<1")) + L"</b>", "");
    plume.ouvrirLigne();
    plume.texte(L"<table>&nbsp;", "");
    plume.fermerLigne();
    plume.fermerTable();
  }
  const std::string html = document.contenu();
  for (const char* wanted : {"|w| &lt; 3 &amp; &lt;b>", "<b>A&lt;1</b>", "&lt;table>&amp;nbsp;"})
    EXPECT_NE(html.find(wanted), std::string::npos) << wanted << "\n" << html;
}

TEST(HtmlDocument, BodyDeuxPoints) {
  EXPECT_EQ(htmlDocument().contenu(),
            "<html>\n<head>\n\n<style>\n<!--\n\n-->\n</style>\n</head>\n\n"
            "\n<body bgcolor:rgb(255,255,255) text:rgb(0,0,0) alink:rgb(255,0,0) vlink:rgb(128,0,128) "
            "link:rgb(0,0,255)>\n\n\n</body>\n</html>\n");
}

class EcrireRapport : public ::testing::Test {
protected:
  void SetUp() override {
    m_dossier = std::filesystem::temp_directory_path() / ("veltora_rapport_" + std::to_string(::getpid()));
    std::filesystem::create_directories(m_dossier);
    base::setDossierTemporaire(m_dossier);
  }
  void TearDown() override {
    base::setDossierTemporaire({});
    std::filesystem::remove_all(m_dossier);
  }
  [[nodiscard]] long fichiers() const {
    return std::distance(std::filesystem::directory_iterator(m_dossier),
                         std::filesystem::directory_iterator());
  }
  std::filesystem::path m_dossier;
};

TEST_F(EcrireRapport, tp_vide_TemporaryNamesDifferAndLeaveTheEmptyFileBeside) {
  htmlDocument a = petitDocument();
  htmlDocument b = petitDocument();
  ASSERT_TRUE(a.ecrire() && b.ecrire());
  EXPECT_NE(a.nomFichier, b.nomFichier);
  EXPECT_EQ(fichiers(), 4);
  const std::filesystem::path nom = std::filesystem::path(a.nomFichier).filename();
  EXPECT_EQ(nom.string().substr(0, 3), "_TP");
  EXPECT_EQ(nom.extension(), ".html");
  const std::filesystem::path vide = m_dossier / nom.stem();
  EXPECT_EQ(std::filesystem::file_size(vide), 0U);
  EXPECT_EQ(base::lireFichier(a.nomFichier), a.contenu());
}

TEST_F(EcrireRapport, AnUnknownFormWritesNothing) {
  htmlDocument document = petitDocument();
  document.format = 2;
  EXPECT_FALSE(document.ecrire());
  document.setFichier((m_dossier / "x.html").string(), 2);
  EXPECT_FALSE(document.ecrire());
  EXPECT_EQ(fichiers(), 0);
}

}  // namespace
}  // namespace veltora
