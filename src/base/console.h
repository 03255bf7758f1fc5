#pragma once

#include "base/export.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Where answers come from and where printed text goes. Prompts, dialogs, file choices and message boxes all
/// read from one source and print to one sink, whoever stands behind them: a terminal, a script, a window, a
/// test.
namespace veltora::base {

/// One question. The answer is a line of text whatever is asked for; the rest helps a source to help the
/// user: a terminal completes keywords, a window takes the answer from a click and draws what follows the
/// cursor.
struct Request {
  enum class Kind {
    kText,  ///< any line
    kCommand,
    kKeyword,  ///< one of the keywords and nothing else
    kInteger,
    kReal,
    kDistance,  ///< a number or a point
    kAngle,     ///< likewise
    kPoint,
    kCorner,     ///< a point: the corner of a rectangle whose other one is `from`
    kEntity,     ///< a point on an entity
    kSelection,  ///< one line of a selection of entities
    kKey,        ///< a key or a point
    kDialog,     ///< a line that works a dialog
    kButton,     ///< of a message box
    kFile
  };
  Kind kind = Kind::kText;
  std::string prompt;                         ///< UTF-8, what a terminal shows in front of the cursor
  std::vector<std::string> keywords;          ///< UTF-8, words that are answers too, or the only ones
  std::optional<std::array<double, 3>> from;  ///< where a rubber band begins, in world coordinates
  /// To be called with the place of the cursor as it moves: draws what is dragged. Empty when nothing is.
  std::function<void(const std::array<double, 3>&)> drag;
};

/// A source of lines, each of which is one answer.
class VELTORA_API LineSource {
public:
  virtual ~LineSource() = default;
  /// The next line in UTF-8 without its line end, or nothing at the end of the input.
  virtual std::optional<std::string> readLine(const Request& request) = 0;
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
  /// The file that is really read or written for a name; empty when it is the one of that name.
  std::function<std::wstring(const std::wstring& name)> serving;
  /// Where the choice begins; names of files to read that are not found as given are looked for there.
  std::wstring folder{};
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
