#include "drafting/dialogs/carroyage_dlg.h"

#include "arx/db/dbpl.h"
#include "arx/ed/acutads.h"
#include "base/format.h"
#include "core/picking.h"
#include "drafting/grid/carroyage.h"
#include "ui/driver.h"

namespace veltora {
namespace {

void garderPolylines(std::vector<AcDbObjectId>& entites) {
  std::erase_if(entites, [](const AcDbObjectId& id) {
    return AcDbObjectPointer<AcDbPolyline>(id).openStatus() != Acad::eOk;
  });
}

ampleurCarroyage estimer(const DlgCarroyage& dialogue, const std::vector<AcDbObjectId>& regions) {
  ampleurCarroyage ampleur;
  for (const AcDbObjectId& id : regions)
    if (const AcDbObjectPointer<AcDbPolyline> region(id); region.openStatus() == Acad::eOk)
      ampleur += estimerCarroyage(*region, dialogue.pasX.value(), dialogue.pasY.value());
  return ampleur;
}

}  // namespace

bool accepterAmpleur(const ampleurCarroyage& ampleur) {
  return !ampleur.demesuree() ||
         ui::messageBox(L"À confirmer : " + texteDemesure(ampleur) + L".\nLe dessiner ?", L"Carroyage",
                        ui::Buttons::YesNo) == ui::kYes;
}

DlgCarroyage::DlgCarroyage(std::vector<AcDbObjectId>& regions)
    : Dialog(L"Dessin de carroyage"), m_regions(regions) {
  for (ui::NumberField* champ : {&pasX, &pasY, &tailleCroix, &tailleTexte}) champ->setRange(1e-6, 1e36);
  format.setIndex(2);
  if (!m_regions.empty()) montrerNombre();
}

void DlgCarroyage::onOk() {
  if (validateFields()) Dialog::onOk();
}

void DlgCarroyage::choisirRegions() {
  const ui::HiddenDialog cache(*this);
  m_regions.clear();
  acutPrintf(L"\nSelectionnez les polylines à carroyer");
  selectEntities(nullptr, nullptr, m_regions);
  garderPolylines(m_regions);
  montrerNombre();
}

void DlgCarroyage::montrerNombre() {
  nombre.setText(base::formater(L"%d régions", static_cast<int>(m_regions.size())));
}

void carroyage() {
  std::vector<AcDbObjectId> regions;
  selectEntities(L"I", nullptr, regions);
  garderPolylines(regions);
  DlgCarroyage d(regions);
  if (d.doModal() != ui::kOk || regions.empty() || !accepterAmpleur(estimer(d, regions))) return;
  int croix = 0;
  int vides = 0;
  for (const AcDbObjectId& id : regions) {
    const AcDbObjectPointer<AcDbPolyline> region(id);
    if (region.openStatus() != Acad::eOk) continue;
    const resultatCarroyage resultat =
        dessinerCarroyage(*region, d.pasX.value(), d.pasY.value(), d.tailleCroix.value(),
                          d.tailleTexte.value(), d.internes.checked(), d.format.index());
    croix += resultat.croix;
    if (resultat.croix == 0) ++vides;
    if (resultat.interrompu) break;
  }
  acutPrintf(L"\nCroix : %d", croix);
  if (vides > 0) acutPrintf(L", régions sans aucune croix : %d", vides);
}

}  // namespace veltora
