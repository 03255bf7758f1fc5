#include "codes/codif_point.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "codes/flux_texte.h"
#include "core/installation.h"
#include "core/xml_champs.h"

#include <algorithm>
#include <string_view>

namespace veltora {
namespace {

constexpr std::array<const char*, nbLayers> kElementsLayers{"layerBlock", "layerAltitudes", "layerNumero",
                                                            "layerObs", "layerCode"};
constexpr std::array<const char*, nbLayers> kElementsCouleurs{
    "coulLayerBlock", "coulLayerAltitudes", "coulLayerNumero", "coulLayerObs", "coulLayerCode"};

// The line-oriented text form.

constexpr std::wstring_view kDebut = L"Code {";

/// What a line says; in the order in which the keywords are searched.
enum class Mot { Debut, Chemin, Code, Libelle, Taille, Layer, Couleur, Fin, Precision };

struct MotCle {
  std::wstring_view texte;
  Mot mot;
  std::size_t layer = 0;  ///< which one, for layers and colours
};

constexpr std::array<MotCle, 17> kMotsCles{{
    {kDebut, Mot::Debut},
    {L"CHEMIN:", Mot::Chemin},
    {L"CODE:", Mot::Code},
    {L"LIBELLE:", Mot::Libelle},
    {L"BLKTAILLE:", Mot::Taille},
    {L"LAYBLOCK:", Mot::Layer, layerBlock},
    {L"LAYALTITUDES:", Mot::Layer, layerAltitudes},
    {L"LAYNUMERO:", Mot::Layer, layerNumero},
    {L"LAYOBSERVATIONS:", Mot::Layer, layerObs},
    {L"LAYCODE:", Mot::Layer, layerCode},
    {L"COULLAYBLOCK:", Mot::Couleur, layerBlock},
    {L"COULLAYALTI:", Mot::Couleur, layerAltitudes},
    {L"COULLAYNUM:", Mot::Couleur, layerNumero},
    {L"COULLAYOBS:", Mot::Couleur, layerObs},
    {L"COULLAYCODE:", Mot::Couleur, layerCode},
    {L"}", Mot::Fin},
    {L"PRECISIONALTITUDES:", Mot::Precision},
}};

/// The first keyword that the line begins with, ignoring case; null for none.
const MotCle* chercherMot(std::wstring_view ligne) {
  for (const MotCle& cle : kMotsCles) {
    if (base::compareNoCase(ligne.substr(0, cle.texte.size()), cle.texte) == 0) return &cle;
  }
  return nullptr;
}

int couleurOuDefaut(int couleur) { return couleur < 0 || couleur > 256 ? 7 : couleur; }

void prendre(codifPoint& ligne, const MotCle& cle, const std::wstring& reste) {
  switch (cle.mot) {
    case Mot::Chemin:
      ligne.chemin = reste;
      break;
    case Mot::Code:
      ligne.code = std::clamp(base::lireEntier(reste), kSmallestCode, kLargestCode);
      break;
    case Mot::Libelle:
      ligne.libelle = reste;
      break;
    case Mot::Taille: {
      const double taille = base::lireReel(reste);
      ligne.tailleBlock = taille > 0 ? taille : 1.0;
      break;
    }
    case Mot::Layer:
      ligne.layers[cle.layer] = reste;
      break;
    case Mot::Couleur:
      ligne.coulLayers[cle.layer] = couleurOuDefaut(base::lireEntier(reste));
      break;
    case Mot::Precision:
      ligne.precisionAltitudes = std::clamp(base::lireEntier(reste), 0, 8);
      break;
    case Mot::Debut:
    case Mot::Fin:
      break;
  }
}

/// Deliberate (ecriretexte-coupe): key and value of a text line come out as their first characters, so that
/// the record does not read back whole. Nothing reads what this writer makes.
void ecrireChampTexte(fluxTexte& flux, std::wstring_view cle, std::wstring_view valeur) {
  flux.WriteString(L"\n\t" + std::wstring(cle.substr(0, 1)) + L' ' + std::wstring(valeur.substr(0, 1)));
}

void ecrireChampEntier(fluxTexte& flux, const wchar_t* cle, int valeur) {
  flux.WriteString(base::formater(std::wstring(L"\n\t%s %d"), cle, valeur));
}

}  // namespace

codifPoint::codifPoint() : chemin(cheminInstallation(L"biblio\\varnblk1.dwg")) {}

int codifPoint::lireXML(const TiXmlElement& element) {
  if (base::compareNoCaseAnsi(element.Value(), "codifPoint") != 0) return 0;
  // Deliberate (lirexml-bornes): no range is checked; a code of 0 or 12 decimals are taken as they stand.
  lireElementEntier(element, "code", code);
  lireElementTexte(element, "libelle", libelle);
  lireElementTexte(element, "chemin", chemin);
  lireElementDouble(element, "tailleBlock", tailleBlock);
  lireElementEntier(element, "precisionAltitudes", precisionAltitudes);
  for (std::size_t i = 0; i < nbLayers; ++i) lireElementTexte(element, kElementsLayers[i], layers[i]);
  for (std::size_t i = 0; i < nbLayers; ++i) lireElementEntier(element, kElementsCouleurs[i], coulLayers[i]);
  return 1;
}

void codifPoint::ecrireXML(TiXmlElement& parent) const {
  auto* element = new TiXmlElement("codifPoint");
  parent.LinkEndChild(element);
  ajouterElementEntier(*element, "code", code);
  ajouterElementTexte(*element, "libelle", libelle);
  ajouterElementTexte(*element, "chemin", chemin);
  ajouterElementDouble(*element, "tailleBlock", tailleBlock);
  ajouterElementEntier(*element, "precisionAltitudes", precisionAltitudes);
  for (std::size_t i = 0; i < nbLayers; ++i) ajouterElementTexte(*element, kElementsLayers[i], layers[i]);
  for (std::size_t i = 0; i < nbLayers; ++i)
    ajouterElementEntier(*element, kElementsCouleurs[i], coulLayers[i]);
}

int codifPoint::lireTexte(fluxTexte& flux) {
  std::wstring ligne;
  do {
    if (!flux.ReadString(ligne)) return 0;
  } while (base::compareNoCase(base::trim(ligne, kBordsCode), kDebut) != 0);
  while (flux.ReadString(ligne)) {
    ligne = base::trim(ligne, kBordsCode);
    const MotCle* cle = chercherMot(ligne);
    if (!cle) continue;
    if (cle->mot == Mot::Fin) return 1;
    if (cle->mot == Mot::Debut) return 0;
    prendre(*this, *cle, base::trimLeft(ligne.substr(cle->texte.size()), kBordsCode));
  }
  return 0;
}

void codifPoint::ecrireTexte(fluxTexte& flux) const {
  flux.WriteString(L"\nCode {");
  ecrireChampEntier(flux, L"CODE:", code);
  ecrireChampTexte(flux, L"LIBELLE:", libelle);
  ecrireChampTexte(flux, L"CHEMIN:", chemin);
  flux.WriteString(base::formater(std::wstring(L"\n\t%s %f"), L"BLKTAILLE:", tailleBlock));
  ecrireChampEntier(flux, L"PRECISIONALTITUDES:", precisionAltitudes);
  for (const MotCle& cle : kMotsCles) {
    if (cle.mot == Mot::Layer) ecrireChampTexte(flux, cle.texte, layers[cle.layer]);
    if (cle.mot == Mot::Couleur) ecrireChampEntier(flux, cle.texte.data(), coulLayers[cle.layer]);
  }
  flux.WriteString(L"\n}");
}

std::wstring texteAltitude(double z, int decimales) {
  if (z == base::Z_ABSENT || !std::isfinite(z)) return {};
  return base::formater(base::formater(std::wstring(L"%%.%df"), std::clamp(decimales, 0, 30)), z);
}

}  // namespace veltora
