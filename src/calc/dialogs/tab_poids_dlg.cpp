#include "calc/dialogs/tab_poids_dlg.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/dialogs/formule_poids_dlg.h"

#include <cmath>

namespace veltora {
namespace {

std::wstring textePoids(double poids) {
  return poids == base::Z_ABSENT ? L"* calc *" : base::formater(L"%.4f", poids);
}

std::wstring texteType(const ObservationReduite& o) {
  switch (o.type) {
    case ObservationReduite::kAngle:
      return L"Ang";
    case ObservationReduite::kDistance:
      return L"Dist";
    case ObservationReduite::kDenivelee:
      return L"DZ";
    default:
      return {};
  }
}

/// The weight that the field means; Z_ABSENT hands the observation to the formulas.
double poidsSaisi(const std::wstring& texte) {
  const double poids = std::fabs(base::lireReel(base::trim(texte)));
  return poids == 0.0 ? base::Z_ABSENT : poids;
}

}  // namespace

CDlgTabPoidsObse::CDlgTabPoidsObse(reseauMoindresCarres& reseau)
    : Dialog(L"Poids des observations"), m_reseau(reseau) {
  liste.addColumn(L"Obs", 8.0, ui::Align::Right);
  liste.addColumn(L"Type", 8.0);
  for (const wchar_t* titre : {L"Ref", L"Stat", L"P.Visé"}) liste.addColumn(titre, 18.0);
  for (const wchar_t* titre : {L"Mesure", L"Poids"}) liste.addColumn(titre, 15.0, ui::Align::Right);
}

void CDlgTabPoidsObse::onInit() {
  liste.clear();
  liste.reserve(m_reseau.observations.GetSize());
  for (int i = 0; i < m_reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = m_reseau.observations.GetAt(i);
    const bool angle = o.type == ObservationReduite::kAngle;
    liste.addRow({base::formater(L"%d", i), texteType(o), nomPoint(o.reference), nomPoint(o.station),
                  nomPoint(o.vise), base::formater(L"%.4f", angle ? o.mesure * 200.0 / kPi : o.mesure),
                  textePoids(o.poids)});
  }
}

/// Also for an observation that names no point: the solver refuses it, the list shows it.
std::wstring CDlgTabPoidsObse::nomPoint(int index) const {
  if (index == -1) return L"Nord";
  return index >= 0 && index < m_reseau.points.GetSize() ? m_reseau.points.GetAt(index).nom : L"";
}

void CDlgTabPoidsObse::fixerPoids() {
  const double saisi = poidsSaisi(poids.text());
  for (const int rang : liste.selection()) {
    m_reseau.observations.GetAt(rang).poids = saisi;
    liste.setCell(rang, 6, textePoids(saisi));
  }
}

void CDlgTabPoidsObse::ouvrirFormules() { CDlgFormulePoids(m_reseau.formules).doModal(); }

}  // namespace veltora
