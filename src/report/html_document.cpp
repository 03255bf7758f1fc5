#include "report/html_document.h"

#include "base/files.h"

#include <filesystem>

namespace veltora {
namespace {

constexpr const char* kDebutSimple = "<html>\n<head>\n";
constexpr const char* kDebutWord =
    "<html xmlns:o='urn:schemas-microsoft-com:office:office' xmlns:w='urn:schemas-microsoft-com:office:word' "
    "xmlns='http://www.w3.org/TR/REC-html40'>\n<head>\n";
/// Opens the file in the print view of a word processor.
constexpr const char* kVueImpression =
    "\n<!--[if gte mso 9]>\n<xml>\n<w:WordDocument>\n<w:View>Print</w:View>\n<w:Zoom>100</w:Zoom>\n"
    "<w:DoNotOptimizeForBrowser/>\n</w:WordDocument>\n</xml>\n<![endif]-->";

void ajouterLigne(std::string& sortie, std::string_view ligne) { sortie.append(ligne).append("\n"); }

}  // namespace

htmlDocument::htmlDocument() {
  bgColor.setCouleurNommee(136);
  textColor.setCouleurNommee(7);
  linkColor.setCouleurNommee(9);
  aLinkColor.setCouleurNommee(113);
  vLinkColor.setCouleurNommee(112);
}

void htmlDocument::setFichier(std::string_view nom, int nouveauFormat) {
  format = nouveauFormat;
  nomFichier = nom;
  fichierTemporaire = false;
}

void htmlDocument::ajouterStyle(std::string_view classe, std::string_view corps) {
  m_nomsClasses.emplace_back(classe.substr(0, 1) == "." ? "" : ".").append(classe);
  m_corpsClasses.emplace_back(corps);
}

std::string htmlDocument::contenu() const {
  std::string sortie;
  if (format != simple && format != word) return sortie;
  ajouterLigne(sortie, format == word ? kDebutWord : kDebutSimple);
  for (const std::string& ligne : m_entetes) ajouterLigne(sortie, ligne);
  if (format == word) ajouterLigne(sortie, kVueImpression);
  ajouterLigne(sortie, "<style>\n<!--");
  for (std::size_t i = 0; i < m_nomsClasses.size(); ++i) {
    ajouterLigne(sortie, m_nomsClasses[i] + "{" + m_corpsClasses[i] + "}");
  }
  ajouterLigne(sortie, "\n-->\n</style>\n</head>\n");
  // Deliberate (body-deux-points): colons, not equal signs, as in every report written so far.
  ajouterLigne(sortie, "\n<body bgcolor:" + bgColor.css() + " text:" + textColor.css() +
                           " alink:" + aLinkColor.css() + " vlink:" + vLinkColor.css() +
                           " link:" + linkColor.css() + ">\n");
  for (const std::string& ligne : m_corps) ajouterLigne(sortie, ligne);
  ajouterLigne(sortie, "\n</body>\n</html>");
  return sortie;
}

bool htmlDocument::ecrire(std::string* raison) {
  if (format != simple && format != word) {
    if (raison) *raison = "Forme de rapport inconnue";
    return false;
  }
  if (fichierTemporaire || nomFichier.empty()) {
    const std::filesystem::path unique = base::creerFichierTemporaire(base::dossierTemporaire(), "_TP");
    if (unique.empty()) {
      if (raison) *raison = "Impossible de créer un fichier temporaire";
      return false;
    }
    // Deliberate (tp-vide): the empty file that reserves the name stays behind beside the report.
    nomFichier = unique.string() + ".html";
  }
  return base::remplacerFichier(nomFichier, contenu(), raison);
}

void htmlDocument::vider() {
  m_nomsClasses.clear();
  m_corpsClasses.clear();
  m_entetes.clear();
  m_corps.clear();
  nomFichier.clear();
}

}  // namespace veltora
