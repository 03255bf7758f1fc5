#include "arx/dxf/dxfold.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kCommon[] = {6, 8, 48, 60, 62, 67};
constexpr int kDimension[] = {1, 2, 3, 10, 20, 30, 11, 21, 31, 12, 22, 32, 51, 53, 70, 210, 220, 230};
constexpr int kDefinitionPoints[] = {13, 23, 33, 14, 24, 34, 15, 25, 35, 16, 26, 36, 40, 50};
constexpr int kOblique[] = {52};

/// Sections of a dimension behind the common one, by the low bits of group 70.
constexpr std::array<const char*, 7> kDimensionMarkers = {
    "AcDbAlignedDimension",   "AcDbAlignedDimension", "AcDb2LineAngularDimension",
    "AcDbDiametricDimension", "AcDbRadialDimension",  "AcDb3PointAngularDimension",
    "AcDbOrdinateDimension"};

struct Plain {
  std::string_view type;
  const char* marker;
};
constexpr std::array<Plain, 4> kPlain = {
    {{"SOLID", "AcDbTrace"}, {"TRACE", "AcDbTrace"}, {"SHAPE", "AcDbShape"}, {"VIEWPORT", "AcDbViewport"}}};

constexpr std::array<Plain, 8> kRecords = {{{"LAYER", "AcDbLayerTableRecord"},
                                            {"STYLE", "AcDbTextStyleTableRecord"},
                                            {"LTYPE", "AcDbLinetypeTableRecord"},
                                            {"APPID", "AcDbRegAppTableRecord"},
                                            {"VPORT", "AcDbViewportTableRecord"},
                                            {"VIEW", "AcDbViewTableRecord"},
                                            {"UCS", "AcDbUCSTableRecord"},
                                            {"DIMSTYLE", "AcDbDimStyleTableRecord"}}};

/// In front of every section: handle, owner, groups in braces.
bool isFront(int code) { return code == 5 || code == 102 || code == 330 || code == 360; }

bool isMarked(std::span<const DxfTag> tags) {
  return std::any_of(tags.begin(), tags.end(), [](const DxfTag& tag) { return tag.code == 100; });
}

}  // namespace

void DxfOldItems::section(std::string_view marker, std::span<const int> codes) {
  m_result.push_back({100, 0, marker});
  for (std::size_t i = 0; i < m_source.size(); ++i) {
    const bool wanted = std::find(codes.begin(), codes.end(), m_source[i].code) != codes.end();
    if (m_taken[i] || !wanted) continue;
    m_taken[i] = true;
    m_result.push_back(m_source[i]);
  }
}

void DxfOldItems::rest(std::string_view marker) {
  if (!marker.empty()) m_result.push_back({100, 0, marker});
  for (const bool extended : {false, true}) {
    for (std::size_t i = 0; i < m_source.size(); ++i) {
      if (!m_taken[i] && (m_source[i].code >= 1000) == extended) m_result.push_back(m_source[i]);
    }
  }
}

void DxfOldItems::dimension(int kind) {
  section("AcDbDimension", kDimension);
  const auto index = static_cast<std::size_t>(kind);
  if (index >= kDimensionMarkers.size()) return rest({});
  section(kDimensionMarkers[index], kDefinitionPoints);
  if (index == 0) section("AcDbRotatedDimension", kOblique);
  rest({});
}

std::span<const DxfTag> DxfOldItems::entity(std::string_view type, std::span<const DxfTag> tags) {
  const auto plain =
      std::find_if(kPlain.begin(), kPlain.end(), [&](const Plain& row) { return row.type == type; });
  const bool isDimension = type == "DIMENSION";
  if ((plain == kPlain.end() && !isDimension) || isMarked(tags)) return tags;
  m_source.assign(tags.begin(), tags.end());
  m_taken.assign(tags.size(), false);
  m_result.clear();
  int kind = 0;
  for (std::size_t i = 0; i < m_source.size(); ++i) {
    if (m_source[i].code == 70) kind = veltora::base::lireEntier(m_source[i].value) & 7;
    if (!isFront(m_source[i].code)) continue;
    m_taken[i] = true;
    m_result.push_back(m_source[i]);
  }
  section("AcDbEntity", kCommon);
  if (isDimension) {
    dimension(kind);
  } else {
    rest(plain->marker);
  }
  return m_result;
}

void DxfOldItems::arrowByHandle(DxfTag tag, AcDbDatabase& database) {
  const AcDbObjectId block = database.recordOf("BLOCK_RECORD", dxfToWide(tag.value));
  if (block.isNull()) return;
  constexpr int kFirstName = 5;
  constexpr int kFirstHandle = 342;
  DxfTagText text;
  text.appendHandle(tag.code - kFirstName + kFirstHandle, block.handle());
  DxfTagText::Cursor cursor = text.tags();
  cursor.next(tag);
  tag.value = m_texts.emplace_back(tag.value);
  m_result.push_back(tag);
}

std::span<const DxfTag> DxfOldItems::record(std::string_view type, std::span<const DxfTag> tags,
                                            AcDbDatabase& database) {
  const auto known =
      std::find_if(kRecords.begin(), kRecords.end(), [&](const Plain& row) { return row.type == type; });
  if (known == kRecords.end() || isMarked(tags)) return tags;
  const bool style = type == "DIMSTYLE";
  m_result.clear();
  m_texts.clear();
  for (const DxfTag& tag : tags) {
    if (isFront(tag.code) && !style) m_result.push_back(tag);
  }
  m_result.push_back({100, 0, "AcDbSymbolTableRecord"});
  m_result.push_back({100, 0, known->marker});
  for (const DxfTag& tag : tags) {
    if (style && tag.code >= 5 && tag.code <= 7) {
      arrowByHandle(tag, database);
    } else if (style || !isFront(tag.code)) {
      m_result.push_back(tag);
    }
  }
  return m_result;
}

std::wstring dxfPresentBlockName(const std::wstring& name) {
  if (veltora::base::compareNoCase(name, L"$MODEL_SPACE") == 0) return ACDB_MODEL_SPACE;
  if (veltora::base::compareNoCase(name, L"$PAPER_SPACE") == 0) return ACDB_PAPER_SPACE;
  return name;
}
