#include "arx/dxf/dxffile.h"

#include "arx/db/dbfileformat.h"
#include "arx/dxf/dxfdefault.h"
#include "arx/dxf/dxfextents.h"
#include "arx/dxf/dxfinsert.h"
#include "arx/dxf/dxfread.h"
#include "arx/dxf/dxfsource.h"
#include "arx/dxf/dxfwrite.h"
#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"

namespace fs = std::filesystem;
namespace base = veltora::base;

namespace {

/// A drawing of the binary kind, by its first bytes.
bool isBinaryDrawing(const fs::path& path) {
  DxfFileSource source(path);
  char head[6] = {};
  return source.isOpen() && source.read(head, sizeof head) == sizeof head &&
         std::string_view(head, 4) == "AC10";
}

fs::path pathOf(const ACHAR* fileName) { return base::cheminDuTexte(fileName); }

class DxfFileFormat final : public AcDbFileFormat {
public:
  void buildDefault(AcDbDatabase& database) const override {
    dxfReadText(database, dxfDefaultText(), "dessin vide");
  }

  Acad::ErrorStatus read(AcDbDatabase& database, const ACHAR* fileName,
                         std::wstring* message) const override {
    DxfFindings findings;
    const Acad::ErrorStatus status =
        dxfReadFile(database, dxfServingFile(pathOf(fileName)), message, &findings);
    if (status == Acad::eOk) database.setReadFindings(std::move(findings));
    return status;
  }

  Acad::ErrorStatus write(AcDbDatabase& database, const ACHAR* fileName,
                          std::wstring* message) const override {
    const DxfStoredExtents stored(database);
    base::RemplacementFichier file(dxfServingFile(pathOf(fileName), true));
    dxfWrite(database, [&](std::string_view piece) { file.ecrire(piece); });
    std::string reason;
    if (file.terminer(&reason)) return Acad::eOk;
    if (message) *message = base::fromUtf8(reason);
    return Acad::eFileAccessErr;
  }

  Acad::ErrorStatus insert(AcDbDatabase& target, AcDbObjectId& blockId, const ACHAR* blockName,
                           AcDbDatabase& source) const override {
    return DxfInserter(target, source).run(blockId, blockName);
  }
};

// Drawings are made and read wherever this library is loaded.
[[maybe_unused]] const bool g_installed = [] {
  static const auto* const format = new DxfFileFormat;  // for ever: databases may outlive this object
  AcDbFileFormat::install(format);
  return true;
}();

}  // namespace

fs::path dxfServingFile(const fs::path& path, bool forWriting) {
  std::error_code ignored;
  if (base::terminaison(path) != L"dwg") return path;
  if (fs::is_regular_file(path, ignored) && !isBinaryDrawing(path)) return path;
  const fs::path twin = fs::path(path).replace_extension(".dxf");
  return forWriting || fs::is_regular_file(twin, ignored) || !fs::exists(path, ignored) ? twin : path;
}
