#pragma once

#include "arx/db/dbshared.h"
#include "arx/db/dbtext.h"

/// What attributes and their definitions have in common beside the text.
struct AcDbAttributeFields {
  AcDbShared<std::wstring> tag;
  Adesk::Int16 flags = 0;        // 70: 1 invisible, 2 constant, 4 verify, 8 preset
  Adesk::Int16 fieldLength = 0;  // 73
  Adesk::Int8 version = 0;       // 280 in front of the tag, -1 when the file had none
  Adesk::Int8 lock = 0;          // 280 behind it, likewise
  bool tagSeen = false;          // while reading, likewise
  bool flagsSeen = false;

  void startReading() { version = lock = -1, tagSeen = flagsSeen = false; }
  bool take(AcDbDxfReader& in);
  void writeHead(AcDbDxfWriter& out) const;
  void writeTag(AcDbDxfWriter& out) const;
  void writeTail(AcDbDxfWriter& out) const;
  void swap(AcDbAttributeFields& other) noexcept;
  [[nodiscard]] bool flag(int bit) const { return (flags & bit) != 0; }
  void setFlag(int bit, bool on) { flags = static_cast<Adesk::Int16>(on ? flags | bit : flags & ~bit); }
};

class AcDbAttributeDefinition;

/// Value of one attribute of a block reference.
class ARX_API AcDbAttribute : public AcDbText {
  ACRX_DECLARE_MEMBERS(AcDbAttribute)
  ACDB_DECLARE_COPY(AcDbAttribute)
public:
  AcDbAttribute() = default;
  AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag, AcDbObjectId style = {});
  [[nodiscard]] AcString tag() const { return AcString(m_fields.tag.text()); }
  [[nodiscard]] const ACHAR* tagConst() const { return m_fields.tag->c_str(); }
  Acad::ErrorStatus setTag(const ACHAR* tag);
  [[nodiscard]] bool isInvisible() const { return m_fields.flag(1); }
  Acad::ErrorStatus setInvisible(bool invisible);
  [[nodiscard]] bool isConstant() const { return m_fields.flag(2); }
  [[nodiscard]] bool isVerifiable() const { return m_fields.flag(4); }
  [[nodiscard]] bool isPreset() const { return m_fields.flag(8); }
  [[nodiscard]] bool lockPositionInBlock() const { return m_fields.lock > 0; }
  Acad::ErrorStatus setLockPositionInBlock(bool lock);
  [[nodiscard]] Adesk::Int16 fieldLength() const { return m_fields.fieldLength; }
  Acad::ErrorStatus setFieldLength(Adesk::Int16 length);
  /// Takes tag, flags, look and text of a definition and its place under the reference's transform.
  Acad::ErrorStatus setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                          const AcGeMatrix3d& blockTransform);
  [[nodiscard]] bool isHidden() const override { return isInvisible() || AcDbText::isHidden(); }

  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbAttribute& other);

private:
  AcDbAttributeFields m_fields;
};

/// Definition of an attribute in a block; its text is the default value.
class ARX_API AcDbAttributeDefinition : public AcDbText {
  ACRX_DECLARE_MEMBERS(AcDbAttributeDefinition)
  ACDB_DECLARE_COPY(AcDbAttributeDefinition)
public:
  AcDbAttributeDefinition() = default;
  AcDbAttributeDefinition(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                          const ACHAR* prompt, AcDbObjectId style = {});
  [[nodiscard]] AcString tag() const { return AcString(m_fields.tag.text()); }
  [[nodiscard]] const ACHAR* tagConst() const { return m_fields.tag->c_str(); }
  Acad::ErrorStatus setTag(const ACHAR* tag);
  [[nodiscard]] const AcString& prompt() const { return m_prompt; }
  Acad::ErrorStatus setPrompt(const ACHAR* prompt);
  [[nodiscard]] bool isInvisible() const { return m_fields.flag(1); }
  Acad::ErrorStatus setInvisible(bool invisible);
  [[nodiscard]] bool isConstant() const { return m_fields.flag(2); }
  Acad::ErrorStatus setConstant(bool constant);
  [[nodiscard]] bool isVerifiable() const { return m_fields.flag(4); }
  [[nodiscard]] bool isPreset() const { return m_fields.flag(8); }
  [[nodiscard]] const AcDbAttributeFields& fields() const { return m_fields; }
  /// The same for all references, and not hidden: the others have values of their own.
  [[nodiscard]] bool isShownByReferences() const override {
    return isConstant() && !isInvisible() && AcDbText::isShownByReferences();
  }

  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbAttributeDefinition& other);

private:
  AcDbAttributeFields m_fields;
  AcString m_prompt;
};
