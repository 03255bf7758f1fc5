#include "arx/db/dbattr.h"

#include "base/text.h"

ACDB_DEFINE_MEMBERS(AcDbAttribute, AcDbText, "ATTRIB")
ACDB_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, "ATTDEF")

bool AcDbAttributeFields::take(AcDbDxfReader& in) {
  switch (in.code()) {
    case 2: {
      AcDbShortText<32> name;
      in.wide(name);
      tag.set(name.view());
      tagSeen = true;
      return true;
    }
    case 70:  // a second one belongs to attributes of several lines
      if (flagsSeen) return false;
      flags = static_cast<Adesk::Int16>(in.integer());
      flagsSeen = true;
      return true;
    case 73:
      fieldLength = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 280: {  // in front of the tag the version of the groups, behind it the lock of the position
      Adesk::Int8& field = tagSeen ? lock : version;
      if (field != -1) return false;
      field = static_cast<Adesk::Int8>(in.integer());
      return true;
    }
    default:
      return false;
  }
}

void AcDbAttributeFields::writeHead(AcDbDxfWriter& out) const {
  if (version >= 0) out.integer(280, version);
}

void AcDbAttributeFields::writeTag(AcDbDxfWriter& out) const {
  out.wide(2, tag.text());
  out.integer(70, flags);
  if (fieldLength != 0) out.integer(73, fieldLength);
}

void AcDbAttributeFields::writeTail(AcDbDxfWriter& out) const {
  if (lock >= 0) out.integer(280, lock);
}

void AcDbAttributeFields::swap(AcDbAttributeFields& other) noexcept {
  tag.swap(other.tag);
  std::swap(flags, other.flags);
  std::swap(fieldLength, other.fieldLength);
  std::swap(version, other.version);
  std::swap(lock, other.lock);
  std::swap(tagSeen, other.tagSeen);
  std::swap(flagsSeen, other.flagsSeen);
}

// ---- attribute

AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                             AcDbObjectId style)
    : AcDbText(position, text, style) {
  m_fields.tag.set(tag ? tag : L"");
}

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag) {
  if (!tag) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_fields.tag.set(tag);
  return status;
}

Acad::ErrorStatus AcDbAttribute::setInvisible(bool invisible) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_fields.setFlag(1, invisible);
  return status;
}

Acad::ErrorStatus AcDbAttribute::setLockPositionInBlock(bool lock) {
  return change(m_fields.lock, lock ? 1 : 0);
}

Acad::ErrorStatus AcDbAttribute::setFieldLength(Adesk::Int16 length) {
  return change(m_fields.fieldLength, length);
}

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                                       const AcGeMatrix3d& blockTransform) {
  if (!definition) return Acad::eNullObjectPointer;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  setPropertiesFrom(definition);
  copyLook(*definition);
  m_fields = definition->fields();
  return placeBy(blockTransform);
}

bool AcDbAttribute::takeGroup(AcDbDxfReader& in) {
  return in.code() == 74 ? takeVerticalMode(in) : m_fields.take(in);
}

void AcDbAttribute::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);  // NOLINT(bugprone-parent-virtual-call): the text is read below
  m_fields.startReading();
  readSection(in, "AcDbText", [this](AcDbDxfReader& group) { return takeTextGroup(group); });
  readSection(in, "AcDbAttribute");
}

void AcDbAttribute::dxfOutFields(AcDbDxfWriter& out) const {
  writeTextSection(out);
  writeExtras(out, "AcDbText");
  out.subclass("AcDbAttribute");
  m_fields.writeHead(out);
  m_fields.writeTag(out);
  writeVerticalMode(out, 74);
  m_fields.writeTail(out);
  writeExtras(out, "AcDbAttribute");
}

void AcDbAttribute::exchangeFields(AcDbAttribute& other) {
  m_fields.swap(other.m_fields);
  AcDbText::exchangeFields(other);
}

// ---- definition

AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text,
                                                 const ACHAR* tag, const ACHAR* prompt, AcDbObjectId style)
    : AcDbText(position, text, style), m_prompt(prompt ? prompt : L"") {
  m_fields.tag.set(tag ? tag : L"");
}

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag) {
  if (!tag) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_fields.tag.set(tag);
  return status;
}

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const ACHAR* prompt) {
  if (!prompt) return Acad::eInvalidInput;
  return change(m_prompt, prompt);
}

Acad::ErrorStatus AcDbAttributeDefinition::setInvisible(bool invisible) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_fields.setFlag(1, invisible);
  return status;
}

Acad::ErrorStatus AcDbAttributeDefinition::setConstant(bool constant) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_fields.setFlag(2, constant);
  return status;
}

bool AcDbAttributeDefinition::takeGroup(AcDbDxfReader& in) {
  if (in.code() == 74) return takeVerticalMode(in);
  if (in.code() != 3) return m_fields.take(in);
  m_prompt = in.wide();
  return true;
}

void AcDbAttributeDefinition::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);  // NOLINT(bugprone-parent-virtual-call): the text is read below
  m_fields.startReading();
  readSection(in, "AcDbText", [this](AcDbDxfReader& group) { return takeTextGroup(group); });
  readSection(in, "AcDbAttributeDefinition");
}

void AcDbAttributeDefinition::dxfOutFields(AcDbDxfWriter& out) const {
  writeTextSection(out);
  writeExtras(out, "AcDbText");
  out.subclass("AcDbAttributeDefinition");
  m_fields.writeHead(out);
  out.wide(3, m_prompt);
  m_fields.writeTag(out);
  writeVerticalMode(out, 74);
  m_fields.writeTail(out);
  writeExtras(out, "AcDbAttributeDefinition");
}

void AcDbAttributeDefinition::exchangeFields(AcDbAttributeDefinition& other) {
  m_fields.swap(other.m_fields);
  m_prompt.swap(other.m_prompt);
  AcDbText::exchangeFields(other);
}
