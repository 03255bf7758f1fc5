#include "calc/leve/rapport_leve.h"

#include "base/format.h"
#include "report/html_document.h"
#include "report/plume_rapport.h"
#include "report/report_setup.h"

namespace veltora {
namespace {

void ligne(plumeRapport& p, std::initializer_list<std::wstring> cellules) {
  p.ouvrirLigne();
  bool premiere = true;
  for (const std::wstring& cellule : cellules) {
    p.texte(cellule, premiere ? attributs::kTexte : attributs::kNombre);
    premiere = false;
  }
  p.fermerLigne();
}

void ecrireStation(plumeRapport& p, const stationDuLeve& station) {
  p.paragraphe(L"Station " + station.nom + L" (" + nomOrigine(station.origine) + L")", attributs::kPetit);
  if (!station.refus.empty()) {
    p.paragraphe(L"Pas calculée : " + station.refus, attributs::kPetit);
    return;
  }
  const stationLeve& place = station.place;
  p.entetes({L"X", L"Y", L"Z", L"V0 (gr)", L"emq (mgr)", L"sX (mm)", L"sY (mm)", L"Contrôles"},
            attributs::kGrisMaj);
  ligne(p, {base::formater(L"%.4f", place.x), base::formater(L"%.4f", place.y), texteMesure(place.z, L"%.4f"),
            base::formater(L"%.5f", place.g0), texteMesure(place.emq, L"%.2f", 1000.0),
            texteMesure(place.sx, L"%.1f", 1000.0), texteMesure(place.sy, L"%.1f", 1000.0),
            base::formater(L"%d", place.surabondantes)});
  p.fermerTable();
  if (station.mesures.faces.paires > 0) {
    const facesStation& faces = station.mesures.faces;
    p.paragraphe(base::formater(L"Deux cercles sur %d points : collimation %.2f mgr, index %.2f mgr",
                                faces.paires, faces.collimation * 1000.0, faces.index * 1000.0),
                 attributs::kPetit);
  }
  p.entetes({L"Référence", L"Distance", L"dH (mgr)", L"Latéral (mm)", L"dD (mm)", L"dZ (mm)"},
            attributs::kGrisMaj);
  for (const referenceLeve& r : place.references)
    ligne(p, {r.mesure.nom + (r.fausse ? L" (à vérifier)" : L""), base::formater(L"%.3f", r.distance),
              texteMesure(r.ecartH, L"%.2f", 1000.0), texteMesure(r.lateral, L"%.1f", 1000.0),
              texteMesure(r.ecartD, L"%.1f", 1000.0), texteMesure(r.ecartZ, L"%.1f", 1000.0)});
  p.fermerTable();
}

std::wstring stationsDe(const pointDuLeve& point) {
  std::wstring texte;
  for (const std::wstring& station : point.stations) texte += (texte.empty() ? L"" : L", ") + station;
  return texte;
}

void ecrirePoints(plumeRapport& p, const std::vector<pointDuLeve>& points) {
  p.paragraphe(L"Points", attributs::kTitre);
  p.entetes({L"Point", L"X", L"Y", L"Z", L"Code", L"Stations", L"Ecart plan (mm)", L"Ecart Z (mm)"},
            attributs::kGrisMaj);
  for (const pointDuLeve& point : points) {
    const bool plusieurs = point.ecart > 0.0 || point.ecartZ > 0.0;
    ligne(p, {point.nom, base::formater(L"%.4f", point.x), base::formater(L"%.4f", point.y),
              texteMesure(point.z, L"%.4f"), point.code, stationsDe(point),
              plusieurs ? base::formater(L"%.1f", point.ecart * 1000.0) : std::wstring(L"-"),
              plusieurs ? base::formater(L"%.1f", point.ecartZ * 1000.0) : std::wstring(L"-")});
  }
  p.fermerTable();
}

}  // namespace

std::wstring texteMesure(const std::optional<double>& valeur, const wchar_t* format, double facteur) {
  return valeur ? base::formater(format, *valeur * facteur) : std::wstring(L"-");
}

std::wstring texteCorrections(const optionsLeve& options) {
  std::wstring texte = options.refraction
                           ? base::formater(L"courbure et réfraction (k = %.3f)", *options.refraction)
                           : std::wstring(L"ni courbure ni réfraction");
  texte += options.facteur == 1.0 ? std::wstring(L", aucun facteur d'échelle")
                                  : base::formater(L", distances multipliées par %.8f", options.facteur);
  return texte;
}

void rapportLeve(const resultatCalculLeve& resultat, const std::wstring& corrections,
                 htmlDocument& document) {
  plumeRapport p(document);
  p.paragraphe(L"Levé : du carnet aux coordonnées", attributs::kGrand);
  p.paragraphe(L"Corrections : " + corrections, attributs::kPetit);
  if (!resultat.remarques.empty()) {
    p.paragraphe(L"Remarques", attributs::kTitre);
    for (const std::wstring& phrase : resultat.remarques.phrases()) p.paragraphe(phrase, attributs::kPetit);
  }
  p.paragraphe(L"Stations", attributs::kTitre);
  for (const stationDuLeve& station : resultat.stations) ecrireStation(p, station);
  ecrirePoints(p, resultat.points);
}

}  // namespace veltora
