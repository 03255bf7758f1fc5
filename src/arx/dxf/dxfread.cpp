#include "arx/db/dbdefault.h"
#include "arx/dxf/dxfdefault.h"
#include "arx/dxf/dxffile.h"
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

void load(AcDbDatabase& database, DxfSource& source, DxfFindings& findings) {
  const RecordingPause pause(database.undoLog());
  constexpr std::size_t kBytesPerObject = 250;  // of usual drawings
  database.reserve(source.size() / kBytesPerObject);
  try {
    DxfLoader(database, source, findings, 0).run();
  } catch (const DxfSeedNeeded&) {
    database.clear();
    findings.clear();
    const Adesk::UInt64 seed = dxfHighestHandle(source) + 1;
    DxfLoader(database, source, findings, seed).run();
  }
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

bool endsIn(const fs::path& path, const std::wstring& extension) {
  return veltora::base::compareNoCase(path.extension().wstring(), extension) == 0;
}

/// A drawing of the binary kind, by its first bytes.
bool isBinaryDrawing(const fs::path& path) {
  DxfFileSource source(path);
  char head[6] = {};
  return source.isOpen() && source.read(head, sizeof head) == sizeof head &&
         std::string_view(head, 4) == "AC10";
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

fs::path dxfServingFile(const fs::path& path, bool forWriting) {
  std::error_code ignored;
  if (!endsIn(path, L".dwg")) return path;
  if (fs::is_regular_file(path, ignored) && !isBinaryDrawing(path)) return path;
  const fs::path twin = fs::path(path).replace_extension(".dxf");
  return forWriting || fs::is_regular_file(twin, ignored) || !fs::exists(path, ignored) ? twin : path;
}

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, std::wstring* message) {
  if (!fileName) return Acad::eInvalidInput;
  const fs::path path(veltora::base::toUtf8(fileName));
  const fs::path serving = dxfServingFile(path);
  const Acad::ErrorStatus status = dxfReadFile(*this, serving, message);
  if (status == Acad::eOk) m_fileName = fileName;
  return status;
}

void AcDbDatabase::clear() {
  m_undo.clear();
  for (auto& [handle, stub] : m_stubs) delete stub.object;
  m_stubs.clear();
  m_nextHandle = 1;
  m_tables.clear();
  m_namedObjects.setNull();
  m_objectOrder.clear();
  m_headers.clear();
  m_rawSections.clear();
  m_sectionOrder.clear();
  m_version.clear();
  m_fileName.clear();
  m_modified = false;
}

void dxfBuildDefaultDrawing(AcDbDatabase& database) {
  const std::string text = dxfDefaultText();
  DxfMemorySource source(text);
  DxfFindings findings;
  load(database, source, findings);
}
