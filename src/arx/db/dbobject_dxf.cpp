// What AcDbObject reads from and writes to drawing files.

#include "arx/db/dbmain.h"
#include "arx/db/dbobject_rare.h"

namespace {

/// End of the group in braces that begins at `at`: one past its "}", or `at` when it does not end before the
/// first subclass marker.
std::size_t endOfBraces(std::span<const DxfTag> tags, std::size_t at) {
  int depth = 0;
  for (std::size_t i = at; i < tags.size() && tags[i].code != 100; ++i) {
    if (tags[i].code != 102) continue;
    if (tags[i].value.starts_with('{')) ++depth;
    if (tags[i].value.starts_with('}') && --depth == 0) return i + 1;
  }
  return at;
}

bool allOfCode(std::span<const DxfTag> tags, int code) {
  for (const DxfTag& tag : tags) {
    Adesk::UInt64 handle = 0;
    if (tag.code != code || !dxfParseHandle(tag.value, handle)) return false;
  }
  return true;
}

AcDbObjectId idOfTag(const DxfTag& tag, AcDbDatabase& database) {
  Adesk::UInt64 handle = 0;
  return dxfParseHandle(tag.value, handle) && handle ? database.idOf(handle) : AcDbObjectId();
}

}  // namespace

void AcDbObject::dxfIn(std::span<const DxfTag> tags, AcDbDatabase& database) {
  std::vector<DxfTag> body;
  body.reserve(tags.size());
  const int handleCode = dxfName() == "DIMSTYLE" ? 105 : 5;
  bool inFront = true;
  bool hasHandle = false;
  bool hasOwner = false;
  bool inXData = false;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    const DxfTag& tag = tags[i];
    if (tag.code == 100) inFront = false;
    if (tag.code == 1001) inXData = true;
    if (inXData && tag.code >= 1000) {
      rare().xData.append(tag.code, tag.value);
    } else if (inFront && tag.code == handleCode && !hasHandle) {
      hasHandle = true;
    } else if (inFront && tag.code == 330 && !hasOwner) {
      hasOwner = true;
      m_owner = idOfTag(tag, database);
    } else if (inFront && tag.code == 102 && endOfBraces(tags, i) > i) {
      const std::size_t end = endOfBraces(tags, i);
      dxfInBraces(tags.subspan(i, end - i), database);
      i = end - 1;
    } else {
      body.push_back(tag);
    }
  }
  AcDbDxfReader in(body, database);
  dxfInFields(in);
  std::vector<DxfExtra> extras = in.takeExtras();
  if (!extras.empty()) rare().extras = std::move(extras);
  if (m_rare) m_rare->xData.shrink();
}

void AcDbObject::dxfInBraces(std::span<const DxfTag> tags, AcDbDatabase& database) {
  const std::span<const DxfTag> content = tags.subspan(1, tags.size() - 2);
  Rare& r = rare();
  if (tags[0].value == "{ACAD_XDICTIONARY" && content.size() == 1 && allOfCode(content, 360) &&
      r.extensionDictionary.isNull()) {
    r.extensionDictionary = idOfTag(content[0], database);
  } else if (tags[0].value == "{ACAD_REACTORS" && allOfCode(content, 330)) {
    for (const DxfTag& tag : content) r.reactors.push_back(idOfTag(tag, database));
  } else {
    for (const DxfTag& tag : tags) r.groups.append(tag.code, tag.value);
  }
}

void AcDbObject::dxfOut(AcDbDxfWriter& out) const {
  out.text(0, dxfName());
  if (const auto* table = AcDbSymbolTable::cast(this)) out.text(2, table->kind());
  if (m_stub) out.handle(dxfName() == "DIMSTYLE" ? 105 : 5, handle());
  if (m_rare) dxfOutBraces(out);
  if (m_stub || !m_owner.isNull()) out.id(330, m_owner);
  if (m_rare) m_rare->extraIsWritten.assign(m_rare->extras.size(), 0);
  writeExtras(out, {});
  dxfOutFields(out);
  if (!m_rare) return;
  for (std::size_t i = 0; i < m_rare->extras.size(); ++i) {
    const DxfExtra& extra = m_rare->extras[i];
    if (m_rare->extraIsWritten[i]) continue;
    if (!extra.whole) out.subclass(extra.subclass);  // of a section that the class has not written this time
    out.kept(extra.tags, database());
  }
  out.kept(m_rare->xData, database());
}

void AcDbObject::dxfOutBraces(AcDbDxfWriter& out) const {
  out.kept(m_rare->groups, database());
  if (m_rare->extensionDictionary.isValid() && !m_rare->extensionDictionary.isErased()) {
    out.text(102, "{ACAD_XDICTIONARY");
    out.id(360, m_rare->extensionDictionary);
    out.text(102, "}");
  }
  bool any = false;
  for (const AcDbObjectId reactor : m_rare->reactors) {
    if (reactor.isNull() || reactor.isErased()) continue;
    if (!any) out.text(102, "{ACAD_REACTORS");
    any = true;
    out.id(330, reactor);
  }
  if (any) out.text(102, "}");
}

void AcDbObject::dxfInFields(AcDbDxfReader&) {}
void AcDbObject::dxfOutFields(AcDbDxfWriter&) const {}

std::string_view AcDbObject::dxfName() const {
  const char* const name = isA()->dxfName();
  return name ? name : std::string_view();
}

void AcDbObject::writeExtras(AcDbDxfWriter& out, std::string_view subclass) const {
  if (!m_rare) return;
  m_rare->extraIsWritten.resize(m_rare->extras.size(), 0);
  for (std::size_t i = 0; i < m_rare->extras.size(); ++i) {
    const DxfExtra& extra = m_rare->extras[i];
    if (extra.whole || extra.subclass != subclass || m_rare->extraIsWritten[i]) continue;
    out.kept(extra.tags, database());
    m_rare->extraIsWritten[i] = 1;
  }
}

bool AcDbObject::hasExtras(std::string_view subclass) const {
  if (!m_rare) return false;
  for (const DxfExtra& extra : m_rare->extras) {
    if (!extra.whole && extra.subclass == subclass) return true;
  }
  return false;
}
