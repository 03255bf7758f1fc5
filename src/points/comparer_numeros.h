#pragma once

#include "base/export.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// A point name cut for sorting: what stands in front of the first digit, the run of digits as a number, the
/// rest. Case does not count.
struct VELTORA_API cleNumero {
  std::wstring prefixe;  ///< lower case, as the suffix
  int numero = 0;        ///< 0 without a digit; too many digits give the largest integer
  std::wstring suffixe;

  cleNumero() = default;
  explicit cleNumero(std::wstring_view nom);
};

/// The order of two cut names: a name without prefix comes last; then prefix, number, suffix.
/// @return negative, 0 or positive
VELTORA_API int comparerNumeros(const cleNumero& a, const cleNumero& b);
/// The order of point names: "A2", "A10", "2".
VELTORA_API int comparerNumeros(std::wstring_view a, std::wstring_view b);

/// Position of each of `nombre` items when they are sorted, equal ones sharing one: a list that is sorted by
/// these compares two integers instead of two items.
/// @param comparer  order of two items, given by their indexes; without contradiction
VELTORA_API std::vector<int> rangsTries(std::size_t nombre,
                                        const std::function<int(std::size_t, std::size_t)>& comparer);

}  // namespace veltora
