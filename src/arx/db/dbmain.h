#pragma once

#include "arx/db/dbblocktable.h"
#include "arx/db/dbdict.h"
#include "arx/db/dbservices.h"
#include "arx/db/dbstubs.h"
#include "arx/db/dbsymrecords.h"
#include "arx/db/dbundo.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class AcDbEntityKinds;
class AcDbSpaceIndex;

/// A section of a drawing file that the host does not model, with the place where it stood.
struct DxfRawSection {
  std::string name;
  DxfTagText tags;
};

/// A drawing in memory: symbol tables, dictionaries, blocks with their entities, header variables. Owns all
/// of its objects and deletes them at its end; an id or an object of a database that is gone must not be
/// touched by anybody. Handles are unique within it.
class ARX_API AcDbDatabase {
public:
  /// @param buildDefaultDrawing true makes an empty drawing with all tables and dictionaries that other
  ///        programs expect; false leaves everything empty, to be filled by `readDwgFile`
  explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
  ~AcDbDatabase();
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;
  /// In place of the end of a drawing when the process is about to end: the system takes all memory back at
  /// once, many times faster than object by object.
  static void leaveToProcessEnd(std::unique_ptr<AcDbDatabase> database);

  // Symbol tables. Opened with the mode; the caller closes.
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  [[nodiscard]] AcDbObjectId layerTableId() const { return tableId("LAYER"); }
  [[nodiscard]] AcDbObjectId blockTableId() const { return tableId("BLOCK_RECORD"); }
  [[nodiscard]] AcDbObjectId textStyleTableId() const { return tableId("STYLE"); }
  [[nodiscard]] AcDbObjectId linetypeTableId() const { return tableId("LTYPE"); }
  [[nodiscard]] AcDbObjectId regAppTableId() const { return tableId("APPID"); }
  [[nodiscard]] AcDbObjectId viewportTableId() const { return tableId("VPORT"); }
  /// By the name in the file ("LAYER", "DIMSTYLE"...); null when the drawing has none.
  [[nodiscard]] AcDbObjectId tableId(std::string_view kind) const;
  [[nodiscard]] const std::vector<AcDbObjectId>& tables() const {
    return m_tables;
  }  ///< in order of the file

  Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                              AcDb::OpenMode mode = AcDb::kForRead);
  [[nodiscard]] AcDbObjectId namedObjectsDictionaryId() const { return m_namedObjects; }
  [[nodiscard]] AcDbObjectId groupDictionaryId() const;  ///< made when missing
  [[nodiscard]] AcDbObjectId modelSpaceId() const;
  [[nodiscard]] AcDbObjectId paperSpaceId() const;
  /// Space that new entities go to; model space here.
  [[nodiscard]] AcDbObjectId currentSpaceId() const { return modelSpaceId(); }

  // Records that every drawing has; made when a file lacks them.
  [[nodiscard]] AcDbObjectId layerZero();
  [[nodiscard]] AcDbObjectId byLayerLinetype();
  [[nodiscard]] AcDbObjectId byBlockLinetype();
  [[nodiscard]] AcDbObjectId continuousLinetype();
  /// What new entities get: current layer, line type (null when there is none of its name), colour index (256
  /// for that of the layer) and text style. Asking again costs little while nothing changes.
  [[nodiscard]] AcDbObjectId clayer();
  [[nodiscard]] AcDbObjectId celtype();
  [[nodiscard]] double cecolor();
  Acad::ErrorStatus setClayer(AcDbObjectId layer);
  [[nodiscard]] AcDbObjectId textstyle();
  Acad::ErrorStatus setTextstyle(AcDbObjectId style);
  /// Record of a symbol table by name; a missing table or record is made with default properties, an empty
  /// name gives the null id. For readers of files: not noted for undo while recording is off. A drawing's
  /// handles must lie below `handseed` by then, as a new record takes the next one.
  [[nodiscard]] AcDbObjectId recordOf(const char* kind, const std::wstring& name);
  /// The same for a name as file text.
  [[nodiscard]] AcDbObjectId recordOfText(const char* kind, std::string_view fileText);
  /// Grows with every change of a record's name, of the records of a table and of a header variable, undone
  /// ones included: what was found by name holds while it stays and what was found is not erased.
  [[nodiscard]] Adesk::UInt64 namesVersion() const { return m_namesVersion + m_undo.revivals(); }
  void noteNames() { ++m_namesVersion; }
  /// Whether an application is registered for extended data, whatever the case of its name.
  [[nodiscard]] bool hasRegApp(const std::wstring& name) const;
  /// The table of this kind, made when the drawing has none.
  [[nodiscard]] AcDbObjectId ensureTable(const std::string& kind);
  /// Header variables by name without "$" ("TEXTSIZE"). @return false when there is none
  bool header(const std::string& name, DxfTagText& value) const;
  [[nodiscard]] double headerReal(const std::string& name, double fallback) const;
  /// The origin when there is none.
  [[nodiscard]] AcGePoint3d headerPoint(const std::string& name) const;
  [[nodiscard]] std::wstring headerText(const std::string& name, const std::wstring& fallback) const;
  /// Replaces or adds a variable; noted for undo.
  void setHeader(const std::string& name, DxfTagText value);
  void setHeaderPoint(const std::string& name, const AcGePoint3d& point);
  [[nodiscard]] const std::vector<std::pair<std::string, DxfTagText>>& headers() const { return m_headers; }

  /// Takes an object over and gives it a handle. Leaves it open for writing.
  Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object);
  /// The same under a given handle, for readers of files: not opened, not noted for undo. `eDuplicateKey`
  /// leaves the object with the caller.
  Acad::ErrorStatus addWithHandle(AcDbObjectId& id, AcDbObject* object, AcDbHandle handle);
  /// Stub of a handle, made when it was not met yet: a reference that a file gives before its object.
  [[nodiscard]] AcDbObjectId idOf(AcDbHandle handle);
  /// `eUnknownHandle` when no object bears the handle.
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, AcDbHandle handle);
  /// What a handle as file text names, alive; null for nothing.
  [[nodiscard]] AcDbObjectId liveIdOf(std::string_view handleText);
  [[nodiscard]] AcDbHandle handseed() const { return m_nextHandle; }
  void setHandseed(AcDbHandle next);  ///< never lowers it
  /// Whether a pointer is a stub of a drawing in memory; the pointer is not followed.
  [[nodiscard]] static bool isStubOf(const void* stub, AcDbHandle handle);
  /// All objects in memory in order of handles, erased ones included.
  [[nodiscard]] std::vector<AcDbObjectId> allObjects() const;
  /// Those of them that a test takes, in the same order.
  [[nodiscard]] std::vector<AcDbObjectId> objectsWhere(
      const std::function<bool(const AcDbStub&)>& wanted) const;
  /// Makes room for a known number of objects.
  void reserve(std::size_t objects);

  /// The box of what model space holds, hidden or not, as the drawing's variables tell it: of its file, until
  /// `updateExt` measures it anew. An empty model space has both corners in the origin then.
  Acad::ErrorStatus updateExt(bool bestFit = true);
  [[nodiscard]] AcGePoint3d extmin() const { return headerPoint("EXTMIN"); }
  [[nodiscard]] AcGePoint3d extmax() const { return headerPoint("EXTMAX"); }
  /// The point by which the drawing is inserted as a block.
  [[nodiscard]] AcGePoint3d insbase() const { return headerPoint("INSBASE"); }

  // Drawing files, which the installed `AcDbFileFormat` serves; `eNotImplementedYet` without any.

  /// Reads a drawing file into this empty database (made with `buildDefaultDrawing` false). A name ending in
  /// ".dwg" is served by the file itself when its content is a text drawing, else by the same name ending in
  /// ".dxf". On failure the database stays empty and `message` names file and line in French.
  Acad::ErrorStatus readDwgFile(const ACHAR* fileName, std::wstring* message = nullptr);
  /// Writes the drawing; the old file stays whole when anything fails. `message` says why in French.
  Acad::ErrorStatus saveAs(const ACHAR* fileName, std::wstring* message = nullptr);
  /// Copies the model space of another drawing into this one as a block of this name, with all that it refers
  /// to (layers, styles, line types, nested blocks); what this drawing has under the same name wins. A block
  /// that exists already gets the new contents.
  Acad::ErrorStatus insert(AcDbObjectId& blockId, const ACHAR* blockName, AcDbDatabase* source,
                           bool preserveSource = true);

  AcDbUndoLog& undoLog() { return m_undo; }
  // Indexes, made when first asked for.
  AcDbSpaceIndex& spaceIndex();    ///< where the entities of model space lie
  AcDbEntityKinds& entityKinds();  ///< which entities are of a type, on a layer, of an application
  /// To be called when an object changed or is about to, when it is erased and when it comes back.
  void noteTouched(AcDbStub& stub) {
    if (m_spaceIndex || m_entityKinds) noteInIndexes(stub);
  }
  [[nodiscard]] const std::wstring& fileName() const { return m_fileName; }
  /// Changed since it was read or saved, by the undo log's notes.
  [[nodiscard]] bool isModified() const { return m_modified; }
  void setModified(bool modified) { m_modified = modified; }

  /// Empties the drawing: no object, no name, no history is left. For readers of files.
  void clear();

  /// What the reader of the drawing's file found wrong and mended: French, UTF-8, with lines.
  [[nodiscard]] const std::vector<std::string>& readFindings() const { return m_findings; }
  void setReadFindings(std::vector<std::string> findings) { m_findings = std::move(findings); }

  // What the file format keeps here.
  std::string& fileVersion() { return m_version; }  ///< "AC1032"
  std::vector<DxfRawSection>& rawSections() { return m_rawSections; }
  std::vector<std::string>& sectionOrder() { return m_sectionOrder; }
  std::vector<std::pair<std::string, DxfTagText>>& headerList() {
    noteNames();
    return m_headers;
  }
  void setNamedObjectsDictionary(AcDbObjectId id) { m_namedObjects = id; }
  void enterTable(AcDbObjectId symbolTable) { m_tables.push_back(symbolTable); }
  std::vector<AcDbObjectId>& objectOrder() {
    return m_objectOrder;
  }  ///< objects section, in order of the file

