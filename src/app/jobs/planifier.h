#pragma once

#include "jobs/planifier_implantation.h"

#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// "implanter --auto": each point from the nearest station of a code.
namespace veltora::app {

/// The options of its own; what it shares with a stake-out from one station is set by the caller.
struct PlanOptions {
  bool asked = false;  ///< "--auto"
  std::string references = "proche";
  std::string tables;
  demandePlanifier demand;
};

/// Declares them. @return "--auto"
CLI::Option* declarePlan(CLI::App& sub, PlanOptions& options);

/// Runs the job on the drawing. @param output  the drawing to save; empty for none  @return the exit status
int runPlan(PlanOptions& options, const std::string& drawing, const std::string& output);

}  // namespace veltora::app
