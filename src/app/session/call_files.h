#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// The files that one call reads and writes, held against each other before any work: no output takes the
/// place of an input, of another output, or of a file whose ending promises something else.
namespace veltora::app {

/// What a file holds.
enum class FileKind { kDrawing, kReport, kText, kPlan, kTraverse, kNetwork, kOther };

/// A call that cannot be meant; the message is French, UTF-8.
struct BadCall : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Where the options of a sub-command put its file names; an empty name is a file that is not asked for. The
/// names must live as long as the sub-command is read.
class CallFiles {
public:
  /// @param stays  of a drawing: the output may not take its place, as it may that of the drawing worked on
  CallFiles& reads(const std::string& name, FileKind kind = FileKind::kOther, bool stays = false);
  /// @param other  a second kind that the job writes when the ending asks for it
  CallFiles& writes(const std::string& name, FileKind kind, FileKind other = FileKind::kOther);
  /// Raises `BadCall` for the first output that would destroy something.
  void check() const;

private:
  struct Use {
    const std::string* name;
    FileKind kind;
    FileKind second;  ///< of outputs, kOther for none
    bool written;
    bool stays = false;
  };
  std::vector<Use> m_uses;
};

/// The files of a sub-command, checked once its options are read: each reads drawings, so that the log of
/// their reading is among them, with its option.
CallFiles& declareFiles(CLI::App& sub);

/// The file that will be written for the name of a drawing: "x.dwg" stands for "x.dxf".
std::filesystem::path writtenDrawing(const std::string& name);

}  // namespace veltora::app
