#pragma once

#include "base/uncopyable.h"
#include "base/usage_note.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// Copies of drawings with changes that no save took, for the session after a crash. Each stands in the
/// folder as two files: "<name>.note", locked as long as a process has the drawing open, and "<name>.dxf",
/// the copy.
namespace veltora::app {

/// Which drawing a copy is of.
struct RecoveredDrawing {
  std::wstring fileName;  ///< empty for one that was never saved
  std::wstring title;
  base::EtatFichier state;  ///< of its file, as the session knew it
};

/// $XDG_STATE_HOME/veltora/recuperation, else below ~/.local/state; empty without a home.
std::filesystem::path recoveryFolder();

/// The place of one drawing's copy. What it has written stays when this object goes, as it does after a
/// crash.
class RecoveryCopy : private Uncopyable {
public:
  /// Takes a place for a drawing. @return null with the reason (UTF-8) when the folder refuses
  static std::unique_ptr<RecoveryCopy> make(const std::filesystem::path& folder, std::string& reason);
  /// The copies that no living process of this machine holds, oldest first; now held by this one. What is
  /// left of drawings that were never copied is removed.
  static std::vector<std::unique_ptr<RecoveryCopy>> abandoned(const std::filesystem::path& folder);
  ~RecoveryCopy();

  /// Writes down which drawing it is. @return false when that fails
  bool describe(const RecoveredDrawing& drawing);
  [[nodiscard]] const RecoveredDrawing& drawing() const { return m_drawing; }
  /// Where the copy belongs; it may be missing.
  [[nodiscard]] std::filesystem::path copy() const;
  /// When it was written, "22/11/2026 18:05" of this place; empty while it is missing.
  [[nodiscard]] std::string written() const;
  /// Copy and place go.
  void remove();

private:
  RecoveryCopy(std::filesystem::path note, int descriptor)
      : m_note(std::move(note)), m_descriptor(descriptor) {}
  static std::unique_ptr<RecoveryCopy> hold(const std::filesystem::path& note);
  void read(std::string_view text);

  std::filesystem::path m_note;
  int m_descriptor;  ///< of the note, locked
  RecoveredDrawing m_drawing;
};

}  // namespace veltora::app
