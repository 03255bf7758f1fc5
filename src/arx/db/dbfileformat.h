#pragma once

#include "arx/db/dbid.h"

#include <string>

/// What a database needs of drawing files. The database knows no file format: the library that reads and
/// writes files installs its own when it is loaded. Results and messages are those of the members of
/// `AcDbDatabase` that call these.
class ARX_API AcDbFileFormat {
public:
  virtual ~AcDbFileFormat() = default;
  /// Fills an empty database with the tables, records, dictionaries and header variables of a new drawing.
  virtual void buildDefault(AcDbDatabase& database) const = 0;
  virtual Acad::ErrorStatus read(AcDbDatabase& database, const ACHAR* fileName,
                                 std::wstring* message) const = 0;
  virtual Acad::ErrorStatus write(AcDbDatabase& database, const ACHAR* fileName,
                                  std::wstring* message) const = 0;
  /// Copies the model space of `source` into `target` as a block.
  virtual Acad::ErrorStatus insert(AcDbDatabase& target, AcDbObjectId& blockId, const ACHAR* blockName,
                                   AcDbDatabase& source) const = 0;

  /// The format in force, null when none was installed.
  static const AcDbFileFormat* installed();
  /// @param format stays with the caller and must outlive all databases
  static void install(const AcDbFileFormat* format);
};
