#include "calc/dialogs/helmert_dlg.h"

#include "arx/db/dballents.h"
#include "arx/db/dbgroupmap.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "calc/angles.h"
#include "calc/dialogs/resultats_dlg.h"
#include "calc/helmert/rapport_helmert.h"
#include "core/picking.h"
#include "ui/driver.h"

#include <cmath>
#include <optional>

namespace veltora {
namespace {

void direInvalide() { acedAlert(L"Selection invalide"); }

/// Where an entity stands: a point, a block, a text, the centre of a circle.
std::optional<AcGePoint3d> positionDe(AcDbObjectId id) {
  const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForRead);
  if (entite.openStatus() != Acad::eOk) return std::nullopt;
  const AcDbEntity* e = &*entite;
  if (const auto* point = AcDbPoint::cast(e)) return point->position();
  if (const auto* bloc = AcDbBlockReference::cast(e)) return bloc->position();
  if (const auto* texte = AcDbText::cast(e)) return texte->position();
  if (const auto* cercle = AcDbCircle::cast(e)) return cercle->center();
  return std::nullopt;
}

/// A point typed or picked, or with the keyword the place of an entity. @return false when the prompt is left
bool demanderPoint(const ACHAR* invite, const ads_point base, ads_point resultat) {
  for (;;) {
    acedInitGet(0, L"Select");
    const int reponse = acedGetPoint(base, invite, resultat);
    if (reponse != RTKWORD) return reponse == RTNORM;
    AcDbObjectId entite;
    if (pickEntity(L"\nSelectionnez un point, un bloc, un texte ou un cercle : ", entite) != RTNORM) continue;
    if (const auto position = positionDe(entite)) {
      resultat[0] = position->x, resultat[1] = position->y, resultat[2] = position->z;
      return true;
    }
    direInvalide();
  }
}

/// Vertices of a polyline that the user selects. @return nothing when he does not
std::optional<std::vector<AcGePoint2d>> demanderPolyline(const ACHAR* invite) {
  AcDbObjectId entite;
  const int reponse = pickEntity(invite, entite);
  if (reponse == RTCAN || reponse == RTNONE) return std::nullopt;
  const AcDbObjectPointer<AcDbPolyline> polyline(entite);
  if (polyline.openStatus() != Acad::eOk) {
    direInvalide();
    return std::nullopt;
  }
  std::vector<AcGePoint2d> sommets;
  for (unsigned int i = 0; i < polyline->numVerts(); ++i) {
    AcGePoint3d sommet;
    polyline->getPointAt(i, sommet);
    sommets.emplace_back(sommet.x, sommet.y);
  }
  return sommets;
}

}  // namespace

CHelmertDLG::CHelmertDLG() : Dialog(L"Transformation d'helmert") {
  liste.addColumn(L"Numero", 12.0);
  for (const wchar_t* titre : {L"X", L"Y", L"X Rattaché ", L"Y Rattaché"}) {
    liste.addColumn(titre, 22.0, ui::Align::Right);
  }
}

void CHelmertDLG::ajouter(const couplesHelmert& nouveaux) {
  m_couples.depart.insert(m_couples.depart.end(), nouveaux.depart.begin(), nouveaux.depart.end());
  m_couples.arrivee.insert(m_couples.arrivee.end(), nouveaux.arrivee.begin(), nouveaux.arrivee.end());
  rafraichir();
}

void CHelmertDLG::prendrePoints() {
  const ui::HiddenDialog cache(*this);
  ads_point depart = {0.0, 0.0, 0.0};
  ads_point arrivee = {0.0, 0.0, 0.0};
  while (demanderPoint(L"\nSelectionnez le point de depart [Coords]", nullptr, depart) &&
         demanderPoint(L"\nSelectionnez le point de Final [Coords]", depart, arrivee)) {
    ajouter({{{depart[0], depart[1]}}, {{arrivee[0], arrivee[1]}}});
  }
}

