// Mistakes planted into simulated traverses are found again, and good traverses raise no doubt.

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/causes_polygonale.h"
#include "calc/traverse/doutes_polygonale.h"
#include "calc/traverse/polygonale_fermee.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace veltora {
namespace {

/// A traverse as numbers, in grades and metres, before it is written into rows.
struct Leve {
  bool ouverte = false;
  double depart = 0.0, arrivee = 0.0, fermeture = 0.0;  ///< bearings, closing angle
  double x = 0.0, y = 0.0;                              ///< arrival
  std::vector<double> angles, distances;
  int modeAngle = 0;
};

/// Draws that are the same everywhere.
class Tirage {
public:
  explicit Tirage(unsigned graine) : m_moteur(graine) {}
  double entre(double bas, double haut) {
    return bas + (haut - bas) * (static_cast<double>(m_moteur()) / 4294967296.0);
  }
  std::size_t rang(std::size_t nombre) { return static_cast<std::size_t>(m_moteur()) % nombre; }
  /// Near enough to a normal deviate of variance 1: the sum of twelve.
  double bruit() {
    double somme = -6.0;
    for (int i = 0; i < 12; ++i) somme += entre(0.0, 1.0);
    return somme;
  }

private:
  std::mt19937 m_moteur;
};

/// Measured values: 2 mgr in an angle, 3 mm and 5 mm a kilometre in a distance.
void mesurer(Leve& leve, Tirage& tirage) {
  const auto angle = [&tirage](double juste) {
    return std::round((juste + 0.002 * tirage.bruit()) * 1e4) / 1e4;
  };
  for (double& a : leve.angles) a = angle(a);
  for (double& d : leve.distances) d = std::round((d + (0.003 + 5e-6 * d) * tirage.bruit()) * 1e3) / 1e3;
  leve.fermeture = angle(leve.fermeture);
}

/// Clockwise around a centre.
Leve fermee(std::size_t n, Tirage& tirage) {
  std::vector<double> X, Y;
  for (std::size_t i = 0; i < n; ++i) {
    const double direction =
        2.0 * kPi * (static_cast<double>(i) + tirage.entre(-0.3, 0.3)) / static_cast<double>(n);
    const double rayon = 25.0 * static_cast<double>(n) * tirage.entre(0.8, 1.2);
    X.push_back(rayon * std::sin(direction));
    Y.push_back(0.7 * rayon * std::cos(direction));
  }
  Leve leve;
  std::vector<double> gisements;
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t j = (i + 1) % n;
    gisements.push_back(calculGisement(X[i], Y[i], X[j], Y[j], 0));
    leve.distances.push_back(std::hypot(X[j] - X[i], Y[j] - Y[i]));
  }
  for (std::size_t i = 0; i < n; ++i)
    leve.angles.push_back(reduireAngle(gisements[i] - gisements[(i + n - 1) % n] + 200.0, 400.0));
  leve.depart = gisements[0];
  mesurer(leve, tirage);
  return leve;
}

/// Winds eastwards; the bearing of arrival lies in the turn in which the angles sum up.
Leve ouverte(std::size_t n, Tirage& tirage) {
  Leve leve;
  leve.ouverte = true;
  leve.depart = tirage.entre(0.0, 400.0);
  double g = leve.depart;
  for (std::size_t i = 0; i <= n; ++i) {
    const double cap = 100.0 + tirage.entre(-60.0, 60.0);
    const double angle = reduireAngle(cap - g + 200.0, 400.0);
    g += angle - 200.0;
    if (i == n) {
      leve.fermeture = angle;
      break;
    }
    leve.angles.push_back(angle);
    leve.distances.push_back(tirage.entre(60.0, 250.0));
    leve.x += leve.distances.back() * std::sin(g * kPi / 200.0);
    leve.y += leve.distances.back() * std::cos(g * kPi / 200.0);
  }
  leve.arrivee = g;
  mesurer(leve, tirage);
  return leve;
}

void ecrireRangees(const Leve& leve, donneesObs& obs) {
  obs.modeAngle = leve.modeAngle;
  for (std::size_t i = 0; i < leve.angles.size(); ++i) {
    ligneObs ligne{base::formater(L"S%d", static_cast<int>(i + 1)), base::formater(L"%.6f", leve.angles[i]),
                   base::formater(L"%.4f", leve.distances[i]), L"0"};
    ligne.ligne = static_cast<int>(i + 1);
    obs.lignes.push_back(ligne);
  }
}

polygonaleFermeeObs fermeeDe(const Leve& leve) {
  polygonaleFermeeObs obs;
  obs.vo = leve.depart;
  ecrireRangees(leve, obs);
  obs.nom = obs.lignes.back().nom;
  return obs;
}

