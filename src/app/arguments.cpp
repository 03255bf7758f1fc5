#include "app/arguments.h"

#include "app/jobs/session.h"
#include "app/jobs/table.h"
#include "app/session/french_arguments.h"

#include <CLI/CLI.hpp>
#include <utility>
#include <vector>

namespace veltora::app {
namespace {

constexpr const char* kDescription =
    "Veltora : topographie dans le dessin.\n"
    "Sans travail nommé, ouvre ou crée un dessin et lit des commandes au terminal ou dans un script.";

}  // namespace

Run readArguments(int argc, char** argv, int& status) {
  CLI::App app(kDescription, "veltora");
  toFrench(app);
  app.set_version_flag("--version", std::string("veltora ") + VELTORA_VERSION, "Affiche la version");
  const Run session = declareSession(app);
  std::vector<std::pair<const CLI::App*, Run>> runs;
  for (const Job& job : jobTable()) {
    CLI::App* sub = app.add_subcommand(job.name, job.help)->group("Travaux");
    runs.emplace_back(sub, job.declare(*sub));
    toFrench(*sub);
  }
  if (!parse(app, argc, argv, status)) return {};
  for (const auto& [sub, run] : runs)
    if (*sub) return run;
  return session;
}

}  // namespace veltora::app
