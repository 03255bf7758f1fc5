#pragma once

#include "base/export.h"
#include "base/uncopyable.h"

#include <cstdint>
#include <string>

namespace veltora {

/// The line style of a border: 2 dotted, 3 dashed, 4 solid, 5 double, 6 groove, 7 ridge, 8 inset, 9 outset;
/// every other value is "none".
class VELTORA_API htmlBorderStyle : Uncopyable {
public:
  htmlBorderStyle() = default;
  explicit htmlBorderStyle(std::uint8_t valeur) : style(valeur) {}

  [[nodiscard]] std::string css() const;

  std::uint8_t style = 0;
};

}  // namespace veltora