polygonaleOuverteObs ouverteDe(const Leve& leve) {
  polygonaleOuverteObs obs;
  ecrireRangees(leve, obs);
  obs.depart = {L"S0", 0.0, 0.0, 0.0, leve.depart};
  obs.arrivee = {obs.lignes.back().nom, leve.x, leve.y, 0.0, leve.arrivee};
  obs.fermeture = leve.fermeture;
  return obs;
}

cheminement cheminDe(const Leve& leve) {
  return leve.ouverte ? cheminement(ouverteDe(leve)) : cheminement(fermeeDe(leve));
}

/// Whole days of traverses: both kinds, short and long.
struct Essai {
  Leve leve;
  std::size_t rangee;
};

Essai essai(int numero, Tirage& tirage) {
  constexpr std::size_t kTailles[] = {6, 11, 25};
  const std::size_t n = kTailles[numero % 3];
  const Leve leve = numero % 2 == 0 ? fermee(n, tirage) : ouverte(n, tirage);
  return {leve, tirage.rang(n)};
}

/// What is done to a traverse at a row, and by which words the cause is known again.
struct Faute {
  const char* nom;
  const wchar_t* mots;
  int ligne;  ///< where it is told, relative to the row; none for a mistake in all rows
  std::function<void(Leve&, std::size_t)> faire;
};

constexpr int kToutes = -1000;

void convertir(Leve& leve, double facteur, int mode) {
  for (double& a : leve.angles) a *= facteur;
  leve.depart *= facteur;
  leve.arrivee *= facteur;
  leve.fermeture *= facteur;
  leve.modeAngle = mode;
}

/// 12.3456 for 12 degrees, 34 minutes, 56 seconds.
double sexagesimal(double grades) {
  const double secondes = std::round(grades * 0.9 * 3600.0);
  const double minutes = std::floor(secondes / 60.0);
  const double degres = std::floor(minutes / 60.0);
  return degres + (minutes - 60.0 * degres) / 100.0 + (secondes - 60.0 * minutes) / 1e4;
}

std::ptrdiff_t ou(std::size_t k) { return static_cast<std::ptrdiff_t>(k); }

void doubler(Leve& leve, std::size_t k) {
  leve.angles.insert(leve.angles.begin() + ou(k), leve.angles[k]);
  leve.distances.insert(leve.distances.begin() + ou(k), leve.distances[k]);
}

void oublier(Leve& leve, std::size_t k) {
  leve.angles.erase(leve.angles.begin() + ou(k));
  leve.distances.erase(leve.distances.begin() + ou(k));
}

void tournerTout(Leve& leve) {
  for (double& a : leve.angles) a = 400.0 - a;
  leve.fermeture = 400.0 - leve.fermeture;
}

void ecrireEnSexagesimal(Leve& leve) {
  for (double& a : leve.angles) a = sexagesimal(a);
  leve.fermeture = sexagesimal(leve.fermeture);
  leve.depart = sexagesimal(leve.depart);
  leve.arrivee = sexagesimal(reduireAngle(leve.arrivee, 400.0));
  leve.modeAngle = 1;
}

std::vector<Faute> fautes() {
  std::vector<Faute> liste = {
      {"degrees as grades", L"sont en degrés et non en grades", kToutes,
       [](Leve& l, std::size_t) { convertir(l, 0.9, 0); }},
      {"grades as degrees", L"sont en grades et non en degrés", kToutes,
       [](Leve& l, std::size_t) { convertir(l, 1.0, 1); }},
      {"radians as grades", L"sont en radians et non en grades", kToutes,
       [](Leve& l, std::size_t) { convertir(l, kPi / 200.0, 0); }},
      {"minutes as decimals", L"sont en degrés, minutes et secondes", kToutes,
       [](Leve& l, std::size_t) { ecrireEnSexagesimal(l); }},
      {"other side", L"sont de l'autre côté", kToutes, [](Leve& l, std::size_t) { tournerTout(l); }},
      {"one on the other side", L"est de l'autre côté", 0,
       [](Leve& l, std::size_t k) { l.angles[k] = 400.0 - l.angles[k]; }},
      {"columns exchanged", L"les colonnes des angles", kToutes,
       [](Leve& l, std::size_t) { std::swap(l.angles, l.distances); }},
      {"one row exchanged", L"angle et distance sont échangés", 0,
       [](Leve& l, std::size_t k) { std::swap(l.angles[k], l.distances[k]); }},
      {"row doubled", L"est en double", 1, doubler},
      {"row missing", L"il manque une observation", -1, oublier},
      {"outside one turn", L"sortent de l'intervalle", kToutes,
       [](Leve& l, std::size_t k) { l.angles[k] -= 400.0; }},
      {"distance forgotten", L"la distance de", 0, [](Leve& l, std::size_t k) { l.distances[k] = 0.0; }},
      {"point of a distance", L"la distance de", 0, [](Leve& l, std::size_t k) { l.distances[k] *= 10.0; }},
  };
  for (const double faux : {1.0, -1.0, 10.0, -10.0, 100.0, 200.0, 1.8, -0.27}) {
    liste.push_back({"angle", L"l'angle", 0, [faux](Leve& l, std::size_t k) {
                       l.angles[k] = reduireAngle(l.angles[k] + faux, 400.0);
                     }});
  }
  for (const double faux : {100.0, -30.0, 9.0, 13.37})
    liste.push_back(
        {"distance", L"la distance de", 0, [faux](Leve& l, std::size_t k) { l.distances[k] += faux; }});
  return liste;
}

