#pragma once

#include "base/export.h"

#include "base/uncopyable.h"

#include <csignal>
#include <string>

/// Files that must not outlive the process that made them: half-written ones and marks of drawings in use.
namespace veltora::base {

/// Owns such a file: it is removed by the destructor, and by the signals that end the process.
class VELTORA_API FichierPassager {
public:
  FichierPassager() = default;
  /// Takes over a file that was just made, under `SignauxRetenus`.
  explicit FichierPassager(std::string path);
  FichierPassager(FichierPassager&& other) noexcept;
  FichierPassager& operator=(FichierPassager&& other) noexcept;
  FichierPassager(const FichierPassager&) = delete;
  FichierPassager& operator=(const FichierPassager&) = delete;
  ~FichierPassager() { effacer(); }

  [[nodiscard]] const std::string& chemin() const { return m_path; }
  void effacer();
  /// Gives the file up: it stays, or is no longer there.
  void garder();

private:
  std::string m_path;  ///< empty without a file
};

/// Removes all of them. For a signal handler that is about to end the process.
VELTORA_API void effacerPassagers() noexcept;

/// While it lives the signals that remove such files wait: none comes between the making of a file and its
/// entry. For this thread.
class VELTORA_API SignauxRetenus : private Uncopyable {
public:
  SignauxRetenus();
  ~SignauxRetenus();

private:
  sigset_t m_former;
};

/// From now on the signals that ask the process to end (SIGTERM, SIGHUP, SIGPIPE) remove them first, and a
/// limit on the size of files (SIGXFSZ) makes writing fail instead of ending the process. A signal that
/// whoever started the process had it ignore stays ignored.
VELTORA_API void surveillerSignaux();

}  // namespace veltora::base
