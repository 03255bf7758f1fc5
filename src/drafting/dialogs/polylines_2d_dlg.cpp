#include "drafting/dialogs/polylines_2d_dlg.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "base/format.h"
#include "points/dialogs/choix_multiple_dlg.h"
#include "points/exchange/import_dessin.h"
#include "ui/driver.h"

#include <algorithm>

namespace veltora {

CPol3DToPol2DDlg::CPol3DToPol2DDlg() : Dialog(L"Polylines 3D -> 2D") { couleurLayer.setRange(1, 255); }

demandePolylines2d CPol3DToPol2DDlg::demande() const {
  demandePolylines2d lue;
  lue.modeAltitude = static_cast<demandePolylines2d::Altitude>(modeAltitude.index());
  lue.supprimerOriginales = supprimerOriginales.checked();
  for (std::size_t i = 0; i < m_layers.size(); ++i)
    if (m_coches[i] != 0) lue.layers.push_back(m_layers[i]);
  if (modeLayer.index() == 1) lue.modeleLayer = modeleLayer.text();
  lue.couleurLayer = couleurLayer.intValue();
  return lue;
}

void CPol3DToPol2DDlg::onOk() {
  if (modeLayer.index() == 1) {
    if (!modelePossible(modeleLayer.text())) {
      ui::messageBox(L"Un layer ne peut pas porter le nom que donne le modèle « " + modeleLayer.text() +
                     L" »");
      modeleLayer.setFocus();
      return;
    }
    if (!couleurLayer.validate()) return;
  }
  Dialog::onOk();
}

void CPol3DToPol2DDlg::choisirPolylines() {
  const ui::HiddenDialog cache(*this);
  std::vector<AcDbObjectId> choisies;
  if (!listeSelectionObjets({L"AcDb3dPolyline"}, choisies)) return;
  m_selection = std::move(choisies);
  m_layers.clear();
  m_noms.clear();
  for (const AcDbObjectId& id : m_selection) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    if (entite.openStatus() != Acad::eOk) continue;
    const AcDbObjectId layer = entite->layerId();
    if (std::find(m_layers.begin(), m_layers.end(), layer) != m_layers.end()) continue;
    m_layers.push_back(layer);
    m_noms.emplace_back(entite->layer());
  }
  m_coches.assign(m_layers.size(), 0);
  montrer();
}

void CPol3DToPol2DDlg::choisirLayers() {
  if (m_selection.empty()) {
    ui::messageBox(L"Selectionnez d'abord les polylines", L"Selection des layers");
    return;
  }
  if (choisirPlusieurs(m_noms, m_coches, L"Selectionnez les layers des polylines a traiter",
                       L"Selection Layers", L"Layers") != 0)
    montrer();
}

void CPol3DToPol2DDlg::montrer() {
  nombre.setText(base::formater(L"%d polylines selectionnees", static_cast<int>(m_selection.size())));
  std::wstring texte;
  for (std::size_t i = 0; i < m_noms.size(); ++i)
    if (m_coches[i] != 0) texte += (texte.empty() ? L"" : L", ") + m_noms[i];
  filtre.setText(texte.empty() ? L"** Tous **" : texte);
}

void polylines3dEn2d() {
  CPol3DToPol2DDlg dialogue;
  if (dialogue.doModal() != ui::kOk) return;
  const bilanPolylines2d bilan = convertirPolylines3d(dialogue.selection(), dialogue.demande());
  acutPrintf(L"\nPolylines créées : %d", bilan.creees);
  if (bilan.tropCourtes > 0) acutPrintf(L", laissées de moins de 3 sommets : %d", bilan.tropCourtes);
  if (bilan.sansLayer > 0) acutPrintf(L", laissées faute d'un nom de layer possible : %d", bilan.sansLayer);
  if (bilan.verrouillees > 0) acutPrintf(L", laissées sur un layer verrouillé : %d", bilan.verrouillees);
}

}  // namespace veltora
