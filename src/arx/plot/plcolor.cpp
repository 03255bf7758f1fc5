#include "arx/plot/plcolor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array<AcPlColor, 10> kNamed{{{0, 0, 0},
                                            {255, 0, 0},
                                            {255, 255, 0},
                                            {0, 255, 0},
                                            {0, 255, 255},
                                            {0, 0, 255},
                                            {255, 0, 255},
                                            {255, 255, 255},
                                            {128, 128, 128},
                                            {192, 192, 192}}};
constexpr std::array<int, 6> kGreys{51, 91, 132, 173, 214, 255};
constexpr std::array<double, 5> kValues{255.0, 165.75, 127.5, 76.5, 38.25};

/// Share of a channel at a hue in degrees from the channel's own: 1 within 60, 0 beyond 120.
double share(double degrees) {
  const double away = std::fabs(std::remainder(degrees, 360.0));
  return std::clamp((120.0 - away) / 60.0, 0.0, 1.0);
}

}  // namespace

AcPlColor acplIndexColor(int index) {
  const auto at = static_cast<std::size_t>(std::clamp(index, 0, 255));
  if (at < kNamed.size()) return kNamed[at];
  if (at >= 250) return {kGreys[at - 250], kGreys[at - 250], kGreys[at - 250]};
  const double hue = static_cast<double>(at / 10 - 1) * 15.0;
  const double value = kValues[at % 10 / 2];
  const auto channel = [&](double own) {
    const double full = share(hue - own);
    return static_cast<int>(value * (at % 2 == 0 ? full : (1.0 + full) / 2));
  };
  return {channel(0), channel(120), channel(240)};
}
