#pragma once

#include "arx/db/dbcolor.h"
#include "arx/db/dbobject.h"

#include <map>
#include <unordered_map>

class AcDbEntity;

/// A named record of a symbol table. Names compare ignoring case.
class ARX_API AcDbSymbolTableRecord : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)
public:
  [[nodiscard]] const AcString& name() const { return m_name; }
  Acad::ErrorStatus getName(AcString& name) const;
  /// `eInvalidInput` for an empty name or one with a character that drawings forbid (<>/\":;?*|=`),
  /// `eDuplicateRecordName` when the table holds it already.
  Acad::ErrorStatus setName(const ACHAR* name);
  /// The name as a file spells it, unchecked, in a record that is in no table yet.
  void assignName(const AcString& name) { m_name = name; }
  /// What a record gets that the drawing makes by itself, for want of one of this name.
  virtual void setDatabaseDefaults(AcDbDatabase&) {}
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  /// Name (2) and flags (70) within the section of the concrete record. @return false when the group is
  /// another
  bool dxfInNameOrFlags(AcDbDxfReader& in);
  void dxfOutNameAndFlags(AcDbDxfWriter& out) const;
  void exchangeFields(AcDbSymbolTableRecord& other);
  AcString m_name;
  int m_flags = 0;
};

class ARX_API AcDbSymbolTableIterator {
public:
  explicit AcDbSymbolTableIterator(std::vector<AcDbObjectId> ids) : m_ids(std::move(ids)) {}
  void start() { m_at = 0; }
  [[nodiscard]] bool done() const { return m_at >= m_ids.size(); }
  void step() { ++m_at; }
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;

private:
  std::vector<AcDbObjectId> m_ids;
  std::size_t m_at = 0;
};

/// A symbol table: records in order of creation, found by name in constant time.
class ARX_API AcDbSymbolTable : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbSymbolTable)
  ACDB_DECLARE_COPY(AcDbSymbolTable)
public:
  AcDbSymbolTable() = default;
  /// Without the records: they belong to the original, and undo restores them one by one.
  AcDbSymbolTable(const AcDbSymbolTable& other) : AcDbObject(other), m_kind(other.m_kind) {}
  /// `eKeyNotFound` when there is no live record of this name.
  Acad::ErrorStatus getIdAt(const ACHAR* name, AcDbObjectId& id) const;
  Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const { return getIdAt(name, id); }
  [[nodiscard]] bool has(const ACHAR* name) const;
  /// Adds a record, which the database then owns and which stays open for writing until the caller closes it.
  /// `eDuplicateRecordName`, `eWrongObjectType` for a record of another table: the record stays with the
  /// caller.
  Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
  Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
  /// Live records in order; the caller deletes the iterator.
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator) const;
  [[nodiscard]] std::vector<AcDbObjectId> records() const;

  /// For readers of files: enters a record that the database holds already, and a rename.
  void enter(AcDbObjectId id, const AcString& name);
  void renamed(AcDbObjectId id, const AcString& to);
  /// "LAYER", "BLOCK_RECORD"...: which table this is.
  [[nodiscard]] std::string_view dxfName() const override { return "TABLE"; }
  [[nodiscard]] const std::string& kind() const { return m_kind; }
  void setKind(std::string kind) { m_kind = std::move(kind); }
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void dxfOutHead(AcDbDxfWriter& out) const override;
  void exchangeFields(AcDbSymbolTable& other);

private:
  std::string m_kind;
  std::vector<AcDbObjectId> m_order;
  // By lower-case name: every record that ever bore it. A lookup takes the live one that bears it now, so
  // that undo of creations, erasures and renames needs no copy of the table.
  std::unordered_multimap<std::wstring, AcDbObjectId> m_byName;
};
using AcDbLayerTable = AcDbSymbolTable;
using AcDbLinetypeTable = AcDbSymbolTable;
using AcDbTextStyleTable = AcDbSymbolTable;
using AcDbRegAppTable = AcDbSymbolTable;
using AcDbBlockTable = AcDbSymbolTable;
using AcDbViewportTable = AcDbSymbolTable;

class ARX_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord)
  ACDB_DECLARE_COPY(AcDbLayerTableRecord)
