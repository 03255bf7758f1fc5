#pragma once

#include "base/export.h"

#include <optional>
#include <string>

/// Where answers come from and where printed text goes. Prompts, dialogs, file choices and
/// message boxes all read from one source and print to one sink, whoever stands behind them: a
/// terminal, a script, a window, a test.
namespace veltora::base {

/// A source of lines, each of which is one answer.
class VELTORA_API LineSource {
public:
  virtual ~LineSource() = default;
  /// The next line in UTF-8 without its line end, or nothing at the end of the input.
  /// @param prompt what a terminal shows in front of the cursor; a script may ignore it
  virtual std::optional<std::string> readLine(const std::string& prompt) = 0;
  /// Name and number of the line read last ("script.txt:12"), for messages; empty at a terminal.
  [[nodiscard]] virtual std::string position() const { return {}; }
  /// True when a person can correct a wrong answer; false stops a script at the first one that fits nothing.
  [[nodiscard]] virtual bool interactive() const { return false; }
};

/// What is printed, in UTF-8. The text carries its own line ends, also in front ("\nTexte").
class VELTORA_API OutputSink {
public:
  virtual ~OutputSink() = default;
  virtual void print(const std::string& text) = 0;
};

/// Thrown by whoever consumes a line of a script that fits nothing: stops the script with its line number.
struct VELTORA_API ScriptError {
  std::string message;  ///< French, UTF-8, without the position
};

/// A file that is asked for, in the terms of the host's file dialog.
struct FileRequest {
  std::wstring title;
  std::wstring defaultName;
  std::wstring extension;  ///< without the point
  std::wstring filter;     ///< "Texte|*.ext|Texte|*.ext"
  bool save = false;       ///< a name to write, which may not exist yet
  bool confirmOverwrite = false;
};

/// The answer: a path, and which filter was in force (1 is the first).
struct FileAnswer {
  std::wstring path;
  int filterIndex = 1;
};

/// Asks for file names; implemented by the dialog driver in force.
class VELTORA_API FileChooser {
public:
  virtual ~FileChooser() = default;
  virtual std::optional<FileAnswer> chooseFile(const FileRequest& request) = 0;
};

}  // namespace veltora::base
