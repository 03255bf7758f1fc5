#include "core/drawing_layers.h"

#include "arx/db/dbmain.h"

#include <memory>

namespace veltora {

AcDbObjectId layerOrNew(AcDbLayerTable& layers, const std::wstring& name, int color) {
  AcDbObjectId id;
  if (layers.getIdAt(name.c_str(), id) == Acad::eOk) return id;
  AcCmColor layerColor(7);
  layerColor.setColorIndex(color);
  auto layer = std::make_unique<AcDbLayerTableRecord>();
  if (layer->setName(name.c_str()) != Acad::eOk) return AcDbObjectId::kNull;
  layer->setColor(layerColor);
  if (layers.add(id, layer.get()) != Acad::eOk) return AcDbObjectId::kNull;
  layer.release()->close();
  return id;
}

}  // namespace veltora