public:
  [[nodiscard]] const AcCmColor& color() const { return m_color; }
  Acad::ErrorStatus setColor(const AcCmColor& color);
  [[nodiscard]] bool isOff() const { return m_off; }
  Acad::ErrorStatus setIsOff(bool off);
  [[nodiscard]] bool isFrozen() const { return (m_flags & 1) != 0; }
  Acad::ErrorStatus setIsFrozen(bool frozen);
  [[nodiscard]] bool isLocked() const { return (m_flags & 4) != 0; }
  Acad::ErrorStatus setIsLocked(bool locked);
  [[nodiscard]] AcDbObjectId linetypeObjectId() const { return m_linetype; }
  Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
  [[nodiscard]] int lineWeight() const { return m_lineWeight; }
  void setDatabaseDefaults(AcDbDatabase& database) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  void exchangeFields(AcDbLayerTableRecord& other);

private:
  AcCmColor m_color{7};
  bool m_off = false;
  int m_lineWeight = -3;
  AcDbObjectId m_linetype;
};

/// Text style. A height of 0 means that each text gives its own.
class ARX_API AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord)
  ACDB_DECLARE_COPY(AcDbTextStyleTableRecord)
public:
  [[nodiscard]] double textSize() const { return m_textSize; }
  [[nodiscard]] double xScale() const { return m_xScale; }
  [[nodiscard]] double obliquingAngle() const {
    return m_oblique * (3.14159265358979323846 / 180.0);
  }  ///< radians
  [[nodiscard]] const AcString& fileName() const { return m_fileName; }
  Acad::ErrorStatus setTextSize(double size);
  Acad::ErrorStatus setXScale(double scale);
  Acad::ErrorStatus setFileName(const ACHAR* name);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbTextStyleTableRecord& other);

private:
  double m_textSize = 0.0;
  double m_xScale = 1.0;
  double m_oblique = 0.0;  // degrees, as in the file: not to lose the last digit
  double m_lastHeight = 2.5;
  int m_generation = 0;
  AcString m_fileName = L"txt";
  AcString m_bigFontFileName;
};

class ARX_API AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord)
  ACDB_DECLARE_COPY(AcDbLinetypeTableRecord)
public:
  [[nodiscard]] const AcString& comments() const { return m_comments; }
  Acad::ErrorStatus setComments(const ACHAR* text);
  [[nodiscard]] double patternLength() const { return m_length; }
  [[nodiscard]] const std::vector<double>& dashes() const { return m_dashes; }
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbLinetypeTableRecord& other);

private:
  AcString m_comments;
  double m_length = 0.0;
  std::vector<double> m_dashes;  // the file's groups are kept beside, shapes of complex patterns included
};

class ARX_API AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord)
  ACDB_DECLARE_COPY(AcDbRegAppTableRecord)
public:
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbRegAppTableRecord& other) { AcDbSymbolTableRecord::exchangeFields(other); }
};

/// A view on model space; the one named "*Active" is what the screen shows.
class ARX_API AcDbViewportTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord)
  ACDB_DECLARE_COPY(AcDbViewportTableRecord)
public:
  [[nodiscard]] AcGePoint2d centerPoint() const { return m_center; }
  [[nodiscard]] double height() const { return m_height; }
  [[nodiscard]] double aspectRatio() const { return m_aspect; }
  Acad::ErrorStatus setCenterPoint(const AcGePoint2d& center);
  Acad::ErrorStatus setHeight(double height);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbViewportTableRecord& other);

private:
  AcGePoint2d m_center;
  double m_height = 297.0;
  double m_aspect = 1.5;
};

/// A record that the host does not model (views, UCS, dimension styles): name and flags, the rest as it was.
class ARX_API AcDbOtherTableRecord : public AcDbSymbolTableRecord {
  ACRX_DECLARE_MEMBERS(AcDbOtherTableRecord)
  ACDB_DECLARE_COPY(AcDbOtherTableRecord)
public:
  AcDbOtherTableRecord() = default;
  /// @param type name in the file ("DIMSTYLE")  @param subclass marker of its own section
  AcDbOtherTableRecord(std::string type, std::string subclass)
      : m_type(std::move(type)), m_subclass(std::move(subclass)) {}
  [[nodiscard]] std::string_view dxfName() const override { return m_type; }
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbOtherTableRecord& other);

private:
  std::string m_type;
  std::string m_subclass;
};
