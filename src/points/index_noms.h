#pragma once

#include "core/point_name.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace veltora {

/// Key of a point name: widened, lower-cased, without the characters of `bords` at both ends. A name that is
/// longer than any point's, or holds a character that no name can hold, gives a key that is never entered.
struct cleNomPoint {
  std::array<char16_t, kPointNameLength> lettres{};
  std::uint8_t longueur = 0;
  bool impossible = false;

  cleNomPoint(std::wstring_view nom, std::wstring_view bords);
  /// @param nom  in the ANSI code page
  cleNomPoint(std::string_view nom, std::wstring_view bords);
  bool operator==(const cleNomPoint&) const = default;
};

struct hachageNomPoint {
  std::size_t operator()(const cleNomPoint& cle) const noexcept;
};

/// Dictionary from the key of a name to the index of the point. It starts with 10037 buckets and grows with
/// the table, so that a look-up stays one hash and a short chain however many points there are.
using indexNomsPoints = std::unordered_map<cleNomPoint, std::int32_t, hachageNomPoint>;
inline constexpr std::size_t kAlveolesIndexNoms = 10037;

}  // namespace veltora
