#include "terrain/fabrication.h"

#include "base/box_index.h"
#include "base/format.h"
#include "base/numbers.h"
#include "terrain/doutes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace veltora::terrain {
namespace {

constexpr double kMemeAltitude = 1e-3;  ///< two altitudes that differ by no more are one; drawing units

/// Vertices by their place: of several at one place the first.
class Lieux {
public:
  explicit Lieux(std::vector<AcGePoint3d>& sommets) : m_sommets(sommets) {}
  /// The number of the vertex at this place, a new one where there is none.
  int numero(const AcGePoint3d& p) {
    for (const double dx : {-kMemeLieu, kMemeLieu})
      for (const double dy : {-kMemeLieu, kMemeLieu})
        if (const auto liste = m_cases.find(cle(p.x + dx, p.y + dy)); liste != m_cases.end())
          for (const int rang : liste->second) {
            const AcGePoint3d& s = m_sommets[static_cast<std::size_t>(rang)];
            if (std::hypot(s.x - p.x, s.y - p.y) <= kMemeLieu) return rang;
          }
    m_cases[cle(p.x, p.y)].push_back(static_cast<int>(m_sommets.size()));
    m_sommets.push_back(p);
    return static_cast<int>(m_sommets.size()) - 1;
  }

private:
  static std::uint64_t cle(double x, double y) {
    constexpr double kCase = 0.01;
    const auto ix = static_cast<std::int64_t>(std::floor(x / kCase));
    const auto iy = static_cast<std::int64_t>(std::floor(y / kCase));
    return static_cast<std::uint64_t>(ix) * 0x9E3779B97F4A7C15U ^ static_cast<std::uint64_t>(iy);
  }
  std::vector<AcGePoint3d>& m_sommets;
  std::unordered_map<std::uint64_t, std::vector<int>> m_cases;
};

class Fabrique {
public:
  Fabrique(const Sources& sources, base::Remarques& remarques)
      : m_sources(sources), m_remarques(remarques), m_lieux(m_modele.sommets) {}

