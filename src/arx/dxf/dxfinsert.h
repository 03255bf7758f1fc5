#pragma once

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

/// Copies entities of one drawing into a block of another one with all that they need. Objects are written to
/// file text, references in the text are translated, and the text is read in the target: what the host does
/// not model is copied as faithfully as the rest. Everything goes through operations that undo knows.
class DxfInserter {
public:
  DxfInserter(AcDbDatabase& target, AcDbDatabase& source) : m_target(target), m_source(source) {}
  /// Makes or replaces the block of this name from the source's model space. On failure nothing is changed.
  Acad::ErrorStatus run(AcDbObjectId& blockId, const ACHAR* name);

private:
  Acad::ErrorStatus emptyBlock(AcDbObjectId& block, const ACHAR* name);
  void fill(AcDbBlockTableRecord& block);
  struct Copy {
    AcDbObject* object;  // in the target, empty until the end
    AcDbObjectId owner;  // in the target
    std::string type;
    DxfTagText tags;
  };
  static DxfTagText textOf(const AcDbObject& object);
  void copyBlock(const AcDbBlockTableRecord& from, AcDbBlockTableRecord& to);
  void entity(const AcDbEntity& from, AcDbBlockTableRecord& to);
  /// Enters an empty object that becomes the copy of `from`; it stays open for writing until `finish`.
  AcDbObject* begin(const AcDbObject& from, std::unique_ptr<AcDbObject> made, AcDbObjectId owner);
  /// What an object's text refers to and must come along.
  void needsOf(const std::string& type, const DxfTagText& tags);
  void need(AcDbObjectId id);
  void needRecord(const char* kind, std::string_view name);
  void record(AcDbSymbolTableRecord& from);
  void object(AcDbObject& from);
  /// The target's dictionary at the same place below the root, made when missing; null for one that hangs
  /// elsewhere.
  AcDbObjectId twinOf(AcDbObjectId dictionary);
  [[nodiscard]] AcString freeBlockName(const AcString& name) const;
  void finish(const Copy& copy);
  /// @return false when the group is left out; `text` holds the value then, when it changes
  bool translate(const Copy& copy, DxfTag& tag, std::deque<std::string>& texts) const;

  AcDbDatabase& m_target;
  AcDbDatabase& m_source;
  AcDbObjectId m_block;  // that is being filled
  std::unordered_map<const AcDbStub*, AcDbObjectId> m_ids;
  std::unordered_map<std::wstring, AcString> m_blockNames;  // blocks with another name, by lower-case name
  std::deque<Copy> m_copies;
  std::deque<std::pair<const AcDbBlockTableRecord*, AcDbBlockTableRecord*>> m_blocks;
  std::deque<AcDbObjectId> m_needed;
};
