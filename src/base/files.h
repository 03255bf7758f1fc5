#pragma once

#include "base/export.h"
#include "base/passing_file.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Whole-file reading and replacing. Paths are UTF-8 (`std::filesystem::path` of the platform).
namespace veltora::base {

/// What the system replaces by characters that make a name unique.
inline const std::string kUnique(6, 'X');

/// What an error number of the system means, in French (UTF-8).
VELTORA_API std::string raisonSysteme(int erreur);

/// The whole content, or nothing when the file cannot be opened, is a folder, a device or a pipe, is larger
/// than 2 GB or fails while being read.
VELTORA_API std::optional<std::string> lireFichier(const std::filesystem::path& path);

/// Writes beside the target and renames over it, so that a crash or a full disk leaves the old file whole.
/// Owner, group and mode stay those of the old file; a link stays a link. A device, a pipe, a link that leads
/// nowhere and a read-only file are refused. What a killed process left beside this target is removed.
/// @return false, the target unchanged and nothing left beside it, when any step fails; `reason` then says
/// why in French, with the path
VELTORA_API bool remplacerFichier(const std::filesystem::path& path, std::string_view content,
                                  std::string* reason = nullptr);

/// The same for content that comes piece by piece: nothing is held but what the caller has at hand.
class VELTORA_API RemplacementFichier {
public:
  explicit RemplacementFichier(const std::filesystem::path& path);
  /// Without `terminer`, what was written vanishes.
  ~RemplacementFichier();
  RemplacementFichier(const RemplacementFichier&) = delete;
  RemplacementFichier& operator=(const RemplacementFichier&) = delete;
  /// @return false from the first failure on
  bool ecrire(std::string_view piece);
  /// Puts the new content in the place of the old one. @return as `remplacerFichier`
  bool terminer(std::string* reason = nullptr);

private:
  void ouvrir();
  void abandonner(int error);
  /// Owner, group and mode of the old file. @return false when the new one may not have them
  bool imiter();
  /// Puts the content into the old file itself, which keeps its owner so.
  bool recopier();
  std::filesystem::path m_path;
  std::filesystem::path m_target;
  FichierPassager m_temporary;
  int m_descriptor = -1;
  int m_error = 0;
};

/// A folder for temporary files that ends without a separator: of this user alone (mode 0700), below that of
/// the system. Tests set their own with `setDossierTemporaire`.
VELTORA_API std::filesystem::path dossierTemporaire();
VELTORA_API void setDossierTemporaire(const std::filesystem::path& folder);
/// Makes an empty file with a unique name "<prefix>" + six characters + ".tmp" in the folder. @return its
/// path, empty on failure
VELTORA_API std::filesystem::path creerFichierTemporaire(const std::filesystem::path& folder,
                                                         std::string_view prefix);

}  // namespace veltora::base
