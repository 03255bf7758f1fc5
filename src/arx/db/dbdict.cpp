#include "arx/db/dbdict.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbtagchain.h"
#include "base/text.h"

#include <algorithm>
#include <unordered_set>

ACDB_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY")
ACDB_DEFINE_MEMBERS(AcDbXrecord, AcDbObject, "XRECORD")
ACDB_DEFINE_MEMBERS(AcDbGroup, AcDbObject, "GROUP")
ACDB_DEFINE_MEMBERS(AcDbOtherObject, AcDbObject, nullptr)

using veltora::base::toLower;

// ---- AcDbDictionary

std::size_t AcDbDictionary::find(const ACHAR* key) const {
  if (!m_placesValid) {
    m_places.clear();
    for (std::size_t i = 0; i < m_entries.size(); ++i) m_places.emplace(toLower(m_entries[i].key), i);
    m_placesValid = true;
  }
  const auto found = m_places.find(toLower(std::wstring_view(key ? key : L"")));
  return found == m_places.end() ? m_entries.size() : found->second;
}

Acad::ErrorStatus AcDbDictionary::getAt(const ACHAR* key, AcDbObjectId& id) const {
  id.setNull();
  const std::size_t at = find(key);
  if (at >= m_entries.size() || !m_entries[at].id.isLive()) return Acad::eKeyNotFound;
  id = m_entries[at].id;
  return Acad::eOk;
}

bool AcDbDictionary::has(const ACHAR* key) const {
  AcDbObjectId id;
  return getAt(key, id) == Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setAt(const ACHAR* key, AcDbObject* object, AcDbObjectId& id) {
  id.setNull();
  if (!key || !*key) return Acad::eInvalidKey;
  if (!object) return Acad::eNullObjectPointer;
  if (!database()) return Acad::eNotInDatabase;
  if (object->database() && object->database() != database()) return Acad::eWrongDatabase;
  Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (object->database()) {
    id = object->objectId();
  } else if (status = database()->addAcDbObject(id, object); status != Acad::eOk) {
    return status;
  }
  object->setOwnerId(objectId());
  const std::size_t at = find(key);
  if (at >= m_entries.size()) {
    enter(key, id);
    return Acad::eOk;
  }
  const AcDbObjectId former = std::exchange(m_entries[at].id, id);
  if (former != id && former.isLive() && former.stub()->object->ownerId() == objectId())
    markErased(former, true);
  return Acad::eOk;
}

void AcDbDictionary::enter(const AcString& key, AcDbObjectId id) {
  const int code = m_hard ? 360 : 350;
  if (m_placesValid) m_places.emplace(toLower(key), m_entries.size());
  m_entries.push_back({key, id, code});
}

void AcDbDictionary::removeAt(std::size_t at) {
  m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(at));
  m_placesValid = false;
}

Acad::ErrorStatus AcDbDictionary::remove(const ACHAR* key) {
  const std::size_t at = find(key);
  if (at >= m_entries.size() || !m_entries[at].id.isLive()) return Acad::eKeyNotFound;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const AcDbObjectId id = m_entries[at].id;
  removeAt(at);
  if (id.stub()->object->ownerId() == objectId()) markErased(id, true);
  return Acad::eOk;
}

std::size_t AcDbDictionary::numEntries() const {
  return static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(),
                                                [](const Entry& entry) { return entry.id.isLive(); }));
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const {
  std::vector<Entry> live;
  for (const Entry& entry : m_entries) {
    if (entry.id.isLive()) live.push_back(entry);
  }
  return new AcDbDictionaryIterator(std::move(live));
}

Acad::ErrorStatus AcDbDictionary::setTreatElementsAsHard(bool hard) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_hard = hard;
  for (Entry& entry : m_entries) entry.code = hard ? 360 : 350;
  return Acad::eOk;
}

