#include "app/session/call_files.h"

#include "app/session/reading_log.h"
#include "arx/dxf/dxffile.h"
#include "base/paths.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string_view>

namespace veltora::app {
namespace {

struct Ending {
  std::wstring_view ending;
  FileKind kind;
};
/// Endings that everybody takes for what they say. Any other promises nothing.
constexpr Ending kEndings[] = {
    {L"dxf", FileKind::kDrawing},  {L"dwg", FileKind::kDrawing}, {L"htm", FileKind::kReport},
    {L"html", FileKind::kReport},  {L"doc", FileKind::kReport},  {L"txt", FileKind::kText},
    {L"xyz", FileKind::kText},     {L"csv", FileKind::kText},    {L"asc", FileKind::kText},
    {L"obs", FileKind::kTraverse}, {L"mc", FileKind::kNetwork},  {L"fmc", FileKind::kOther},
    {L"gsi", FileKind::kOther},    {L"lsp", FileKind::kOther},   {L"scr", FileKind::kOther},
    {L"pdf", FileKind::kPlan},     {L"docx", FileKind::kOther},  {L"odt", FileKind::kOther},
    {L"rtf", FileKind::kOther},    {L"xls", FileKind::kOther},   {L"xlsx", FileKind::kOther},
    {L"ods", FileKind::kOther},    {L"xml", FileKind::kOther},   {L"json", FileKind::kOther},
    {L"zip", FileKind::kOther},    {L"png", FileKind::kPlan},    {L"jpg", FileKind::kOther},
    {L"jpeg", FileKind::kOther},   {L"tif", FileKind::kOther},   {L"svg", FileKind::kPlan},
    {L"shp", FileKind::kOther},    {L"dgn", FileKind::kOther},   {L"dwt", FileKind::kOther},
    {L"bak", FileKind::kOther},
};

const char* described(FileKind kind) {
  switch (kind) {
    case FileKind::kDrawing:
      return "un dessin (.dxf)";
    case FileKind::kReport:
      return "un rapport (.html, .htm ou .doc)";
    case FileKind::kPlan:
      return "un plan (.pdf, .svg ou .png)";
    case FileKind::kTraverse:
      return "une polygonale (.obs)";
    case FileKind::kNetwork:
      return "un réseau (.mc)";
    default:
      return "du texte (.txt, .xyz, .csv)";
  }
}

/// True when the ending of a name allows for one of these kinds.
bool promises(const std::string& name, FileKind kind, FileKind second) {
  const std::wstring ending = base::terminaison(name);
  const auto* const known = std::find_if(std::begin(kEndings), std::end(kEndings),
                                         [&](const Ending& row) { return row.ending == ending; });
  return known == std::end(kEndings) || known->kind == kind ||
         (known->kind == second && second != FileKind::kOther);
}

std::filesystem::path fileOf(const std::string& name, FileKind kind, bool written) {
  return kind == FileKind::kDrawing ? dxfServingFile(name, written) : std::filesystem::path(name);
}

}  // namespace

CallFiles& CallFiles::reads(const std::string& name, FileKind kind, bool stays) {
  m_uses.push_back({&name, kind, FileKind::kOther, false, stays});
  return *this;
}

CallFiles& CallFiles::writes(const std::string& name, FileKind kind, FileKind other) {
  m_uses.push_back({&name, kind, other, true});
  return *this;
}

void CallFiles::check() const {
  for (const Use& output : m_uses) {
    if (!output.written || output.name->empty()) continue;
    const std::string quoted = "« " + *output.name + " »";
    if (!promises(*output.name, output.kind, output.second))
      throw BadCall(quoted + " : ce nom annonce autre chose que ce qui serait écrit, " +
                    described(output.kind));
    const std::filesystem::path target = fileOf(*output.name, output.kind, true);
    for (const Use& other : m_uses) {
      if (&other == &output || other.name->empty()) continue;
      // A drawing may take the place of the one it was made from.
      if (!other.written && !other.stays && other.kind == FileKind::kDrawing &&
          output.kind == FileKind::kDrawing)
        continue;
      if (!base::memeFichier(target, fileOf(*other.name, other.kind, other.written))) continue;
      throw BadCall(quoted + (other.written
                                  ? " : deux sorties iraient dans ce fichier"
                                  : " est lu par ce travail : il ne peut pas être aussi sa sortie"));
    }
  }
}

CallFiles& declareFiles(CLI::App& sub) {
  const auto files = std::make_shared<CallFiles>();
  files->writes(addReadingLogOption(sub), FileKind::kText);
  sub.parse_complete_callback([files] { files->check(); });
  return *files;
}

std::filesystem::path writtenDrawing(const std::string& name) { return dxfServingFile(name, true); }

}  // namespace veltora::app
