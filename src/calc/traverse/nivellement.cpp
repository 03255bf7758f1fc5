#include "calc/traverse/nivellement.h"

#include <cmath>
#include <cstddef>

namespace veltora {
namespace {

double part(int modeNivellement, const corrections& parts, std::size_t i, std::size_t n) {
  switch (modeNivellement) {
    case 2:
      return parts.L[i] * parts.H / parts.SL;
    case 3:
      return std::sqrt(parts.L[i]) * parts.H / parts.SR;
    default:
      return parts.H / static_cast<double>(n);
  }
}

}  // namespace

std::wstring_view motDeNivellement(int modeNivellement) {
  const auto index = static_cast<std::size_t>(modeNivellement);
  return kModesNivellement[index < kModesNivellement.size() ? index : 0];
}

bool compenseAltitudes(int modeNivellement) { return modeNivellement >= 1 && modeNivellement <= 3; }

corrections repartirFermeture(int modeNivellement, double H, const lignesPolygonale& lignes,
                              const base::CArray<double>& X, const base::CArray<double>& Y) {
  const std::size_t n = lignes.size();
  corrections parts;
  parts.H = H;
  parts.L.resize(n);
  parts.c.resize(n);
  parts.dz.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    // Deliberate (distances-compensees): lengths between adjusted coordinates, not the measured ones, and the
    // last one leads back to entry 0 in the open traverse too.
    const std::size_t suivant = (i + 1) % n;
    const double dx = X[suivant] - X[i];
    const double dy = Y[suivant] - Y[i];
    parts.L[i] = std::sqrt(dx * dx + dy * dy);
    parts.SL += parts.L[i];
    parts.SR += std::sqrt(parts.L[i]);
    parts.dz[i] = lignes[i].dz;
  }
  for (std::size_t i = 0; i < n; ++i) parts.c[i] = part(modeNivellement, parts, i, n);
  return parts;
}

void compenserAltitudes(const corrections& parts, double Z0, lignesPolygonale& lignes,
                        base::CArray<double>& Z) {
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    Z.Add(i == 0 ? Z0 : lignes[i - 1].dz + Z[i - 1]);
    lignes[i].dz = lignes[i].dz - parts.c[i];
  }
}

void cheminerAltitudes(double Z0, const lignesPolygonale& lignes, base::CArray<double>& Z) {
  for (std::size_t i = 0; i < lignes.size(); ++i) Z.Add(i == 0 ? Z0 : Z[i - 1] + lignes[i - 1].dz);
}

}  // namespace veltora
