#pragma once

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/dxf/dxfold.h"
#include "arx/dxf/dxfread.h"
#include "arx/dxf/dxfscanner.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

class AcDbSubEntityOwner;

/// Raised when a new object cannot get a free handle because the file's $HANDSEED is missing or too low: the
/// file is then read again with a seed above all its handles.
struct DxfSeedNeeded {};

/// Raised when something needs the tables, which may still come: the file is then read again, tables first.
struct DxfTablesNeeded {};

/// Reads one drawing into an empty database. Raises DxfError; the database is then half filled.
class DxfLoader {
public:
  /// @param seed first free handle, 0 to take the file's own word for it
  /// @param tablesFirst  goes through the file for its tables before it reads the rest
  DxfLoader(AcDbDatabase& database, DxfSource& source, DxfFindings& findings, Adesk::UInt64 seed,
            bool tablesFirst);
  void run();

private:
  struct Deferred {  // a table record whose fields are read when all names are known
    AcDbSymbolTableRecord* object;
    DxfTagText tags;
    Adesk::UInt32 line;
  };
  // Sections; each starts at its SECTION item and ends at its ENDSEC.
  void runTables();
  void readSection();
  void readHeader();
  void readTables();
  void readBlocks();
  void readEntities();
  void readObjects();
  void readRaw(const std::string& name);
  bool nextInSection(const std::string& section, bool keepComments = false);
  void checkVersion();

  void beginTable();
  void tableRecord();
  void finishRecords();
  AcDbBlockTableRecord* beginBlock();
  void endBlock(AcDbBlockTableRecord& record);
  /// One entity: a part goes to its owner, others to `block`, else to the block that the entity names.
  void entity(AcDbBlockTableRecord* block);
  void sequenceEnd();
  void closeParent();
  [[nodiscard]] AcDbBlockTableRecord* blockOf(const AcDbEntity& entity);
  void object();

  /// Puts a read object into the database; a handle that is missing or taken is replaced.
  AcDbObjectId place(std::unique_ptr<AcDbObject> object, Adesk::UInt64 handle);
  /// The handle that the present item gives, 0 when it gives none.
  [[nodiscard]] Adesk::UInt64 itemHandle();
  void prepareTables();                   ///< makes what is missing
  void needTables();                      ///< the same, once it is known that none come
  void finding(const std::string& text);  ///< at the present item
  void finding(Adesk::UInt32 line, const std::string& text);

  AcDbDatabase& m_db;
  DxfScanner m_scan;
  DxfFindings& m_findings;
  Adesk::UInt64 m_seed;
  bool m_seedKnown;
  bool m_seedForced;
  bool m_tablesReady = false;
  bool m_tablesFirst;
  bool m_headRead = false;  // header and tables were read in a pass of their own
  bool m_old = false;       // from before subclass markers
  DxfOldItems m_upgrade;
  std::vector<Deferred> m_deferred;
  AcDbSymbolTable* m_table = nullptr;
  std::set<const AcDbObject*> m_begunBlocks;
  // Owner of the attributes or vertices that follow.
  AcDbEntity* m_parent = nullptr;
  AcDbStub* m_lastOwner = nullptr;
  AcDbBlockTableRecord* m_lastBlock = nullptr;
};
