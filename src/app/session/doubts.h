#pragma once

#include "app/session/output.h"
#include "base/remarque.h"

#include <optional>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// What one calls do with results that are to be checked: they are shown, and nobody places them unless told
/// to.
namespace veltora::app {

/// Declares "--malgre-doutes", which places doubtful results too.
CLI::Option* addDoubtOption(CLI::App& sub, bool& flag);

/// The status of a job that did its work: `kDoubtful` when a remark is a doubt, else `kSuccess`.
int exitStatus(const base::Remarques& remarks);

/// Says on standard error that the results went into no drawing, and how to have them there all the same.
void printWithheld();

/// Tells the remarks of a job that draws, and why it drew nothing.
/// @return the status with which the call ends; nothing when the drawing is to be saved
template <class Result>
std::optional<int> statusBeforeSaving(bool good, const Result& result) {
  printRemarks(result.remarques);
  if (!good) printError(result.erreur);
  if (!good) return kFailure;
  if (!result.retenu) return std::nullopt;
  printWithheld();
  return kDoubtful;
}

}  // namespace veltora::app
