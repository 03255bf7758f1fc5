#pragma once

#include "base/export.h"
#include "base/uncopyable.h"

#include <memory>

/// Progress of long jobs, and the user's wish to stop them.
namespace veltora::base {

/// What the user sees of one job. Its end closes it.
class VELTORA_API AfficheurSuivi {
public:
  virtual ~AfficheurSuivi() = default;
  virtual void etendre(long long minimum, long long maximum) = 0;
  virtual void avancer() = 0;
  virtual void aller(long long position) = 0;
};

/// Who shows long jobs and hears the user; implemented by the dialog driver in force.
class VELTORA_API PortSuivi {
public:
  virtual ~PortSuivi() = default;
  /// Shows a new job, which nobody has asked to stop yet. Null when nothing can be shown.
  virtual std::unique_ptr<AfficheurSuivi> ouvrirSuivi() = 0;
  /// True once the user has asked to stop the job in progress.
  [[nodiscard]] virtual bool arretDemande() const = 0;
  virtual void oublierArret() = 0;
};

/// The port in force, null for none: nothing is shown then and nothing stops.
VELTORA_API PortSuivi* portSuivi();
/// Installs a port, which the caller owns and uninstalls with null. @return the former one
VELTORA_API PortSuivi* setPortSuivi(PortSuivi* port);

/// A long job in progress:
///
///     base::Suivi suivi(n - 1);
///     for (...) {
///       if (suivi.arrete()) break;
///       ...
///       suivi.avancer();
///     }
///
/// A step costs next to nothing.
class VELTORA_API Suivi : private Uncopyable {
public:
  /// Shows nothing before the first `etendre`.
  Suivi() = default;
  /// Shows a job that runs from 0 to `maximum`.
  explicit Suivi(long long maximum) { etendre(0, maximum); }
  void etendre(long long minimum, long long maximum);
  [[nodiscard]] bool ouvert() const { return m_ouvert; }
  /// One step further.
  void avancer();
  void aller(long long position);
  /// True once the user has asked to stop.
  [[nodiscard]] bool arrete() const;

private:
  std::unique_ptr<AfficheurSuivi> m_afficheur;
  bool m_ouvert = false;
};

}  // namespace veltora::base