void CHelmertDLG::prendrePolylines() {
  const ui::HiddenDialog cache(*this);
  const auto depart = demanderPolyline(L"\nSelectionnez la polyline de départ ");
  if (!depart) return;
  const auto arrivee = demanderPolyline(L"\nSelectionnez la polyline transformee ");
  if (!arrivee) return;
  if (depart->size() != arrivee->size()) {
    acedAlert(L"Erreur, les deux polylines n'ont pas le meme nombre de sommets !");
    return;
  }
  ajouter({*depart, *arrivee});
}

void CHelmertDLG::supprimerChoisis() {
  const std::vector<int> rangs = liste.selection();
  for (auto rang = rangs.rbegin(); rang != rangs.rend(); ++rang) {
    m_couples.depart.erase(m_couples.depart.begin() + *rang);
    m_couples.arrivee.erase(m_couples.arrivee.begin() + *rang);
  }
  rafraichir();
}

void CHelmertDLG::effacer() {
  m_couples = {};
  rafraichir();
}

void CHelmertDLG::rafraichir() {
  liste.clear();
  for (std::size_t i = 0; i < m_couples.depart.size(); ++i) {
    std::vector<std::wstring> cellules{base::formater(L"%d", static_cast<int>(i + 1))};
    const AcGePoint2d& d = m_couples.depart[i];
    const AcGePoint2d& f = m_couples.arrivee[i];
    for (const double valeur : {d.x, d.y, f.x, f.y}) cellules.push_back(base::formater(L"%.4f", valeur));
    liste.addRow(cellules);
  }
  rafraichirResultats();
}

void CHelmertDLG::rafraichirResultats() {
  for (ui::Label* texte : {&deplX, &deplY, &a, &b, &rotation, &echelle, &emq}) texte->setText({});
  resultatHelmert r;
  std::vector<AcGePoint2d> portes;
  if (m_couples.depart.size() < kCouplesMinimum || !transformerHelmert(m_couples, portes, r)) return;
  const auto nombre = [](double valeur) { return base::formater(L"%.4f", valeur); };
  deplX.setText(nombre(r.deplacement.x));
  deplY.setText(nombre(r.deplacement.y));
  a.setText(nombre(r.ab.x));
  b.setText(nombre(r.ab.y));
  rotation.setText(nombre(r.rotation * 200.0 / kPi));
  echelle.setText(nombre(r.echelle));
  // Deliberate (helmert-croisement): the quadratic error goes over the scale, and the field "E.M.Q" stays
  // empty.
  echelle.setText(nombre(calculerEcarts(portes, m_couples.arrivee).sommeCarres /
                         (static_cast<double>(portes.size()) - 1.0)));
}

void CHelmertDLG::montrerResultats() {
  if (m_couples.depart.size() < kCouplesMinimum) {
    ui::messageBox(L"Nombre insuffisant de points de calage", L"Erreur de données");
    return;
  }
  htmlDocument rapport;
  if (rapportHelmert(m_couples, rapport)) montrerRapport(rapport);
}

void CHelmertDLG::appliquerSelection() {
  resultatHelmert r;
  std::vector<AcGePoint2d> portes;
  if (!transformerHelmert(m_couples, portes, r)) return;
  if (!std::isfinite(r.ab.x + r.ab.y + r.deplacement.x + r.deplacement.y)) {
    ui::messageBox(L"Rien n'est transformé, les paramètres ne sont pas des nombres.", L"Erreur de données");
    return;
  }
  const AcGeMatrix3d matrice = matriceHelmert(m_couples.depart, r);
  const ui::HiddenDialog cache(*this);
  acutPrintf(L"\nSelectionnez Elements pour lesquels vous voulez appliquer la transformation :");
  std::vector<AcDbObjectId> entites;
  if (selectEntities(nullptr, nullptr, entites) != RTNORM) return;
  if (const std::wstring fixes = acdbImmovable(entites); !fixes.empty()) {
    acutPrintf(L"\nRien n'est transformé, ces objets ne peuvent pas l'être : %s.", fixes);
    return;
  }
  for (const AcDbObjectId id : entites) {
    const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite);
    if (entite.openStatus() == Acad::eOk) entite->transformBy(matrice);
  }
  acedAlert(L"Transformation terminee");
}

}  // namespace veltora
