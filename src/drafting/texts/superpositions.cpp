// Clearing of overlaps between annotations.
//
// The overlap of a box is the sum of the areas that it has in common with each other box, in the order of the
// boxes. A box that does not touch adds exactly 0, so leaving it out changes no digit: the index below only
// tells which boxes touch.

#include "drafting/texts/superpositions.h"

#include "base/box_index.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <optional>

namespace veltora {
namespace {

constexpr int kIterations = 50;
constexpr double kSommeDepart = 1e15;

base::PlaneBox emprise(const boitePlane& b) { return {b.x, b.y, b.x + b.largeur, b.y + b.hauteur}; }

/// The boxes of all annotations, and how to find those near a place.
class voisinage {
public:
  voisinage(std::vector<annotationPlane>& annotations, rechercheVoisins recherche)
      : m_annotations(annotations) {
    if (recherche == rechercheVoisins::kToutes) {
      m_tous.resize(annotations.size());
      std::iota(m_tous.begin(), m_tous.end(), 0);
      return;
    }
    std::vector<base::PlaneBox> boites;
    for (const annotationPlane& a : annotations) boites.push_back(emprise(a.boite));
    m_index.emplace(boites);
  }
  /// What a box at this place would cover, the annotation `sauf` left out. A place that covers `assez` or
  /// more is not added up to its end: areas are never negative, so that no sum falls again.
  double recouvrement(const boitePlane& boite, std::size_t sauf,
                      double assez = std::numeric_limits<double>::infinity()) {
    double somme = 0.0;
    for (const std::size_t i : m_index ? m_index->touching(emprise(boite)) : m_tous) {
      if (i != sauf) somme += surfaceCommune(boite, m_annotations[i].boite);
      if (m_index && somme >= assez) break;
    }
    return somme;
  }
  void deplacer(std::size_t i, const boitePlane& boite) {
    if (m_index) m_index->remove(i, emprise(m_annotations[i].boite));
    m_annotations[i].boite = boite;
    if (m_index) m_index->add(i, emprise(boite));
  }

private:
  std::vector<annotationPlane>& m_annotations;
  std::vector<std::size_t> m_tous;
  std::optional<base::BoxIndex> m_index;
};

/// The eight places around the anchor, in the order in which they are tried.
std::array<boitePlane, 8> placesAutour(const annotationPlane& a) {
  const double x = a.ancreX;
  const double y = a.ancreY;
  const double r = a.rayon;
  const double w = a.boite.largeur;
  const double h = a.boite.hauteur;
  return {{{x - w / 2, y + r, w, h},
           {x + r, y + r, w, h},
           {x + r, y - h / 2, w, h},
           {x + r, y - r - h, w, h},
           {x - w / 2, y - r - h, w, h},
           {x - r - w, y - r - h, w, h},
           {x - r - w, y - h / 2, w, h},
           {x - r - w, y + r, w, h}}};
}

/// @return the overlap that is left
double placer(voisinage& voisins, annotationPlane& annotation, std::size_t index) {
  double meilleur = voisins.recouvrement(annotation.boite, index);
  if (meilleur == 0.0) return meilleur;
  boitePlane choisie;
  bool mieux = false;
  for (const boitePlane& place : placesAutour(annotation)) {
    const double surface = voisins.recouvrement(place, index, meilleur);
    if (!(surface < meilleur)) continue;
    meilleur = surface;
    choisie = place;
    mieux = true;
  }
  if (mieux) {
    voisins.deplacer(index, choisie);
    annotation.deplacee = true;
  }
  return meilleur;
}

}  // namespace

double surfaceCommune(const boitePlane& a, const boitePlane& b) {
  const double largeur = std::min(a.x + a.largeur, b.x + b.largeur) - std::max(a.x, b.x);
  const double hauteur = std::min(a.y + a.hauteur, b.y + b.hauteur) - std::max(a.y, b.y);
  return largeur > 0.0 && hauteur > 0.0 ? largeur * hauteur : 0.0;
}

void reduireSuperpositions(std::vector<annotationPlane>& annotations, const suiviSuperpositions& suivi,
                           const bilanSuperpositions& bilan, rechercheVoisins recherche) {
  voisinage voisins(annotations, recherche);
  const int mobiles = static_cast<int>(std::count_if(annotations.begin(), annotations.end(),
                                                     [](const annotationPlane& a) { return !a.fixe; }));
  double precedente = kSommeDepart;
  for (int iteration = 1; iteration <= kIterations; ++iteration) {
    double somme = 0.0;
    int element = 0;
    for (std::size_t i = 0; i < annotations.size(); ++i) {
      if (annotations[i].fixe) continue;
      if (!suivi(iteration, ++element, mobiles)) return;
      somme += placer(voisins, annotations[i], i);
    }
    bilan(somme);
    if (somme == 0.0 || !(somme < precedente)) return;
    precedente = somme;
  }
}

}  // namespace veltora
