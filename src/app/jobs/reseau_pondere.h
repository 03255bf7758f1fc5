#pragma once

#include "jobs/compenser.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// The weighted side of `veltora reseau`.
namespace veltora::app {

struct WeightedOptions {
  demandeCompenser demand;
  bool weighted = false;  ///< asked for by name
  std::string robust;
  std::string formulas;
  std::string json;
  std::string epoch;
  std::string report;
  std::string plan;
  std::vector<std::string> pairs;
  std::vector<const CLI::Option*> declared;
  /// Whether one of the options was given: each asks for weights.
  [[nodiscard]] bool wanted() const;
};

/// Declares the options and their files.
void addWeightedOptions(CLI::App& sub, WeightedOptions& options);

/// Runs and prints. @return the status
int runWeighted(WeightedOptions& options, const std::string& file, const std::string& drawing,
                const std::string& output, bool despiteDoubts);

}  // namespace veltora::app