  std::unique_ptr<Terrain> faire(const std::wstring& nom, std::wstring& erreur) {
    m_modele.nom = nom;
    m_modele.areteMaximale = m_sources.areteMaximale;
    rassembler();
    erreur = refus();
    if (!erreur.empty()) return nullptr;
    for (const std::vector<AcGePoint3d>& limite : m_sources.limites) limiter(limite);
    auto terrain = std::make_unique<Terrain>(std::move(m_modele));
    signalerPointsSurLignes(*terrain);
    signalerCroisements(*terrain);
    const std::vector<Face>& faces = terrain->surface().faces();
    if (std::any_of(faces.begin(), faces.end(), [](const Face& face) { return face.sol; })) return terrain;
    erreur = L"la limite ou la plus longue arête ne laisse aucune face";
    return nullptr;
  }

private:
  static bool altitudesNulles(const std::vector<AcGePoint3d>& ligne) {
    return std::all_of(ligne.begin(), ligne.end(), [](const AcGePoint3d& s) { return s.z == 0.0; });
  }
  void rassembler() {
    if (m_sources.facettes.empty()) {
      for (const AcGePoint3d& point : m_sources.points) entrer(point);
      for (const std::vector<AcGePoint3d>& ligne : m_sources.lignes) tracer(ligne, false);
      for (const std::vector<AcGePoint3d>& limite : m_sources.limites)
        if (!altitudesNulles(limite)) tracer(limite, true);
    } else {
      for (const std::array<AcGePoint3d, 3>& facette : m_sources.facettes) reprendre(facette);
    }
    const auto dire = [this](const wchar_t* texte, int nombre) {
      if (nombre > 0) m_remarques.douter(base::formater(texte, nombre));
    };
    dire(L"points sans altitude, laissés de côté : %d", m_sansAltitude);
    dire(L"points dont une coordonnée n'a pas de sens, laissés de côté : %d", m_insenses);
    if (m_doubles > 0)
      m_remarques.ajouter(base::formater(L"points au même lieu, le premier gardé : %d", m_doubles));
    dire(L"points au même lieu dont les altitudes diffèrent : %d", m_contraires);
    m_remarques.citer(m_lieuxContraires);
    if (m_verticales > 0)
      m_remarques.ajouter(base::formater(L"faces sans surface en plan, laissées de côté : %d", m_verticales));
    douterDesPoints(m_modele.sommets, reperes(), m_remarques);
  }
  /// Of the vertices: those of the points while none of these was left out.
  [[nodiscard]] std::vector<std::wstring> reperes() const {
    std::vector<std::wstring> noms;
    for (const int rang : m_origines)
      noms.push_back(rang < static_cast<int>(m_sources.reperes.size())
                         ? m_sources.reperes[static_cast<std::size_t>(rang)]
                         : std::wstring());
    return noms;
  }
  /// @return the number of the vertex, -1 for a point that is left out
  int entrer(const AcGePoint3d& point, bool enLigne = false) {
    const int origine = enLigne ? 0x7FFFFFFF : m_entres++;
    if (point.z == base::Z_ABSENT) return ++m_sansAltitude, -1;
    if (!estPlacable(point)) return ++m_insenses, -1;
    const std::size_t avant = m_modele.sommets.size();
    const int numero = m_lieux.numero(point);
    if (m_modele.sommets.size() > avant) return m_origines.push_back(origine), numero;
    const AcGePoint3d& garde = m_modele.sommets[static_cast<std::size_t>(numero)];
    const bool contraire = std::abs(garde.z - point.z) > kMemeAltitude;
    if (!enLigne || contraire) ++m_doubles;
    if (contraire) {
      ++m_contraires;
      m_lieuxContraires.douter(
          base::formater(L"deux altitudes en %s : %.3f gardée, %.3f laissée", lieu(point), garde.z, point.z));
    }
    return numero;
  }
  void tracer(const std::vector<AcGePoint3d>& ligne, bool fermee) {
    int premier = -1;
    int avant = -1;
    for (const AcGePoint3d& sommet : ligne) {
      const int numero = entrer(sommet, true);
      relier(avant, numero);
      avant = numero;
      if (premier < 0) premier = numero;
    }
    if (fermee) relier(avant, premier);
  }
  void relier(int de, int a) {
    if (de >= 0 && a >= 0 && de != a) m_modele.lignes.emplace_back(de, a);
  }
  void reprendre(const std::array<AcGePoint3d, 3>& facette) {
    std::array<int, 3> numeros{};
    for (std::size_t i = 0; i < 3; ++i) numeros[i] = entrer(facette[i], true);
    if (numeros[0] < 0 || numeros[1] < 0 || numeros[2] < 0) return;
    std::vector<AcGePoint3d> coins;
    for (const int numero : numeros) coins.push_back(m_modele.sommets[static_cast<std::size_t>(numero)]);
    if (Triangulation::alignes(coins))
      ++m_verticales;
    else
      m_modele.facettes.push_back(numeros);
  }
  [[nodiscard]] std::wstring refus() const {
    if (!m_sources.facettes.empty() && m_modele.facettes.empty())
      return L"aucune face n'a de surface en plan";
    if (m_modele.sommets.size() < 3)
      return base::formater(L"il faut au moins trois points qui ont une altitude (%d)",
                            static_cast<int>(m_modele.sommets.size()));
    if (Triangulation::alignes(m_modele.sommets)) return L"tous les points sont alignés";
    return {};
  }
  /// Where an outline without altitudes crosses the ground it becomes a line on it.
  void limiter(const std::vector<AcGePoint3d>& limite) {
    std::vector<AcGePoint2d> contour;
    for (const AcGePoint3d& s : limite) contour.emplace_back(s.x, s.y);
    if (altitudesNulles(limite)) {
      if (!m_sansLimite) m_sansLimite = std::make_unique<Terrain>(modeleSansLimite());
      for (std::size_t i = 0; i < limite.size(); ++i)
        for (const std::vector<AcGePoint3d>& piece :
             m_sansLimite->surface().chemin(limite[i], limite[(i + 1) % limite.size()])) {
          int avant = -1;
          for (const AcGePoint3d& sommet : piece) {
            const int numero = m_lieux.numero(sommet);
            relier(avant, numero);
            avant = numero;
          }
        }
    }
    m_modele.limites.push_back(std::move(contour));
  }
  [[nodiscard]] Modele modeleSansLimite() const {
    Modele sans = m_modele;
    sans.limites.clear();
    sans.areteMaximale = 0.0;
    return sans;
  }
  void signalerPointsSurLignes(const Terrain& terrain) {
    const std::vector<AcGePoint3d>& sommets = terrain.surface().sommets();
    const auto sommet = [&sommets](int numero) { return sommets[static_cast<std::size_t>(numero)]; };
    base::Remarques trouvees;
    for (const Triangulation::SurLigne& pris : terrain.surface().surLignes()) {
      const AcGePoint3d s = sommet(pris.sommet);
      const double z = sommet(pris.de).z + (sommet(pris.a).z - sommet(pris.de).z) * pris.part;
      if (std::abs(s.z - z) > kMemeAltitude)
        trouvees.douter(base::formater(
            L"point en %s sur une ligne d'une autre altitude : %.3f gardée, %.3f laissée", lieu(s), s.z, z));
    }
    m_remarques.citer(trouvees);
  }
  /// Every line through the place where lines cross, with its altitude there.
  void signalerCroisements(const Terrain& terrain) {
    const Modele& modele = terrain.modele();
    const std::vector<AcGePoint3d>& sommets = terrain.surface().sommets();
    if (sommets.size() == modele.sommets.size()) return;
    const std::vector<std::pair<int, int>> lignes = toutesLesLignes(modele);
    const auto bouts = [&](std::size_t rang) {
      const auto& [de, a] = lignes[rang];
      return std::pair(sommets[static_cast<std::size_t>(de)], sommets[static_cast<std::size_t>(a)]);
    };
    std::vector<base::PlaneBox> boites;
    for (std::size_t rang = 0; rang < lignes.size(); ++rang) {
      const auto [p, q] = bouts(rang);
      boites.push_back({p.x, p.y, q.x, q.y});
    }
    base::BoxIndex index(boites);
    base::Remarques trouvees;
    constexpr double kM = Triangulation::kSurLaLigne;
    for (std::size_t i = modele.sommets.size(); i < sommets.size(); ++i) {
      const AcGePoint3d& c = sommets[i];
      double bas = 1e300;
      double haut = -1e300;
      for (const std::size_t rang : index.touching({c.x - kM, c.y - kM, c.x + kM, c.y + kM})) {
        const auto [p, q] = bouts(rang);
        const AcGeVector2d sens(q.x - p.x, q.y - p.y);
        const AcGeVector2d vers(c.x - p.x, c.y - p.y);
        if (std::abs(sens.crossProduct(vers)) > kM * sens.length()) continue;
        const double z = p.z + (q.z - p.z) * sens.dotProduct(vers) / sens.lengthSqrd();
        bas = std::min(bas, z);
        haut = std::max(haut, z);
      }
      if (haut - bas > kMemeAltitude)
        trouvees.douter(
            base::formater(L"lignes qui se croisent en %s à deux altitudes : %.3f et %.3f, leur "
                           L"moyenne prise",
                           lieu(c), bas, haut));
    }
    m_remarques.citer(trouvees);
  }

  const Sources& m_sources;
  base::Remarques& m_remarques;
  Modele m_modele;
  Lieux m_lieux;
  std::unique_ptr<Terrain> m_sansLimite;  ///< the ground before any outline
  base::Remarques m_lieuxContraires;
  std::vector<int> m_origines;  ///< of the vertices, the point each comes from
  int m_entres = 0;
  int m_sansAltitude = 0;
  int m_insenses = 0;
  int m_doubles = 0;
  int m_contraires = 0;
  int m_verticales = 0;
};

}  // namespace

std::unique_ptr<Terrain> fabriquer(const std::wstring& nom, const Sources& sources,
                                   base::Remarques& remarques, std::wstring& erreur) {
  return Fabrique(sources, remarques).faire(nom, erreur);
}

}  // namespace veltora::terrain
