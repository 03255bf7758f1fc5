#pragma once

#include "arx/ap/acdocman.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace veltora::app {

/// Declares `--journal-lecture FICHIER`. @return where the name will stand, for the whole run
const std::string& addReadingLogOption(CLI::App& app);
/// What the reader of a drawing found and mended: a summary on standard error, each kind of trouble once with
/// its number and its first place; all of it goes to the file of `--journal-lecture`, which also says that
/// nothing was found.
void tellReading(const std::wstring& drawing, const std::vector<std::string>& findings);

/// Tells it of each drawing that is opened.
class ReadingLog : public AcApDocManagerReactor {
public:
  ReadingLog() { acDocManager->addReactor(this); }
  ~ReadingLog() override { acDocManager->removeReactor(this); }
  void documentCreated(AcApDocument* document) override;
};

}  // namespace veltora::app
