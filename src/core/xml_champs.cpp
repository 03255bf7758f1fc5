#include "core/xml_champs.h"

#include "base/files.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/xml_controle.h"
#include "core/xml_utf8.h"

namespace veltora {
namespace {

// A code table of ten thousand rows has some 10 MB and a depth of 4.
constexpr std::size_t kTailleMax = std::size_t{64} << 20;
constexpr std::size_t kProfondeurMax = 100;

TiXmlElement& ajouterElement(TiXmlElement& parent, const char* nom, const std::string& texte) {
  auto* element = new TiXmlElement(nom);
  parent.LinkEndChild(element);
  element->LinkEndChild(new TiXmlText(texte));
  return *element;
}

/// "]]>" would end a CDATA section.
std::string sansFinDeCdata(std::string texte) {
  for (std::size_t i = texte.find("]]>"); i != std::string::npos; i = texte.find("]]>", i))
    texte.insert(i + 2, 1, ' ');
  return texte;
}

/// Text of the first child of this name; null when it has none. @return false when the child is missing
bool chercherTexte(const TiXmlElement& parent, const char* nom, const char*& texte) {
  const TiXmlElement* element = parent.FirstChildElement(nom);
  if (!element) return false;
  texte = element->GetText();
  return true;
}

}  // namespace

void ajouterElementEntier(TiXmlElement& parent, const char* nom, int valeur) {
  ajouterElement(parent, nom, base::formater("%d", valeur));
}

void ajouterElementDouble(TiXmlElement& parent, const char* nom, double valeur) {
  ajouterElement(parent, nom, base::formater("%f", valeur));
}

void ajouterElementTexte(TiXmlElement& parent, const char* nom, std::wstring_view valeur) {
  std::string octets = utf8DepuisTexte(valeur);
  const bool brut = octets.find("&#x") != std::string::npos;
  if (brut) octets = sansFinDeCdata(std::move(octets));
  TiXmlElement& element = ajouterElement(parent, nom, octets);
  element.SetAttribute("mode", "utf8");
  // The library prints what looks like a character reference as it stands, up to the next semicolon, brackets
  // included: such a text would break the file.
  if (brut) element.FirstChild()->ToText()->SetCDATA(true);
}

int lireElementEntier(const TiXmlElement& parent, const char* nom, int& valeur) {
  const char* texte = nullptr;
  if (!chercherTexte(parent, nom, texte) || !texte) return 0;
  valeur = base::lireEntier(texte);
  return 1;
}

int lireElementDouble(const TiXmlElement& parent, const char* nom, double& valeur) {
  const char* texte = nullptr;
  if (!chercherTexte(parent, nom, texte) || !texte) return 0;
  valeur = base::lireReel(texte);
  return 1;
}

int lireElementTexte(const TiXmlElement& parent, const char* nom, std::wstring& valeur) {
  const char* texte = nullptr;
  if (!chercherTexte(parent, nom, texte)) return 0;
  const char* mode = parent.FirstChildElement(nom)->Attribute("mode");
  const bool pageDeCodes = !mode || base::compareNoCaseAnsi(mode, "asc") == 0;
  if (!texte)
    valeur.clear();
  else
    valeur = pageDeCodes ? base::widen(texte) : texteDepuisUtf8(texte);
  return 1;
}

int compterElements(const TiXmlElement& parent, const char* nom) {
  int nombre = 0;
  for (const TiXmlElement* e = parent.FirstChildElement(nom); e; e = e->NextSiblingElement(nom)) ++nombre;
  return nombre;
}

bool analyserXML(TiXmlDocument& document, std::string_view octets) {
  document.Clear();
  document.ClearError();
  constexpr std::string_view bom = "\xEF\xBB\xBF";
  if (octets.starts_with(bom)) octets.remove_prefix(bom.size());
  if (octets.size() > kTailleMax) return false;
  // It ends with a tag: blanks at the very end make the library read past them.
  const std::string texte(partieLisible(octets, kProfondeurMax));
  if (texte.empty()) return false;
  // Positions are not needed, and their count never ends on some malformed characters.
  document.SetTabSize(0);
  document.Parse(texte.c_str(), nullptr, TIXML_ENCODING_UNKNOWN);
  if (!document.Error()) return true;
  document.Clear();
  return false;
}

bool chargerFichierXML(TiXmlDocument& document, const std::filesystem::path& chemin) {
  std::error_code erreur;
  const bool raisonnable = std::filesystem::file_size(chemin, erreur) <= kTailleMax && !erreur;
  const auto octets = raisonnable ? base::lireFichier(chemin) : std::nullopt;
  if (octets) return analyserXML(document, *octets);
  document.Clear();
  return false;
}

std::string texteXML(const TiXmlDocument& document) {
  TiXmlPrinter imprimeur;
  imprimeur.SetIndent("    ");
  imprimeur.SetLineBreak("\n");
  document.Accept(&imprimeur);
  return imprimeur.Str();
}

bool sauverFichierXML(const TiXmlDocument& document, const std::filesystem::path& chemin) {
  return base::remplacerFichier(chemin, texteXML(document));
}

}  // namespace veltora
