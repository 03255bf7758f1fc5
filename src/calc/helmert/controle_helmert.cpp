#include "calc/helmert/controle_helmert.h"

#include "base/format.h"
#include "calc/angles.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace veltora {
namespace {

using Points = std::vector<AcGePoint2d>;

constexpr double kFaute = 0.05;                // drawing units, a residual that is too large, strict
constexpr double kFauteRelative = 1.0 / 1000;  // of the extent of the final points, likewise and besides
constexpr double kNet = 5.0;                   // times better without a pair
constexpr std::size_t kCouplesEssayes = 20;    // those with the largest residuals
constexpr double kPerteDite = 1e-4;            // drawing units, from which the loss of digits is told
constexpr double kPerteDouteuse = 0.01;        // and doubted

/// A similarity on centred coordinates.
class Ajustement {
public:
  Ajustement(const Points& depart, const Points& arrivee)
      : m_depart(centreDes(depart)), m_arrivee(centreDes(arrivee)) {
    double s = 0.0;
    for (std::size_t i = 0; i < depart.size(); ++i) {
      const AcGeVector2d d = depart[i] - m_depart;
      const AcGeVector2d f = arrivee[i] - m_arrivee;
      m_a += d.x * f.x + d.y * f.y;
      m_b += d.y * f.x - d.x * f.y;
      s += d.x * d.x + d.y * d.y;
    }
    m_a /= s;
    m_b /= s;
    for (std::size_t i = 0; i < depart.size(); ++i)
      m_pire = std::max(m_pire, porter(depart[i]).distanceTo(arrivee[i]));
  }
  [[nodiscard]] AcGePoint2d porter(const AcGePoint2d& p) const {
    const AcGeVector2d d = p - m_depart;
    return {m_arrivee.x + m_a * d.x + m_b * d.y, m_arrivee.y + m_a * d.y - m_b * d.x};
  }
  /// Largest residual.
  [[nodiscard]] double pire() const { return m_pire; }

private:
  AcGePoint2d m_depart;
  AcGePoint2d m_arrivee;
  double m_a = 0.0;
  double m_b = 0.0;
  double m_pire = 0.0;
};

double etendue(const Points& points) {
  const AcGePoint2d centre = centreDes(points);
  double rayon = 0.0;
  for (const AcGePoint2d& p : points) rayon = std::max(rayon, p.distanceTo(centre));
  return 2.0 * rayon;
}

Points echanger(Points points) {
  for (AcGePoint2d& p : points) std::swap(p.x, p.y);
  return points;
}

bool mauvais(double pire, double taille) { return pire > kFaute && pire > kFauteRelative * taille; }

/// Pairs by residual, the largest first.
std::vector<std::size_t> parResidu(const couplesHelmert& couples, const Ajustement& tous) {
  std::vector<double> residus;
  for (std::size_t i = 0; i < couples.depart.size(); ++i)
    residus.push_back(tous.porter(couples.depart[i]).distanceTo(couples.arrivee[i]));
  std::vector<std::size_t> rangs(residus.size());
  std::iota(rangs.begin(), rangs.end(), std::size_t{0});
  std::stable_sort(rangs.begin(), rangs.end(), [&](auto a, auto b) { return residus[a] > residus[b]; });
  if (rangs.size() > kCouplesEssayes) rangs.resize(kCouplesEssayes);
  return rangs;
}

couplesHelmert sans(couplesHelmert couples, std::size_t i) {
  couples.depart.erase(couples.depart.begin() + static_cast<std::ptrdiff_t>(i));
  couples.arrivee.erase(couples.arrivee.begin() + static_cast<std::ptrdiff_t>(i));
  return couples;
}

/// Tells the pair without which the others fit many times better. @return false when there is none
bool douterUnCouple(const couplesNommes& lus, const Ajustement& tous, base::Remarques& remarques) {
  const couplesHelmert& couples = lus.couples;
  if (couples.depart.size() < 4) return false;
  double meilleur = tous.pire();
  std::size_t fautif = 0;
  for (const std::size_t i : parResidu(couples, tous)) {
    const couplesHelmert autres = sans(couples, i);
    const double pire = Ajustement(autres.depart, autres.arrivee).pire();
    if (!(pire < meilleur)) continue;
    meilleur = pire;
    fautif = i;
  }
  const couplesHelmert autres = sans(couples, fautif);
  const Ajustement reste(autres.depart, autres.arrivee);
  const double ecart = reste.porter(couples.depart[fautif]).distanceTo(couples.arrivee[fautif]);
  if (!(ecart > kFaute) || !(kNet * meilleur < ecart) || !(meilleur < tous.pire())) return false;
  std::wstring texte = base::formater(
      L"le couple %s s'écarte de %.3f de ce que donnent les autres, qui s'accordent à %.3f près",
      lus.noms[fautif], ecart, meilleur);
  const double proche = std::max(kFaute, kNet * meilleur);
  const AcGePoint2d& d = couples.depart[fautif];
  const AcGePoint2d& f = couples.arrivee[fautif];
  if (reste.porter({d.y, d.x}).distanceTo(f) < proche) texte += L" ; X et Y de son départ semblent échangés";
  if (reste.porter(d).distanceTo({f.y, f.x}) < proche) texte += L" ; X et Y de son arrivée semblent échangés";
  remarques.douter(texte);
  return true;
}

bool douterSymetrie(const couplesHelmert& couples, double taille, base::Remarques& remarques) {
  const Ajustement miroir(echanger(couples.depart), couples.arrivee);
  if (mauvais(miroir.pire(), taille)) return false;
  remarques.douter(
      base::formater(L"un des deux systèmes est l'image de l'autre dans un miroir : avec X et Y échangés "
                     L"d'un côté, tout s'accorde à %.3f près",
                     miroir.pire()));
  return true;
}

void direPerte(const couplesHelmert& couples, const Points& portes, const Ajustement& tous,
               base::Remarques& remarques) {
  double perte = 0.0;
  double loin = 0.0;
  for (std::size_t i = 0; i < portes.size(); ++i) {
    perte = std::max(perte, portes[i].distanceTo(tous.porter(couples.depart[i])));
    loin = std::max(loin, couples.depart[i].distanceTo({0.0, 0.0}));
  }
  if (!(perte > kPerteDite)) return;
  const std::wstring texte = base::formater(
      L"les points de départ sont loin de l'origine (%.0f), ce qui coûte jusqu'à %.4f au calcul, fait sur "
      L"les coordonnées entières ; retranchez-leur une constante ronde",
      loin, perte);
  if (perte > kPerteDouteuse)
    remarques.douter(texte);
  else
    remarques.ajouter(texte);
}

}  // namespace

void controlerCouples(const couplesNommes& lus, const Points& portes, base::Remarques& remarques) {
  const couplesHelmert& couples = lus.couples;
  const Ajustement tous(couples.depart, couples.arrivee);
  direPerte(couples, portes, tous, remarques);
  const double taille = etendue(couples.arrivee);
  if (douterUnCouple(lus, tous, remarques)) return;
  if (!mauvais(tous.pire(), taille) || douterSymetrie(couples, taille, remarques)) return;
  remarques.douter(base::formater(L"les couples s'accordent mal : écart de %.3f pour une étendue de %.0f",
                                  tous.pire(), taille));
}

AcGeVector2d translationOrigine(const Points& depart, const resultatHelmert& r) {
  const AcGePoint2d origine = porterPoint({0.0, 0.0}, r, centreDes(depart));
  return {origine.x, origine.y};
}

AcGePoint2d porterPoint(const AcGePoint2d& point, const resultatHelmert& r, const AcGePoint2d& centre) {
  const AcGeVector2d d = point - centre;
  return {r.ab.x * d.x + r.ab.y * d.y + r.deplacement.x + centre.x,
          r.ab.x * d.y - r.ab.y * d.x + r.deplacement.y + centre.y};
}

}  // namespace veltora
