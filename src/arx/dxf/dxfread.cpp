#include "arx/dxf/dxfread.h"

#include "arx/dxf/dxfbinary.h"
#include "arx/dxf/dxfloader.h"
#include "base/text.h"

namespace fs = std::filesystem;
using veltora::base::fromUtf8;

namespace {

/// Keeps a database from noting changes for undo while it is filled.
class RecordingPause {
public:
  explicit RecordingPause(AcDbUndoLog& log) : m_log(log), m_before(log.recording()) {
    log.setRecording(false);
  }
  ~RecordingPause() { m_log.setRecording(m_before); }
  RecordingPause(const RecordingPause&) = delete;
  RecordingPause& operator=(const RecordingPause&) = delete;

private:
  AcDbUndoLog& m_log;
  bool m_before;
};

void loadText(AcDbDatabase& database, DxfSource& source, DxfFindings& findings) {
  const RecordingPause pause(database.undoLog());
  constexpr std::size_t kBytesPerObject = 190;  // of drawings of points, which are the large ones
  database.reserve(source.size() / kBytesPerObject);
  // Each trouble is met once: three passes at most.
  Adesk::UInt64 seed = 0;
  bool tablesFirst = false;
  for (;;) {
    try {
      return DxfLoader(database, source, findings, seed, tablesFirst).run();
    } catch (const DxfSeedNeeded&) {
      seed = dxfHighestHandle(source) + 1;
    } catch (const DxfTablesNeeded&) {
      tablesFirst = true;
    }
    database.clear();
    findings.clear();
    source.restart();
  }
}

void load(AcDbDatabase& database, DxfSource& source, DxfFindings& findings) {
  if (!DxfBinarySource::isBinary(source)) return loadText(database, source, findings);
  DxfBinarySource text(source);
  loadText(database, text, findings);
}

Acad::ErrorStatus read(AcDbDatabase& database, DxfSource& source, const std::string& name,
                       std::wstring* message, DxfFindings* findings) {
  DxfFindings own;
  try {
    load(database, source, findings ? *findings : own);
    database.setModified(false);
    return Acad::eOk;
  } catch (const DxfError& error) {
    database.clear();
    const std::string line = error.line ? ", ligne " + std::to_string(error.line) : std::string();
    if (message) *message = fromUtf8("\"" + name + "\"" + line + " : " + error.message);
    return error.line ? Acad::eBadDxfSequence : Acad::eFilerError;
  }
}

}  // namespace

Acad::ErrorStatus dxfReadText(AcDbDatabase& database, std::string_view text, const std::string& name,
                              std::wstring* message, DxfFindings* findings) {
  DxfMemorySource source(text);
  return read(database, source, name, message, findings);
}

Acad::ErrorStatus dxfReadFile(AcDbDatabase& database, const fs::path& path, std::wstring* message,
                              DxfFindings* findings) {
  DxfFileSource source(path);
  if (!source.isOpen()) {
    if (message) *message = fromUtf8("Impossible d'ouvrir le dessin \"" + path.string() + "\".");
    return Acad::eFileNotFound;
  }
  return read(database, source, path.string(), message, findings);
}
