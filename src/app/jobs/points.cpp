#include "app/jobs/points.h"

#include "app/session/output.h"
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
  if (!listerPoints(options.drawing, options.csv, text, error)) {
    printError(error);
    return kFailure;
  }
  print(text);
  return kSuccess;
}

}  // namespace

Run declarePoints(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_flag("--csv", options->csv, "Sépare les colonnes par des points-virgules");
  return [options] { return run(*options); };
}

}  // namespace veltora::app
