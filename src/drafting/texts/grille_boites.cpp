#include "drafting/texts/grille_boites.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace veltora {
namespace {

/// A box over more cells than this stands apart.
constexpr std::int64_t kCellulesParBoite = 64;
/// Cells farther out are one with the last: places are kept within what an integer holds.
constexpr double kDernierRang = 1e15;

std::uint64_t cle(std::int64_t x, std::int64_t y) {
  // Two cells that fall under one key only make the boxes of both be looked at.
  return static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15ULL ^ static_cast<std::uint64_t>(y);
}

}  // namespace

grilleBoites::grilleBoites(double cote, std::size_t nombre)
    : m_cote(cote > 0.0 && std::isfinite(cote) ? cote : 1.0), m_nombre(nombre) {}

bool grilleBoites::cellules::nombreuses() const {
  return x1 - x0 >= kCellulesParBoite || y1 - y0 >= kCellulesParBoite ||
         (x1 - x0 + 1) * (y1 - y0 + 1) > kCellulesParBoite;
}

std::int64_t grilleBoites::rang(double valeur) const {
  const double place = std::floor(valeur / m_cote);
  if (std::isnan(place)) return 0;
  return static_cast<std::int64_t>(std::clamp(place, -kDernierRang, kDernierRang));
}

grilleBoites::cellules grilleBoites::couvertes(const boitePlane& boite) const {
  return {rang(boite.x), rang(boite.y), rang(boite.x + boite.largeur), rang(boite.y + boite.hauteur)};
}

std::vector<std::size_t>& grilleBoites::cellule(std::int64_t x, std::int64_t y) {
  return m_cellules[cle(x, y)];
}

void grilleBoites::ajouter(std::size_t index, const boitePlane& boite) {
  const cellules c = couvertes(boite);
  if (c.nombreuses()) {
    m_grandes.push_back(index);
    return;
  }
  for (std::int64_t x = c.x0; x <= c.x1; ++x)
    for (std::int64_t y = c.y0; y <= c.y1; ++y) cellule(x, y).push_back(index);
}

void grilleBoites::enlever(std::size_t index, const boitePlane& boite) {
  const cellules c = couvertes(boite);
  if (c.nombreuses()) {
    std::erase(m_grandes, index);
    return;
  }
  for (std::int64_t x = c.x0; x <= c.x1; ++x)
    for (std::int64_t y = c.y0; y <= c.y1; ++y) std::erase(cellule(x, y), index);
}

const std::vector<std::size_t>& grilleBoites::autour(const boitePlane& boite) {
  const cellules c = couvertes(boite);
  m_trouves = m_grandes;
  if (c.nombreuses()) {
    m_trouves.resize(m_nombre);
    std::iota(m_trouves.begin(), m_trouves.end(), std::size_t{0});
    return m_trouves;
  }
  for (std::int64_t x = c.x0; x <= c.x1; ++x)
    for (std::int64_t y = c.y0; y <= c.y1; ++y) {
      const auto trouvee = m_cellules.find(cle(x, y));
      if (trouvee != m_cellules.end())
        m_trouves.insert(m_trouves.end(), trouvee->second.begin(), trouvee->second.end());
    }
  std::sort(m_trouves.begin(), m_trouves.end());
  m_trouves.erase(std::unique(m_trouves.begin(), m_trouves.end()), m_trouves.end());
  return m_trouves;
}

}  // namespace veltora