void AcDbDictionary::takeEntries(AcDbDxfReader& in) {
  AcString key;
  bool hasKey = false;
  while (in.next()) {
    switch (in.code()) {
      case 280:
        m_hard = in.flag();
        break;
      case 281:
        m_merge = in.integer();
        break;
      case 3:
        key = in.wide();
        hasKey = true;
        break;
      case 330:
      case 340:
      case 350:
      case 360:
        if (hasKey) {
          enter(key, in.id());
          m_entries.back().code = in.code();
          hasKey = false;
          break;
        }
        [[fallthrough]];
      default:
        in.keep();
    }
  }
}

void AcDbDictionary::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  if (in.enter("AcDbDictionary")) takeEntries(in);
  m_withDefault = in.hasSection("AcDbDictionaryWithDefault") && in.enter("AcDbDictionaryWithDefault");
  while (m_withDefault && in.next()) {
    if (in.code() == 340)
      m_default = in.id();
    else
      in.keep();
  }
}

void AcDbDictionary::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.subclass("AcDbDictionary");
  if (m_hard) out.integer(280, 1);
  out.integer(281, m_merge);
  for (const Entry& entry : m_entries) {
    if (entry.id.isNull() || entry.id.isErased()) continue;
    out.wide(3, entry.key);
    out.id(entry.code, entry.id);
  }
  writeExtras(out, "AcDbDictionary");
  if (!m_withDefault) return;
  out.subclass("AcDbDictionaryWithDefault");
  out.id(340, m_default);
  writeExtras(out, "AcDbDictionaryWithDefault");
}

void AcDbDictionary::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbObject::visitReferences(visit);
  for (Entry& entry : m_entries) visit(entry.id);
  visit(m_default);
}

std::vector<AcDbObjectId> AcDbDictionary::ownedObjects() const {
  std::vector<AcDbObjectId> owned;
  for (const Entry& entry : m_entries) {
    if (entry.id.isValid() && entry.id.stub()->object->ownerId() == objectId()) owned.push_back(entry.id);
  }
  return owned;
}

void AcDbDictionary::exchangeFields(AcDbDictionary& other) {
  exchangeBase(other);
  std::swap(m_entries, other.m_entries);
  std::swap(m_places, other.m_places);
  std::swap(m_placesValid, other.m_placesValid);
  std::swap(m_hard, other.m_hard);
  std::swap(m_merge, other.m_merge);
  std::swap(m_withDefault, other.m_withDefault);
  std::swap(m_default, other.m_default);
}

// ---- AcDbXrecord

namespace {

/// Codes that would be taken for something else when the file is read again.
bool isXrecordCode(int code) {
  return code > 0 && code < 999 && code != 5 && code != 100 && code != 101 && code != 105 &&
         dxfKind(code) != DxfKind::kUnknown;
}

/// @return false when an item has a code that an xrecord cannot hold
bool recordTags(const resbuf& chain, DxfTagText& tags) {
  for (const resbuf* item = &chain; item; item = item->rbnext) {
    if (!isXrecordCode(item->restype)) return false;
  }
  return tagsOfChain(&chain, tags);
}

}  // namespace

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** chain, AcDbDatabase* other) const {
  if (!chain) return Acad::eInvalidInput;
  *chain = chainOfTags(m_tags, database() ? database() : other);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& chain, AcDbDatabase*) {
  DxfTagText tags;
  return recordTags(chain, tags) ? setTags(std::move(tags)) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbXrecord::appendRbChain(const resbuf& chain) {
  DxfTagText tags;
  if (!recordTags(chain, tags)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_tags.appendText(tags.text());
  return status;
}

Acad::ErrorStatus AcDbXrecord::setEmpty() { return setTags({}); }

Acad::ErrorStatus AcDbXrecord::setTags(DxfTagText tags) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_tags = std::move(tags);
  m_tags.shrink();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setXlateReferences(bool translate) { return change(m_xlate, translate); }

void AcDbXrecord::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  if (!in.enter("AcDbXrecord")) return;
  m_tags.clear();
  if (in.peek() == 280 && in.next()) m_cloning = in.integer();
  while (in.next()) m_tags.append(in.code(), in.text());
  m_tags.shrink();
}

void AcDbXrecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.subclass("AcDbXrecord");
  out.integer(280, m_cloning);
  DxfTagText::Cursor cursor = m_tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    Adesk::UInt64 handle = 0;
    bool dead = false;
    if (database() && dxfKind(tag.code) == DxfKind::kPointer && dxfParseHandle(tag.value, handle)) {
      AcDbObjectId id;
      dead = database()->getAcDbObjectId(id, false, handle) != Acad::eOk || !id.isLive();
    }
    out.text(tag.code, dead ? std::string_view("0") : tag.value);
  }
  writeExtras(out, "AcDbXrecord");
}

