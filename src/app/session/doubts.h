#pragma once

#include "base/remarque.h"

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

}  // namespace veltora::app
