#include "codes/codif_point.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/installation.h"
#include "core/xml_champs.h"

#include <algorithm>

namespace veltora {
namespace {

constexpr std::array<const char*, nbLayers> kElementsLayers{"layerBlock", "layerAltitudes", "layerNumero",
                                                            "layerObs", "layerCode"};
constexpr std::array<const char*, nbLayers> kElementsCouleurs{
    "coulLayerBlock", "coulLayerAltitudes", "coulLayerNumero", "coulLayerObs", "coulLayerCode"};

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

std::wstring texteAltitude(double z, int decimales) {
  if (z == base::Z_ABSENT) return {};
  return base::formater(base::formater(std::wstring(L"%%.%df"), std::clamp(decimales, 0, 30)), z);
}

}  // namespace veltora
