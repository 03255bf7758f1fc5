#include "drafting/dialogs/allegement_dlg.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"

namespace veltora {

CDlgAllementDessin::CDlgAllementDessin() : Dialog(L"Alléger le dessin") {
  layerDelestage.setEditable();
  critere.onClick = [this] {
    const wchar_t* const clic =
        critere.index() == 0 ? L"\nCode = %d CDlgAllementDessin::OnBnClickedAllegementPointsParSurface()"
                             : L"\nCode = %d CDlgAllementDessin::OnBnClickedAllegementSurfaceOccupeeDessin()";
    acutPrintf(clic, critere.index());
  };
}

void CDlgAllementDessin::onInit() {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return;
  layerDelestage.clear();
  const AcDbObjectPointer<AcDbSymbolTable> layers(dessin->layerTableId());
  if (layers.openStatus() != Acad::eOk) return;
  for (const AcDbObjectId& id : layers->records()) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> layer(id);
    if (layer.openStatus() == Acad::eOk) layerDelestage.addItem(layer->name());
  }
}

}  // namespace veltora
