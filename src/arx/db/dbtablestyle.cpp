#include "arx/db/dbtablestyle.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"

#include <algorithm>
#include <memory>
#include <string>

namespace {

constexpr const ACHAR* kStyles = L"ACAD_TABLESTYLE";

void append(DxfTagText& tags, std::initializer_list<std::pair<int, const char*>> groups) {
  for (const auto& [code, value] : groups) tags.append(code, value);
}

// Of data, title and header rows: style, text height, alignment, colours, and the six borders.
void appendRow(DxfTagText& tags, const char* height, const char* alignment) {
  append(tags, {{7, "Standard"},
                {140, height},
                {170, alignment},
                {62, "0"},
                {63, "7"},
                {283, "0"},
                {90, "512"},
                {91, "0"},
                {1, ""}});
  for (int border = 0; border < 6; ++border) {
    tags.append(274 + border, "-2");
    tags.append(284 + border, "1");
    tags.append(64 + border, "0");
  }
}

DxfTagText styleTags() {
  DxfTagText tags;
  append(tags, {{100, "AcDbTableStyle"},
                {280, "0"},
                {3, "Standard"},
                {70, "0"},
                {71, "0"},
                {40, "0.06"},
                {41, "0.06"},
                {280, "0"},
                {281, "0"}});
  appendRow(tags, "0.18", "2");
  appendRow(tags, "0.25", "5");
  appendRow(tags, "0.18", "5");
  return tags;
}

// Files name the classes of what not every program knows.
void declareClass(AcDbDatabase& database, const char* type, const char* name, const char* isEntity) {
  auto& sections = database.rawSections();
  auto classes = std::ranges::find(sections, std::string("CLASSES"), &DxfRawSection::name);
  if (classes == sections.end()) {
    sections.push_back({"CLASSES", {}});
    classes = sections.end() - 1;
    auto& order = database.sectionOrder();
    const auto header = std::ranges::find(order, std::string("HEADER"));
    order.insert(header == order.end() ? order.begin() : header + 1, "CLASSES");
  }
  DxfTagText::Cursor cursor = classes->tags.tags();
  for (DxfTag tag; cursor.next(tag);)
    if (tag.code == 1 && tag.value == type) return;
  append(classes->tags, {{0, "CLASS"},
                         {1, type},
                         {2, name},
                         {3, "ObjectDBX Classes"},
                         {90, "1152"},
                         {91, "1"},
                         {280, "0"},
                         {281, isEntity}});
}

}  // namespace

AcDbObjectId acdbTableStyle(AcDbDatabase& database) {
  declareClass(database, "TABLESTYLE", "AcDbTableStyle", "0");
  declareClass(database, "ACAD_TABLE", "AcDbTable", "1");
  const AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForWrite);
  if (!root) return {};
  AcDbObjectId id;
  if (root->getAt(kStyles, id) != Acad::eOk) {
    auto made = std::make_unique<AcDbDictionary>();
    if (root->setAt(kStyles, made.get(), id) != Acad::eOk) return {};
    made.release()->close();
  }
  const AcDbObjectPointer<AcDbDictionary> styles(id, AcDb::kForWrite);
  if (!styles) return {};
  if (AcDbObjectId standard; styles->getAt(L"Standard", standard) == Acad::eOk) return standard;
  for (const AcDbDictionary::Entry& entry : styles->entries())
    if (entry.id.isLive()) return entry.id;
  auto style = std::make_unique<AcDbOtherObject>("TABLESTYLE");
  style->setTags(styleTags());
  AcDbObjectId made;
  if (styles->setAt(L"Standard", style.get(), made) != Acad::eOk) return {};
  style.release()->close();
  return made;
}
