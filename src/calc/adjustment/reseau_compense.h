#pragma once

#include "base/uncopyable.h"
#include "calc/adjustment/compensation.h"
#include "calc/adjustment/fautes.h"
#include "calc/adjustment/statistiques.h"
#include "calc/network/formules_poids.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A weighted adjustment from the measures to what a surveyor wants to know of it.
namespace veltora {

struct choixPonderes {
  robustesse methode = robustesse::aucune;
  bool prevoir = false;                                       ///< measures count by their precision only
  formulesPoids* formules = nullptr;                          ///< for measures without a standard deviation
  std::vector<std::pair<std::wstring, std::wstring>> paires;  ///< whose relative ellipses are wanted
};

struct ellipseDePaire {
  int a = -1;
  int b = -1;
  ellipse e;  ///< m0 a priori
  bool mesuree = false;
};

struct VELTORA_API reseauCompense : private Uncopyable {
  reseauCompense();
  ~reseauCompense();
  reseauPondere reseau;
  bilanPondere bilan;
  testGlobal test;
  std::vector<statistiqueMesure> mesures;
  std::vector<statistiquePoint> points;
  std::vector<ellipseDePaire> paires;
  std::vector<mesureSuspecte> suspectes;
  std::vector<connuSuspect> connus;
  base::Remarques remarques;
  std::unique_ptr<systemePondere> systeme;  ///< of the last pass; refers to `reseau`
  bool prevu = false;
  int inconnues = 0;
  int defauts = 0;  ///< motions that the free coordinates hold

  /// Standard deviations count with it: m0 a posteriori, 1 for a plan or without redundancy.
  [[nodiscard]] double facteur() const { return prevu || test.redondance <= 0 ? 1.0 : test.m0; }
  /// Factor of ellipses for 95 %, on top of `facteur`.
  [[nodiscard]] double facteur95() const;
};

/// Start, adjustment, statistics, search for mistakes. `resultat.reseau` is read before.
/// @return empty, or French why there is no result: nothing to compute, a datum that floats (how), no numbers
VELTORA_API std::wstring compenserReseau(const choixPonderes& choix, reseauCompense& resultat);

}  // namespace veltora