void AcDbXrecord::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbObject::visitReferences(visit);
  visitTags(m_tags, visit);
}

void AcDbXrecord::exchangeFields(AcDbXrecord& other) {
  exchangeBase(other);
  std::swap(m_tags, other.m_tags);
  std::swap(m_cloning, other.m_cloning);
  std::swap(m_xlate, other.m_xlate);
}

// ---- AcDbGroup

Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) {
  if (id.isNull()) return Acad::eNullObjectId;
  if (std::find(m_ids.begin(), m_ids.end(), id) != m_ids.end()) return Acad::eDuplicateKey;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_ids.push_back(id);
  return status;
}

Acad::ErrorStatus AcDbGroup::append(const std::vector<AcDbObjectId>& ids) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  std::unordered_set<AcDbObjectId> known(m_ids.begin(), m_ids.end());
  for (const AcDbObjectId id : ids)
    if (!id.isNull() && known.insert(id).second) m_ids.push_back(id);
  return status;
}

Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) {
  if (std::find(m_ids.begin(), m_ids.end(), id) == m_ids.end()) return Acad::eKeyNotFound;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) std::erase(m_ids, id);
  return status;
}

Acad::ErrorStatus AcDbGroup::setSelectable(bool selectable) { return change(m_selectable, selectable); }

Acad::ErrorStatus AcDbGroup::setAnonymous() { return change(m_anonymous, true); }

void AcDbGroup::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  if (!in.enter("AcDbGroup")) return;
  m_ids.clear();
  while (in.next()) {
    switch (in.code()) {
      case 300:
        m_description = in.wide();
        break;
      case 70:
        m_anonymous = in.flag();
        break;
      case 71:
        m_selectable = in.flag();
        break;
      case 340:
        m_ids.push_back(in.id());
        break;
      default:
        in.keep();
    }
  }
}

void AcDbGroup::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.subclass("AcDbGroup");
  out.wide(300, m_description);
  out.flag(70, m_anonymous);
  out.flag(71, m_selectable);
  for (const AcDbObjectId id : m_ids) {
    if (!id.isNull() && !id.isErased()) out.id(340, id);
  }
  writeExtras(out, "AcDbGroup");
}

void AcDbGroup::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbObject::visitReferences(visit);
  for (AcDbObjectId& id : m_ids) visit(id);
}

void AcDbGroup::exchangeFields(AcDbGroup& other) {
  exchangeBase(other);
  std::swap(m_description, other.m_description);
  std::swap(m_anonymous, other.m_anonymous);
  std::swap(m_selectable, other.m_selectable);
  std::swap(m_ids, other.m_ids);
}

// ---- AcDbOtherObject

void AcDbOtherObject::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  m_tags = in.takeAll();
  m_tags.shrink();
}

void AcDbOtherObject::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.kept(m_tags, database());
}

void AcDbOtherObject::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbObject::visitReferences(visit);
  visitTags(m_tags, visit);
}

void AcDbOtherObject::exchangeFields(AcDbOtherObject& other) {
  exchangeBase(other);
  std::swap(m_type, other.m_type);
  std::swap(m_tags, other.m_tags);
}
