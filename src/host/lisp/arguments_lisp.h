#pragma once

#include "arx/db/resbuf.h"
#include "arx/ge/gepoint.h"
#include "base/uncopyable.h"

#include <optional>
#include <string>

namespace veltora {

/// Arguments of a LISP function: owns the chain of `acedGetArgs`. A list counts as one argument, whose item
/// is its opening bracket.
class argumentsLisp : private Uncopyable {
public:
  static constexpr int kPasEntier = -99999999;
  static constexpr double kPasReel = 1e36;

  /// Takes the chain over; null for no arguments.
  explicit argumentsLisp(resbuf* chaine) : m_chaine(chaine) {}
  ~argumentsLisp() { acutRelRb(m_chaine); }

  [[nodiscard]] const resbuf* chaine() const { return m_chaine; }
  [[nodiscard]] int nombre() const;
  /// The argument at this place, counted from 0; null beyond the end.
  [[nodiscard]] const resbuf* element(int n) const;

  /// A 16 or 32 bit integer, otherwise `kPasEntier`.
  static int entier(const resbuf* element);
  /// A real, a 16 or a 32 bit integer, otherwise `kPasReel`.
  static double reel(const resbuf* element);
  static bool estEntier(const resbuf* element);
  static bool estReel(const resbuf* element);
  static bool estTexte(const resbuf* element);

private:
  resbuf* m_chaine;
};

/// A position: a point of two or three coordinates, or a list of so many numbers.
/// @return nothing for anything else
std::optional<AcGePoint3d> lirePosition(const resbuf* element);

}  // namespace veltora
