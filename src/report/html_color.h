#pragma once

#include "base/export.h"

#include <cstdint>
#include <string>

namespace veltora {

/// A colour of a report: red, green and blue from 0 to 255; black at first.
class VELTORA_API htmlColor {
public:
  htmlColor() = default;
  htmlColor(const htmlColor&) = default;
  htmlColor& operator=(const htmlColor&) = default;
  virtual ~htmlColor() = default;

  void setRGB(std::uint8_t rouge, std::uint8_t vert, std::uint8_t bleu);
  /// Loads one of the 140 web colours, in alphabetical order of their names (0 AliceBlue to 139 YellowGreen).
  /// Any other index leaves the colour as it is.
  void setCouleurNommee(int index);
  /// "rgb(r,g,b)", decimal.
  [[nodiscard]] std::string css() const;

  friend bool operator==(const htmlColor& une, const htmlColor& autre) {
    return une.r == autre.r && une.g == autre.g && une.b == autre.b;
  }

  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
};

}  // namespace veltora
