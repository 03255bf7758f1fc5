#pragma once

#include "arx/db/dbobject.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

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
  /// The same for a name as file text; null when there is none.
  [[nodiscard]] AcDbObjectId idOfText(std::string_view fileText) const;
  /// Adds a record, which the database then owns and which stays open for writing until the caller closes it.
  /// `eDuplicateRecordName`, `eWrongObjectType` for a record of another table: the record stays with the
  /// caller.
  Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
  Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
  /// Live records in order; the caller deletes the iterator.
  Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator) const;
  [[nodiscard]] std::vector<AcDbObjectId> records() const;
  /// All records in order, the erased ones included.
  [[nodiscard]] const std::vector<AcDbObjectId>& entries() const { return m_order; }

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
  template <class Char>
  struct HashOf {
    using is_transparent = void;
    std::size_t operator()(std::basic_string_view<Char> text) const {
      return std::hash<std::basic_string_view<Char>>()(text);
    }
  };
  template <class Char>
  using Spellings = std::unordered_map<std::basic_string<Char>, AcDbObjectId, HashOf<Char>, std::equal_to<>>;
  template <class Char, class Find>
  AcDbObjectId remembered(Spellings<Char>& known, std::basic_string_view<Char> name, Find find) const;
  [[nodiscard]] AcDbObjectId find(std::wstring_view name) const;
  std::string m_kind;
  std::vector<AcDbObjectId> m_order;
  // By lower-case name: every record that ever bore it. A lookup takes the live one that bears it now, so
  // that undo of creations, erasures and renames needs no copy of the table.
  std::unordered_multimap<std::wstring, AcDbObjectId> m_byName;
  // What was found, by its spelling, as long as the drawing's names stay: the same few are asked for again
  // and again.
  mutable Spellings<wchar_t> m_spelled;
  mutable Spellings<char> m_texts;
  mutable Adesk::UInt64 m_namesVersion = 0;
};
using AcDbLayerTable = AcDbSymbolTable;
using AcDbLinetypeTable = AcDbSymbolTable;
using AcDbTextStyleTable = AcDbSymbolTable;
using AcDbRegAppTable = AcDbSymbolTable;
using AcDbBlockTable = AcDbSymbolTable;
using AcDbViewportTable = AcDbSymbolTable;
