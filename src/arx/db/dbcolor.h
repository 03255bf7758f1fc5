#pragma once

#include "arx/adesk.h"

/// The colour index by which an entity takes its layer's colour.
inline constexpr int kColorByLayer = 256;

/// Colour of an entity or a layer: an index (0 ByBlock, 1 to 255, 256 ByLayer), and a true colour when one
/// was given.
class AcCmColor {
public:
  constexpr AcCmColor() = default;
  constexpr explicit AcCmColor(int index) : m_index(static_cast<Adesk::Int16>(index)) {}
  [[nodiscard]] constexpr int colorIndex() const { return m_index; }
  /// @return false, nothing changed, outside 0 to 256
  constexpr bool setColorIndex(int index) {
    if (index < 0 || index > kColorByLayer) return false;
    m_index = static_cast<Adesk::Int16>(index);
    m_rgb = -1;
    return true;
  }
  constexpr void setRGB(Adesk::Int32 rgb) { m_rgb = rgb; }
  [[nodiscard]] constexpr bool isTrueColor() const { return m_rgb >= 0; }
  [[nodiscard]] constexpr Adesk::Int32 rgb() const { return m_rgb; }
  [[nodiscard]] constexpr bool isByLayer() const { return m_index == kColorByLayer && m_rgb < 0; }
  [[nodiscard]] constexpr bool isByBlock() const { return m_index == 0 && m_rgb < 0; }
  constexpr bool operator==(const AcCmColor&) const = default;

private:
  Adesk::Int32 m_rgb = -1;
  Adesk::Int16 m_index = kColorByLayer;
};
