#include "app/jobs/points.h"

#include "app/session/call_files.h"
#include "app/session/output.h"
#include "app/session/reading_log.h"
#include "base/text.h"
#include "jobs/lister_points.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  bool csv = false;
};

int run(const Options& options) {
  std::string text;
  std::wstring error;
  std::vector<std::string> findings;
  if (!listerPoints(options.drawing, options.csv, text, error, findings)) {
    printError(error);
    return kFailure;
  }
  tellReading(base::fromUtf8(options.drawing), findings);
  print(text);
  return kSuccess;
}

}  // namespace

Run declarePoints(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_flag("--csv", options->csv, "Sépare les colonnes par des points-virgules");
  declareFiles(sub).reads(options->drawing, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