TEST(CausesPolygonale, APlantedMistakeIsNamedAndNoOtherAlone) {
  for (const Faute& faute : fautes()) {
    Tirage tirage(20);
    int cherchees = 0;
    int nommees = 0;
    for (int numero = 0; numero < 60; ++numero) {
      Essai e = essai(numero, tirage);
      faute.faire(e.leve, e.rangee);
      const cheminement chemin = cheminDe(e.leve);
      if (chemin.fermeture().tient({}, chemin.angles.size())) continue;
      const causesPolygonale causes = chercherCauses(chemin, e.leve.modeAngle, {});
      const int ligne = faute.ligne == kToutes ? 0 : static_cast<int>(e.rangee) + 1 + faute.ligne;
      bool nommee = false;
      std::string texte;
      for (const causePolygonale& cause : causes.meilleures) {
        nommee = nommee || (cause.texte.find(faute.mots) != std::wstring::npos && cause.ligne == ligne);
        texte += base::formater("%d %s\n", cause.ligne, base::toUtf8(cause.texte));
      }
      ++cherchees;
      nommees += nommee ? 1 : 0;
      EXPECT_TRUE(nommee || !causes.probable)
          << faute.nom << " at row " << ligne << ", traverse " << numero << "\n"
          << texte;
    }
    EXPECT_GT(cherchees, 20) << faute.nom;
    EXPECT_GE(nommees * 100, cherchees * 90) << faute.nom;
  }
}

/// Computes a traverse as the job does. @return its doubts; `f` gets its misclosures
base::Remarques doutesDe(const Leve& leve, fermeturesPolygonale& f) {
  base::CArray<double> X, Y, Z;
  if (leve.ouverte) {
    const polygonaleOuverteObs obs = ouverteDe(leve);
    lignesPolygonale lignes = lireLignes(obs.lignes);
    calculerPolygonaleOuverte(obs, lignes, X, Y, Z, nullptr, false, false, &f);
    return doutesOuverte(obs, f);
  }
  const polygonaleFermeeObs obs = fermeeDe(leve);
  lignesPolygonale lignes = lireLignes(obs.lignes);
  calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, 0, 0, lignes, X, Y, Z, nullptr, false, false,
                           &f);
  return doutesFermee(obs, f);
}

TEST(CausesPolygonale, GoodTraversesRaiseNoDoubt) {
  Tirage tirage(9);
  for (int numero = 0; numero < 300; ++numero) {
    const Leve leve = essai(numero, tirage).leve;
    fermeturesPolygonale f;
    EXPECT_EQ(texteDe(doutesDe(leve, f)), "") << numero;
    // The search closes by the same rules as the computation.
    const cheminement chemin = cheminDe(leve);
    EXPECT_NEAR(chemin.fermeture().ecart, std::hypot(f.Ex, f.Ey), 1e-8) << numero;
    EXPECT_NEAR(chemin.fermeture().angulaire, (leve.ouverte ? f.E : -f.E) * kPi / 200.0, 1e-9) << numero;
  }
}

/// The first angle of a closed traverse goes into no bearing: its mistake is spread over the others.
TEST(CausesPolygonale, TheFirstAngleOfAClosedTraverseIsFoundToo) {
  Tirage tirage(5);
  Leve leve = fermee(8, tirage);
  leve.angles[0] += 10.0;
  const causesPolygonale causes = chercherCauses(cheminDe(leve), 0, {});
  ASSERT_EQ(causes.meilleures.size(), 1U);
  EXPECT_EQ(causes.meilleures[0].ligne, 1);
}

/// A few operations a row: ten thousand rows are looked through in a moment, where trying each of them by a
/// computation of the whole traverse would take minutes.
TEST(CausesPolygonale, LongTraversesAreSearchedInOnePass) {
  Tirage tirage(3);
  Leve leve = fermee(10000, tirage);
  leve.angles[1234] += 100.0;
  const causesPolygonale causes = chercherCauses(cheminDe(leve), 0, {});
  ASSERT_EQ(causes.meilleures.size(), causesPolygonale::kCitees);
  for (const causePolygonale& cause : causes.meilleures) EXPECT_NEAR(cause.ligne, 1235, 60);
}

}  // namespace
}  // namespace veltora
