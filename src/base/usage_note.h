#pragma once

#include "base/passing_file.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// Several sessions on one file: how each notices what the others do.
namespace veltora::base {

/// Which file stands at a path and what it was when somebody looked; equal as long as nobody wrote.
struct EtatFichier {
  bool present = false;
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;
  bool operator==(const EtatFichier&) const = default;
};
VELTORA_API EtatFichier etatFichier(const std::filesystem::path& path);

/// The name of this machine in its network, as notes tell it; empty when it has none.
VELTORA_API std::string nomDuPoste();

/// The key of the machine in notes.
inline constexpr std::string_view kPosteDeNote = "poste : ";
/// The rest of a note's line that begins with a key, the first line left out; empty without one.
VELTORA_API std::string valeurDeNote(std::string_view note, std::string_view key);

/// The note "<name>.ouvert" beside a file in use: who has it open, on which machine, since when, in French.
/// It is removed when this object goes and by the signals that end the process; it never keeps anybody from
/// reading.
class VELTORA_API NoteUsage {
public:
  NoteUsage() = default;
  NoteUsage(NoteUsage&& other) noexcept;
  NoteUsage& operator=(NoteUsage&& other) noexcept;
  NoteUsage(const NoteUsage&) = delete;
  NoteUsage& operator=(const NoteUsage&) = delete;
  ~NoteUsage() { retirer(); }

  /// Puts the note beside a file, in place of the one this object had. Where none can be put nothing happens.
  /// @return a sentence for the user (UTF-8): who else has the file open, whose note stays then; or whose
  /// abandoned note was taken over. Empty when there is nothing to tell
  std::string poser(const std::filesystem::path& file);
  /// Whether this object's note stands beside its file.
  [[nodiscard]] bool enVigueur() const { return m_descriptor >= 0; }
  void retirer();

private:
  FichierPassager m_note;
  int m_descriptor = -1;  ///< locked as long as this process lives
};

}  // namespace veltora::base