private:
  struct Current {  // what a header variable names, and when that was found
    AcDbObjectId table;
    AcDbObjectId record;
    Adesk::UInt64 version = 0;
  };
  void forget();
  AcDbObjectId current(Current& known, const char* kind, const char* variable, const ACHAR* usual, bool make);
  Acad::ErrorStatus openTable(AcDbSymbolTable*& table, const char* kind, AcDb::OpenMode mode);
  AcDbObjectId ensureNamedObjects();
  Adesk::UInt64 takeHandle();
  void noteInIndexes(AcDbStub& stub);
  std::pair<std::string, DxfTagText>* findHeader(const std::string& name);
  AcDbStubTable m_stubs;
  Adesk::UInt64 m_nextHandle = 1;
  std::vector<AcDbObjectId> m_tables;
  AcDbObjectId m_namedObjects;
  std::vector<AcDbObjectId> m_objectOrder;
  std::vector<std::pair<std::string, DxfTagText>> m_headers;
  std::vector<DxfRawSection> m_rawSections;
  std::vector<std::string> m_sectionOrder;
  std::string m_version;
  std::vector<std::string> m_findings;
  std::wstring m_fileName;
  bool m_modified = false;
  Adesk::UInt64 m_namesVersion = 1;
  Current m_clayer;
  Current m_celtype;
  Current m_textstyle;
  std::pair<double, Adesk::UInt64> m_cecolor{256.0, 0};  // and when that was read
  AcDbUndoLog m_undo;
  std::unique_ptr<AcDbSpaceIndex> m_spaceIndex;
  std::unique_ptr<AcDbEntityKinds> m_entityKinds;
};
