#include "app/session/doubts.h"

#include "app/session/output.h"

#include <CLI/CLI.hpp>

namespace veltora::app {

CLI::Option* addDoubtOption(CLI::App& sub, bool& flag) {
  return sub.add_flag("--malgre-doutes", flag, "Place les résultats même s'ils sont à vérifier");
}

int exitStatus(const base::Remarques& remarks) { return remarks.douteuses() ? kDoubtful : kSuccess; }

void printWithheld() {
  printError(
      std::string("résultats à vérifier : rien n'est placé, aucun dessin n'est écrit (--malgre-doutes passe "
                  "outre)"));
}

}  // namespace veltora::app
