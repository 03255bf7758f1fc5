#pragma once

#include "base/export.h"

#include <string>

namespace veltora {

/// A length of a style rule with its unit.
class VELTORA_API htmlSize {
public:
  enum Unite { pourcent = 0, pt = 1, mm = 2, cm = 3, pc = 4, in = 5, px = 6 };

  htmlSize() = default;
  htmlSize(double nouvelleValeur, int nouvelleUnite) : valeur(nouvelleValeur), unite(nouvelleUnite) {}
  htmlSize(const htmlSize&) = default;
  htmlSize& operator=(const htmlSize&) = default;
  virtual ~htmlSize() = default;

  void set(double nouvelleValeur, int nouvelleUnite);
  /// The value as a whole number when nothing stands behind the point (10 in pt is "10pt"), else
  /// with two decimals; a fractional percentage has a blank in front of its sign ("5.50 %"). An
  /// unknown unit prints no suffix.
  [[nodiscard]] std::string css() const;

  double valeur = 0.0;
  int unite = px;
};

}  // namespace veltora
