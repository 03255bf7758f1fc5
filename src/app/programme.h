#pragma once

#include "app/line_sources.h"
#include "app/projets_documents.h"
#include "base/uncopyable.h"
#include "ui/script_driver.h"

#include <memory>
#include <string>

namespace veltora::app {

/// Exit statuses of the program.
inline constexpr int kSucces = 0;
inline constexpr int kEchec = 1;
inline constexpr int kMauvaisAppel = 2;

/// The host with its module, wired to one source of lines and to standard output. One at a time.
class Programme : private Uncopyable {
public:
  explicit Programme(base::LineSource& source);
  ~Programme();

  /// Loads the module. @return false with the reason printed on standard error
  bool charger();
  /// Opens a drawing, or makes an empty one for an empty path. @return false with the reason on standard
  /// error
  bool ouvrir(const std::string& dessin);
  /// Runs the lines of the source to their end. @return false when a script failed
  bool executer();
  /// Runs one line; the source answers what it asks. @return false when it failed
  bool executer(const std::string& ligne);
  /// Saves the current drawing. @return false with the reason on standard error
  bool enregistrer(const std::string& sortie);

private:
  void brancher();
  template <class Travail>
  bool executer(Travail travail);

  base::LineSource& m_source;
  StandardOutput m_sortie;
  ui::ScriptDriver m_driver;
  std::unique_ptr<ProjetsDocuments> m_projets;
};

/// Prints "veltora : <message>" on standard error.
void direErreur(const std::string& message);
void direErreur(const std::wstring& message);

}  // namespace veltora::app
