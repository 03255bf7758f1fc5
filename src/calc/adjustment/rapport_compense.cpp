#include "calc/adjustment/rapport_compense.h"

#include "base/format.h"
#include "calc/adjustment/textes_compenses.h"
#include "calc/angles.h"
#include "calc/network/donnees_reseau.h"
#include "report/plume_rapport.h"
#include "report/report_setup.h"

#include <cmath>

namespace veltora {
namespace {

constexpr double kGrades = 200.0 / kPi;

void cellule(plumeRapport& p, bool donne, const wchar_t* format, double valeur) {
  if (donne)
    p.texte(base::formater(format, valeur), attributs::kNombre);
  else
    p.texte(L"-", attributs::kNombre);
}

void ecrirePoints(plumeRapport& p, const reseauCompense& r) {
  p.paragraphe(L"Points", attributs::kTitre);
  p.paragraphe(
      L"Coordonnées en mètres, écarts-types et demi-axes en millimètres, gisement du grand axe en grades",
      attributs::kPetit);
  p.entetes({L"Point", L"X", L"Y", L"Z", L"sX", L"sY", L"sZ", L"a", L"b", L"Gisement", L"a 95 %", L"b 95 %"},
            attributs::kGrisMaj);
  const double f = r.facteur() * kMillimetres;
  for (std::size_t i = 0; i < r.points.size(); ++i) {
    const pointPondere& point = r.reseau.points[i];
    const statistiquePoint& s = r.points[i];
    p.ouvrirLigne();
    p.texte(point.nom, attributs::kGrisMaj);
    for (const double c : point.c) cellule(p, c != base::Z_ABSENT, L"%.4f", c);
    for (std::size_t axe = 0; axe < 3; ++axe)
      cellule(p, axe < 2 ? s.calculePlan : s.calculeZ, L"%.2f", s.s.at(axe) * f);
    cellule(p, s.calculePlan, L"%.2f", s.plan.a * f);
    cellule(p, s.calculePlan, L"%.2f", s.plan.b * f);
    cellule(p, s.calculePlan, L"%.1f", s.plan.gisement * kGrades);
    cellule(p, s.calculePlan, L"%.2f", s.plan.a * f * r.facteur95());
    cellule(p, s.calculePlan, L"%.2f", s.plan.b * f * r.facteur95());
    p.fermerLigne();
  }
  p.fermerTable();
}

void ecrireMesures(plumeRapport& p, const reseauCompense& r) {
  p.paragraphe(L"Mesures", attributs::kTitre);
  const std::wstring limites = texteLimites(r);
  p.paragraphe(L"Résidu : compensé moins mesuré ; w avec m0 a priori, tau avec m0 a posteriori" +
                   (limites.empty() ? limites : L" ; " + limites),
               attributs::kPetit);
  p.entetes(
      {L"Mesure", L"Valeur", L"Ecart-type", L"Résidu", L"Redondance", L"w", L"tau", L"Détectable", L"Effet"},
      attributs::kGrisMaj);
  for (std::size_t i = 0; i < r.mesures.size(); ++i) {
    const mesurePonderee& m = r.reseau.mesures[i];
    const statistiqueMesure& s = r.mesures[i];
    if (m.ecarte) continue;
    const bool controle = s.redondance > kRedondanceNulle;
    p.ouvrirLigne();
    p.texte(r.reseau.nommer(m), attributs::kTexte);
    cellule(p, !r.prevu, estAngulaire(m.genre) ? L"%.5f gr" : L"%.4f m",
            estAngulaire(m.genre) ? m.valeur * kGrades : m.valeur);
    p.texte(texteEcart(m.genre, m.ecart), attributs::kNombre);
    p.texte(r.prevu ? L"-" : texteEcart(m.genre, s.residu), attributs::kNombre);
    cellule(p, true, L"%.3f", s.redondance);
    cellule(p, controle && !r.prevu, L"%.2f", s.w);
    cellule(p, controle && r.facteur() > 0.0 && !r.prevu, L"%.2f", s.w / r.facteur());
    p.texte(controle ? texteEcart(m.genre, s.detectable) : std::wstring(L"aucune"), attributs::kNombre);
    p.texte(controle ? texteEcart(genreMesure::distance, s.effet) : std::wstring(L"-"), attributs::kNombre);
    p.fermerLigne();
  }
  p.fermerTable();
}

void ecrirePaires(plumeRapport& p, const reseauCompense& r) {
  if (r.paires.empty()) return;
  p.paragraphe(L"Ellipses relatives", attributs::kTitre);
  p.entetes({L"De", L"A", L"a (mm)", L"b (mm)", L"Gisement", L"a 95 % (mm)"}, attributs::kGrisMaj);
  const double f = r.facteur() * kMillimetres;
  for (const ellipseDePaire& e : r.paires) {
    p.ouvrirLigne();
    p.texte(r.reseau.point(e.a).nom, attributs::kGrisMaj);
    p.texte(r.reseau.point(e.b).nom, attributs::kGrisMaj);
    for (const double valeur : {e.e.a * f, e.e.b * f}) cellule(p, true, L"%.2f", valeur);
    cellule(p, true, L"%.1f", e.e.gisement * kGrades);
    cellule(p, true, L"%.2f", e.e.a * f * r.facteur95());
    p.fermerLigne();
  }
  p.fermerTable();
}

}  // namespace

void rapportCompense(const reseauCompense& r, htmlDocument& document) {
  plumeRapport p(document);
  p.paragraphe(L"Compensation pondérée", attributs::kGrand);
  for (const std::wstring& ligne : lignesBilan(r)) p.paragraphe(ligne, attributs::kPetit);
  if (!r.remarques.empty()) p.paragraphe(L"Remarques", attributs::kTitre);
  for (const std::wstring& phrase : r.remarques.phrases()) p.paragraphe(phrase, attributs::kPetit);
  ecrirePoints(p, r);
  ecrireMesures(p, r);
  ecrirePaires(p, r);
}

}  // namespace veltora
