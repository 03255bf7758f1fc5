#include "calc/helmert/rapport_helmert.h"

#include "calc/angles.h"
#include "report/plume_rapport.h"
#include "report/report_setup.h"

#include <initializer_list>

namespace veltora {
namespace {

constexpr int kDecimales = 3;
constexpr int kDecimalesParametres = 6;

void ligne(plumeRapport& p, std::initializer_list<double> valeurs, const wchar_t* mot = nullptr,
           const char* attributMot = "") {
  p.ouvrirLigne();
  if (mot) p.texte(mot, attributMot);
  p.nombres(valeurs);
  p.fermerLigne();
}

void entetes(plumeRapport& p, std::initializer_list<const wchar_t*> titres) {
  p.entetes(titres, attributs::kGrisMaj);
}

void ecrireDonnees(plumeRapport& p, const couplesHelmert& couples) {
  p.paragraphe(L"Transformation d'helmert", attributs::kGrand);
  p.paragraphe(L"Données", attributs::kTitre);
  entetes(p, {L"X Depart", L"Y Depart", L"X Final", L"Y Final"});
  for (std::size_t i = 0; i < couples.depart.size(); ++i) {
    ligne(p, {couples.depart[i].x, couples.depart[i].y, couples.arrivee[i].x, couples.arrivee[i].y});
  }
  p.fermerTable();
}

void ecrireParametres(plumeRapport& p, const resultatHelmert& r) {
  p.paragraphe(L"Resultats", attributs::kTitre);
  p.paragraphe(L"Deplacement", attributs::kPetit);
  ligne(p, {r.deplacement.x, r.deplacement.y}, L"Deplacement", attributs::kGrisMaj);
  p.fermerTable();
  p.paragraphe(L"Echelle", attributs::kPetit);
  ligne(p, {r.echelle}, L"Echelle", attributs::kGrisMaj);
  p.fermerTable();
  p.paragraphe(L"Rotation", attributs::kPetit);
  ligne(p, {r.rotation * 200.0 / kPi}, L"Rotation", attributs::kTexte);
  p.fermerTable();
  p.paragraphe(L"Transformation affine", attributs::kPetit);
  p.setDecimales(kDecimalesParametres);
  ligne(p, {r.ab.x}, L"Parametre A", attributs::kGrisMaj);
  ligne(p, {r.ab.y}, L"Parametre B", attributs::kGrisMaj);
  p.setDecimales(kDecimales);
  p.fermerTable();
}

void ecrireResultats(plumeRapport& p, const couplesHelmert& couples, const std::vector<AcGePoint2d>& portes) {
  p.paragraphe(L"Resultats finaux", attributs::kTitre);
  entetes(p, {L"X Final", L"Y Final", L"X Corrigé", L"Y Corrigé", L"DX", L"DY", L"Dist"});
  for (std::size_t i = 0; i < portes.size(); ++i) {
    const AcGePoint2d& f = couples.arrivee[i];
    const AcGePoint2d& c = portes[i];
    ligne(p, {f.x, f.y, c.x, c.y, c.x - f.x, c.y - f.y, c.distanceTo(f)});
  }
  p.fermerTable();
  p.paragraphe(L"Erreurs", attributs::kTitre);
  entetes(p, {L"Err Inf", L"Err Sup", L"Err Moyenne", L"Err moy quad"});
  const ecartsHelmert e = calculerEcarts(portes, couples.arrivee);
  ligne(p, {e.inferieur, e.superieur, e.moyenne, e.quadratique});
  p.fermerTable();
}

}  // namespace

bool rapportHelmert(const couplesHelmert& couples, htmlDocument& document) {
  std::vector<AcGePoint2d> portes;
  resultatHelmert resultat;
  if (!transformerHelmert(couples, portes, resultat)) return false;
  plumeRapport p(document);
  p.setDecimales(kDecimales);
  ecrireDonnees(p, couples);
  ecrireParametres(p, resultat);
  ecrireResultats(p, couples, portes);
  return true;
}

}  // namespace veltora
