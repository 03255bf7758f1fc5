#include "drafting/dialogs/rattach_z_dlg.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "core/picking.h"
#include "points/point_du_dessin.h"

namespace veltora {
namespace {

/// Kept for the run.
struct memoireRattach {
  double precedente = 100.0;
  double nouvelle = 100.0;
  double difference = 0.0;
};

memoireRattach& memoire() {
  static memoireRattach valeurs;
  return valeurs;
}

/// Reads a field that the user changed; one that shows the value rounded leaves it as precise as it is.
/// @return false when the field holds no number
bool lire(const ui::NumberField& champ, double& valeur) {
  if (!champ.valid()) return false;
  if (champ.text() != base::formater(L"%.4f", valeur)) valeur = champ.value();
  return true;
}

Answer designer(double& altitude) {
  AcDbObjectId id;
  const int resultat = pickEntity(L"\nSelectionnez le point :", id);
  if (resultat == RTERROR) return Answer::kAgain;  // nothing there
  if (resultat != RTNORM) return Answer::kEnd;
  pointDuDessin point;
  if (!point.updateFromDrawing(id)) {
    acutPrintf(L"\nCe n'est pas un point Veltora !");
    return Answer::kAgain;
  }
  if (point.z == Z_ABSENT) {
    acutPrintf(L"\nAltitude invalide !");
    return Answer::kAgain;
  }
  altitude = point.z;
  return Answer::kGiven;
}

}  // namespace

CDlgRattachZ::CDlgRattachZ() : Dialog(L"Rattachement des Altitudes") {
  select.beside(altitudePrecedente);
  mode.onChange = [this] { activerChamps(); };
  altitudePrecedente.onLeave = [this] {
    if (!lire(altitudePrecedente, m_precedente)) return;
    m_nouvelle = m_precedente + m_difference;
    montrer();
  };
  differenceAltitudes.onLeave = [this] {
    if (!lire(differenceAltitudes, m_difference)) return;
    m_nouvelle = m_difference + m_precedente;
    montrer();
  };
  nouvelleAltitude.onLeave = [this] {
    if (!lire(nouvelleAltitude, m_nouvelle)) return;
    m_difference = m_nouvelle - m_precedente;
    montrer();
  };
}

void CDlgRattachZ::onInit() {
  m_precedente = memoire().precedente;
  m_nouvelle = memoire().nouvelle;
  m_difference = memoire().difference;
  montrer();
  activerChamps();
}

void CDlgRattachZ::onOk() {
  memoire() = {m_precedente, m_nouvelle, m_difference};
  Dialog::onOk();
}

void CDlgRattachZ::montrer() {
  altitudePrecedente.setValue(m_precedente);
  nouvelleAltitude.setValue(m_nouvelle);
  differenceAltitudes.setValue(m_difference);
}

void CDlgRattachZ::activerChamps() {
  nouvelleAltitude.enable(mode.index() == 0);
  differenceAltitudes.enable(mode.index() == 1);
}

void CDlgRattachZ::prendrePoint() {
  const ui::HiddenDialog cache(*this);
  if (!acdbHostApplicationServices()->workingDatabase()) return;
  while (designer(m_precedente) == Answer::kAgain) {
  }
  m_nouvelle = m_precedente + m_difference;
  montrer();
}

}  // namespace veltora
