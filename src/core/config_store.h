#pragma once

#include "arx/ge/gepoint.h"
#include "base/uncopyable.h"

#include <boost/optional/optional.hpp>
#include <boost/property_tree/ptree.hpp>

#include <string>
#include <string_view>

namespace veltora {

/// Text form of a point in the tree: "1000.0 1000.0", two numbers that read back as the same doubles.
struct Point2DTranslator {
  using internal_type = std::string;
  using external_type = AcGePoint2d;
  static boost::optional<AcGePoint2d> get_value(const std::string& texte);
  static boost::optional<std::string> put_value(const AcGePoint2d& point);
};

/// The content of "config.ini", one for the process, read at its first use. A missing or unreadable file
/// counts as empty. Keys that no variable uses are kept.
class ConfigStore : private Uncopyable {
public:
  static ConfigStore& instance();

  /// The value under "section.name"; false, with `valeur` unchanged, when there is none or it does not
  /// convert.
  bool lire(std::string_view cle, AcGePoint2d& valeur) const;
  bool lire(std::string_view cle, int& valeur) const;
  /// Sets the value and marks the store as modified.
  void poser(std::string_view cle, const AcGePoint2d& valeur);
  void poser(std::string_view cle, int valeur);
  /// Writes the file when the store is modified. A failure is ignored.
  void sauver();
  /// Reads the file anew, and forgets what was not saved.
  void recharger();

private:
  ConfigStore() { recharger(); }
  boost::property_tree::ptree& noeudDe(std::string_view cle);

  boost::property_tree::ptree m_arbre;
  bool m_modifie = false;
  bool m_charge = false;  ///< the tree comes from the file
};

}  // namespace veltora
