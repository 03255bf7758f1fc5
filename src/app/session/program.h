#pragma once

#include "app/session/document_projects.h"
#include "app/session/line_sources.h"
#include "app/session/reading_log.h"
#include "base/uncopyable.h"
#include "ui/script_driver.h"

#include <functional>
#include <memory>
#include <string>

namespace veltora::app {

/// The host with its module, wired to one source of lines, one place for what is printed and one driver of
/// dialogs. One at a time.
class Program : private Uncopyable {
public:
  using DriverMaker = std::unique_ptr<ui::Driver> (*)(base::LineSource& source, base::OutputSink& sink);
  /// What works the dialogs of programs that name no driver, from now on: lines of the source at the start.
  static void useDriver(DriverMaker maker);
  /// Prints to standard output.
  explicit Program(base::LineSource& source);
  /// @param source, sink  outlive it
  Program(base::LineSource& source, base::OutputSink& sink, std::unique_ptr<ui::Driver> driver);
  ~Program();

  /// Loads the module. @return false with the reason printed on standard error
  bool load();
  /// Opens a drawing, or makes an empty one for an empty path.
  /// @return false with the reason on standard error
  bool open(const std::string& drawing);
  /// Runs the lines of the source to their end. @return false when a script failed
  bool run();
  /// The latest run ended by QUIT: the user was asked about what is not saved.
  [[nodiscard]] bool hasQuit() const { return m_quit; }
  /// Runs one line; the source answers what it asks. @return false when it failed
  bool run(const std::string& line);
  /// Says on standard error which open drawings have changes that no save took, unless QUIT asked about them.
  void tellUnsaved() const;
  /// Works a dialog outside any command. @return false when a script failed
  bool show(const std::function<void()>& dialog);
  /// Writes what was copied last to a file, in UTF-8. @return false with the reason on standard error, also
  /// when nothing was copied
  [[nodiscard]] bool saveClipboard(const std::string& file) const;
  /// Saves the current drawing. @return false with the reason on standard error
  bool save(const std::string& output);

private:
  void connect();
  template <class Work>
  bool run(Work work);

  base::LineSource& m_source;
  bool m_quit = false;  ///< QUIT was answered
  StandardOutput m_standard;
  base::OutputSink& m_output;
  std::unique_ptr<ui::Driver> m_driver;
  ReadingLog m_reading;
  std::unique_ptr<DocumentProjects> m_projects;
};

}  // namespace veltora::app
