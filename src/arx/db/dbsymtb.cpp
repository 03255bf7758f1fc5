#include "arx/db/dbsymtb.h"

#include "arx/db/dbmain.h"
#include "base/text.h"

using veltora::base::compareNoCase;
using veltora::base::toLower;

ACRX_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject, nullptr, nullptr)
ACDB_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject, nullptr)

namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kMostSpellings = 1000;  // that a table remembers

bool isValidName(const AcString& name, bool mayBeAnonymous) {
  if (name.empty() || name.size() > kLongestName) return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const wchar_t c = name[i];
    if (i == 0 && c == L'*' && mayBeAnonymous && name.size() > 1) continue;
    if (c < 0x20 || std::wstring_view(L"<>/\\\":;?*|=`").find(c) != std::wstring_view::npos) return false;
  }
  return true;
}

}  // namespace

// ---- AcDbSymbolTableRecord

Acad::ErrorStatus AcDbSymbolTableRecord::getName(AcString& name) const {
  name = m_name;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const ACHAR* name) {
  const AcString wanted = name ? name : L"";
  const std::string_view type = dxfName();
  if (!isValidName(wanted, type == "BLOCK_RECORD" || type == "VPORT")) return Acad::eInvalidInput;
  AcDbSymbolTable* const table =
      ownerId().isValid() ? AcDbSymbolTable::cast(ownerId().stub()->object) : nullptr;
  AcDbObjectId other;
  if (table && table->getIdAt(wanted.c_str(), other) == Acad::eOk && other != objectId()) {
    return Acad::eDuplicateRecordName;
  }
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_name = wanted;
  if (table && !objectId().isNull()) table->renamed(objectId(), m_name);
  return Acad::eOk;
}

void AcDbSymbolTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  if (!in.enter("AcDbSymbolTableRecord")) return;
  while (in.next()) in.keep();
}

void AcDbSymbolTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.subclass("AcDbSymbolTableRecord");
  writeExtras(out, "AcDbSymbolTableRecord");
}

bool AcDbSymbolTableRecord::dxfInNameOrFlags(AcDbDxfReader& in) {
  if (in.code() == 2)
    m_name = in.wide();
  else if (in.code() == 70)
    m_flags = in.integer();
  else
    return false;
  return true;
}

void AcDbSymbolTableRecord::dxfOutNameAndFlags(AcDbDxfWriter& out) const {
  out.wide(2, m_name);
  out.integer(70, m_flags);
}

void AcDbSymbolTableRecord::exchangeFields(AcDbSymbolTableRecord& other) {
  exchangeBase(other);
  std::swap(m_name, other.m_name);
  std::swap(m_flags, other.m_flags);
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
  id.setNull();
  if (done()) return Acad::eInvalidIndex;
  id = m_ids[m_at];
  return Acad::eOk;
}

// ---- AcDbSymbolTable

AcDbObjectId AcDbSymbolTable::find(std::wstring_view name) const {
  const auto [first, last] = m_byName.equal_range(toLower(name));
  for (auto it = first; it != last; ++it) {
    if (!it->second.isLive()) continue;
    const auto* record = static_cast<const AcDbSymbolTableRecord*>(it->second.stub()->object);
    if (compareNoCase(record->name(), name) == 0) return it->second;  // else it bears another name by now
  }
  return {};
}

/// What `find` gives, kept by this spelling until a name of the drawing changes.
template <class Char, class Find>
AcDbObjectId AcDbSymbolTable::remembered(Spellings<Char>& known, std::basic_string_view<Char> name,
                                         Find find) const {
  const Adesk::UInt64 version = database() ? database()->namesVersion() : 0;
  if (version != m_namesVersion || known.size() > kMostSpellings) {
    m_spelled.clear();
    m_texts.clear();
    m_namesVersion = version;
  }
  const auto at = known.find(name);
  if (at != known.end() && at->second.isLive()) return at->second;
  const AcDbObjectId id = find();
  if (!id.isNull() && version != 0) known.insert_or_assign(std::basic_string<Char>(name), id);
  return id;
}

Acad::ErrorStatus AcDbSymbolTable::getIdAt(const ACHAR* name, AcDbObjectId& id) const {
  id.setNull();
  if (!name) return Acad::eInvalidInput;
  const std::wstring_view wanted(name);
  id = remembered(m_spelled, wanted, [&] { return find(wanted); });
  return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

AcDbObjectId AcDbSymbolTable::idOfText(std::string_view fileText) const {
  return remembered(m_texts, fileText, [&] { return find(dxfToWide(fileText)); });
}

bool AcDbSymbolTable::has(const ACHAR* name) const {
  AcDbObjectId id;
  return getIdAt(name, id) == Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
  id.setNull();
  if (!record) return Acad::eNullObjectPointer;
  if (!database()) return Acad::eNotInDatabase;
  if (!isWriteEnabled() && database()->undoLog().recording()) return Acad::eNotOpenForWrite;
  if (!m_kind.empty() && record->dxfName() != m_kind) return Acad::eWrongObjectType;
  if (record->name().empty()) return Acad::eInvalidInput;
  if (has(record->name().c_str())) return Acad::eDuplicateRecordName;
  const Acad::ErrorStatus status = database()->addAcDbObject(id, record);
  if (status != Acad::eOk) return status;
  record->setOwnerId(objectId());
  enter(id, record->name());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
  AcDbObjectId id;
  return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator) const {
  iterator = new AcDbSymbolTableIterator(records());
  return Acad::eOk;
}

std::vector<AcDbObjectId> AcDbSymbolTable::records() const {
  std::vector<AcDbObjectId> live;
  for (const AcDbObjectId id : m_order) {
    if (id.isLive()) live.push_back(id);
  }
  return live;
}

void AcDbSymbolTable::enter(AcDbObjectId id, const AcString& name) {
  if (!id.isValid() || !AcDbSymbolTableRecord::cast(id.stub()->object)) return;
  m_order.push_back(id);
  m_byName.emplace(toLower(name), id);
  if (database()) database()->noteNames();
}

void AcDbSymbolTable::renamed(AcDbObjectId id, const AcString& to) {
  if (database()) database()->noteNames();
  const std::wstring key = toLower(to);
  const auto [first, last] = m_byName.equal_range(key);
  for (auto it = first; it != last; ++it) {
    if (it->second == id) return;  // it bore the name before
  }
  m_byName.emplace(key, id);
}

void AcDbSymbolTable::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  if (in.enter({})) {
    while (in.next()) {
      if (in.code() == 2)
        m_kind = in.text();
      else if (in.code() != 70)
        in.keep();
    }
  }
  if (!in.enter("AcDbSymbolTable")) return;
  while (in.next()) {
    if (in.code() != 70) in.keep();
  }
}

void AcDbSymbolTable::dxfOutHead(AcDbDxfWriter& out) const { out.text(2, m_kind); }

void AcDbSymbolTable::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.subclass("AcDbSymbolTable");
  out.integer(70, static_cast<Adesk::Int64>(records().size()));
  writeExtras(out, "AcDbSymbolTable");
}

void AcDbSymbolTable::exchangeFields(AcDbSymbolTable& other) {
  exchangeBase(other);
  std::swap(m_kind, other.m_kind);
}
