#include "arx/plot/pllooks.h"

#include "arx/db/dbsymrecords.h"
#include "base/text.h"

#include <algorithm>

namespace base = veltora::base;

namespace {

constexpr int kByLayer = -1;
constexpr int kByBlock = -2;

enum class From { kOwn, kLayer, kBlock };

const AcDbLinetypeTableRecord* linetypeOf(AcDbObjectId id, From& from) {
  const auto* const record = id.isLive() ? AcDbLinetypeTableRecord::cast(id.stub()->object) : nullptr;
  from = From::kOwn;
  if (!record || base::compareNoCase(record->name(), L"ByLayer") == 0) from = From::kLayer;
  if (record && base::compareNoCase(record->name(), L"ByBlock") == 0) from = From::kBlock;
  return from == From::kOwn && !record->dashes().empty() ? record : nullptr;
}

}  // namespace

const AcPlLooks::Layer& AcPlLooks::ofLayer(AcDbObjectId id) {
  const auto [found, added] = m_layers.try_emplace(id.stub());
  Layer& layer = found->second;
  if (!added) return layer;
  const auto* const record = id.isLive() ? AcDbLayerTableRecord::cast(id.stub()->object) : nullptr;
  const AcString name = record ? record->name() : AcString(L"0");
  layer.name = base::toUtf8(name);
  layer.zero = name == L"0";
  const auto same = [&](const std::wstring& wanted) { return base::compareNoCase(name, wanted) == 0; };
  layer.hidden = (!m_wanted.empty() && std::none_of(m_wanted.begin(), m_wanted.end(), same)) ||
                 std::any_of(m_unwanted.begin(), m_unwanted.end(), same);
  // What is drawn to help drawing is on this layer, which is never printed.
  if (m_printed && base::compareNoCase(name, L"Defpoints") == 0) layer.hidden = true;
  if (!record) return layer;
  layer.color = record->color();
  layer.weight = record->lineWeight();
  From from = From::kOwn;
  layer.linetype = linetypeOf(record->linetypeObjectId(), from);
  layer.hidden =
      layer.hidden || record->isOff() || record->isFrozen() || (m_printed && !record->isPlottable());
  return layer;
}

AcPlLook AcPlLooks::of(const AcDbEntity& entity, const AcPlLook* outer) {
  AcPlLook look;
  const bool inherits = outer && ofLayer(entity.layerId()).zero;
  look.layer = inherits ? outer->layer : entity.layerId();
  const Layer& layer = ofLayer(look.layer);
  look.hidden = layer.hidden;
  look.color = entity.color();
  if (look.color.isByLayer()) look.color = layer.color;
  if (look.color.isByBlock()) look.color = outer ? outer->color : AcCmColor(7);
  look.weight = entity.lineWeight();
  if (look.weight == kByLayer) look.weight = layer.weight;
  if (look.weight == kByBlock) look.weight = outer ? outer->weight : -3;
  From from = From::kOwn;
  look.linetype = linetypeOf(entity.linetypeId(), from);
  if (from == From::kLayer) look.linetype = layer.linetype;
  if (from == From::kBlock) look.linetype = outer ? outer->linetype : nullptr;
  look.linetypeScale = entity.linetypeScale();
  return look;
}
