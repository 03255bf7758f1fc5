#include "calc/adjustment/lecture_gkf.h"

#include "base/format.h"
#include "base/lines/decoded_text.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/xml_champs.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <sstream>
#include <stdexcept>

namespace veltora {
namespace {

constexpr double kSecondeCentesimale = kPi / 2e6;
constexpr double kSeconde = kPi / 648000.0;
constexpr double kMillimetre = 1e-3;
constexpr int kDimensionMax = 2000;
constexpr double kM0Habituel = 10.0;       // what the format takes without "sigma-apr"
constexpr int kLignesPermises = 5;         // remarks of one kind
constexpr double kLongueurInfime = 2e-5;   // metres: no survey measures that well
constexpr double kSecondesInfimes = 0.05;  // centesimal, of angles

/// An element by its name and the points that it names: the library tells no lines.
std::wstring nommer(const TiXmlElement& e) {
  std::wstring texte = L"<" + base::fromUtf8(e.ValueStr());
  for (const char* nom : {"id", "from", "bs", "to", "fs"})
    if (const char* valeur = e.Attribute(nom))
      texte += L" " + base::fromUtf8(nom) + L"=\"" + base::fromUtf8(valeur) + L"\"";
  return texte + L">";
}

struct refusGkf : std::runtime_error {
  refusGkf(const TiXmlElement& e, const std::wstring& raison)
      : std::runtime_error("gkf"), texte(nommer(e) + L" : " + raison) {}
  std::wstring texte;
};

std::wstring attribut(const TiXmlElement& e, const char* nom) {
  const char* const valeur = e.Attribute(nom);
  return valeur ? base::trim(base::fromUtf8(valeur)) : std::wstring();
}

double nombre(const TiXmlElement& e, const char* nom) {
  double valeur = 0.0;
  const std::wstring texte = attribut(e, nom);
  if (!base::lireReelExact(base::toUtf8(texte), valeur) || !std::isfinite(valeur))
    throw refusGkf(e, L"« " + base::fromUtf8(nom) + L"=\"" + texte + L"\" » n'est pas un nombre");
  return valeur;
}

class lecteurGkf {
public:
  lecteurGkf(reseauPondere& reseau, base::Remarques& remarques) : m_reseau(reseau), m_remarques(remarques) {}

  void lire(const TiXmlElement& racine) {
    const TiXmlElement* const reseau = racine.FirstChildElement("network");
    if (!reseau) throw refusGkf(racine, L"élément <network> absent");
    lireAxes(*reseau);
    m_reseau.m0Apriori = kM0Habituel;
    if (const TiXmlElement* p = reseau->FirstChildElement("parameters"); p && p->Attribute("sigma-apr"))
      m_reseau.m0Apriori = positif(*p, "sigma-apr");
    for (const TiXmlElement* e = reseau->FirstChildElement("points-observations"); e;
         e = e->NextSiblingElement("points-observations"))
      lireContenu(*e);
  }

private:
  void lireAxes(const TiXmlElement& reseau) {
    std::wstring axes = attribut(reseau, "axes-xy");
    if (axes.empty()) axes = L"ne";
    const bool bons =
        axes.size() == 2 && std::wstring(L"nsew").find(axes[0]) != std::wstring::npos &&
        std::wstring(axes[0] == L'n' || axes[0] == L's' ? L"ew" : L"ns").find(axes[1]) != std::wstring::npos;
    if (!bons) throw refusGkf(reseau, L"axes-xy=\"" + axes + L"\" n'est pas compris");
    for (std::size_t i = 0; i < 2; ++i) {
      m_axe.at(i) = axes[i] == L'e' || axes[i] == L'w' ? 0 : 1;
      m_signe.at(i) = axes[i] == L'e' || axes[i] == L'n' ? 1.0 : -1.0;
    }
    m_sens = attribut(reseau, "angles") == L"right-handed" ? -1.0 : 1.0;
    if (axes != L"en") m_remarques.ajouter(L"axes « " + axes + L" » ramenés à X est, Y nord");
  }

  double positif(const TiXmlElement& e, const char* nom) {
    const double valeur = nombre(e, nom);
    if (!(valeur > 0.0)) throw refusGkf(e, L"« " + base::fromUtf8(nom) + L" » doit être positif");
    return valeur;
  }

  void lireContenu(const TiXmlElement& contenu) {
    for (std::size_t i = 0; i < kDefauts.size(); ++i) m_defauts.at(i) = attribut(contenu, kDefauts.at(i));
    for (const TiXmlElement* e = contenu.FirstChildElement(); e; e = e->NextSiblingElement())
      if (e->ValueStr() == "point") lirePoint(*e);
    for (const TiXmlElement* e = contenu.FirstChildElement(); e; e = e->NextSiblingElement()) {
      const std::string& nom = e->ValueStr();
      if (nom == "obs" || nom == "height-differences" || nom == "coordinates")
        lireGroupe(*e);
      else if (nom != "point")
        omettre(*e);
    }
  }

  void omettre(const TiXmlElement& e) {
    if (++m_omis <= kLignesPermises) m_remarques.douter(nommer(e) + L" n'est pas lu, laissé de côté");
  }

  int indexDe(const TiXmlElement& e, const char* cle) {
    const std::wstring nom = attribut(e, cle);
    if (nom.empty()) throw refusGkf(e, L"attribut « " + base::fromUtf8(cle) + L" » absent");
    return m_reseau.indexDe(nom);
  }

  void lirePoint(const TiXmlElement& e) {
    pointPondere& p = m_reseau.point(indexDe(e, "id"));
    const std::array<double, 3> avant = p.donnee;
    for (std::size_t i = 0; i < 3; ++i) {
      const char nom[2] = {"xyz"[i], '\0'};
      if (!e.Attribute(nom)) continue;
      const std::size_t axe = i == 2 ? 2 : m_axe.at(i);
      p.c.at(axe) = p.donnee.at(axe) = nombre(e, nom) * (i == 2 ? 1.0 : m_signe.at(i));
    }
    if (const std::wstring texte = texteDoublon(p.nom, avant, p.donnee); !texte.empty())
      m_remarques.douter(texte + L" ; les dernières servent");
    const std::wstring fixe = attribut(e, "fix");
    const std::wstring libre = attribut(e, "adj");
    for (std::size_t axe = 0; axe < 3; ++axe) {
      const wchar_t lettre = axe == 2 ? L'z' : L'x';
      const auto a = [&](const std::wstring& t, bool capitale) {
        return t.find(capitale ? static_cast<wchar_t>(lettre - 32) : lettre) != std::wstring::npos;
      };
      if (p.c.at(axe) == base::Z_ABSENT) continue;
      p.statut.at(axe) = a(fixe, false) || a(fixe, true) ? statutCoordonnee::fixe
                         : a(libre, true)                ? statutCoordonnee::libre
                                                         : statutCoordonnee::approche;
    }
  }

  /// Deviations that no instrument has are in another unit.
  void douterEcart(const mesurePonderee& m, const TiXmlElement& e) {
    if (!(m.ecart > 0.0) || ++m_ecartsDoutes > kLignesPermises) return;
    if (estAngulaire(m.genre) ? m.ecart < kSecondesInfimes * kSecondeCentesimale : m.ecart < kLongueurInfime)
      m_remarques.douter(nommer(e) +
                         (estAngulaire(m.genre)
                              ? L" : écart-type infime, il se donne en secondes (centésimales des grades)"
                              : L" : écart-type infime, il se donne en millimètres, sans doute des mètres"));
    else if (!estAngulaire(m.genre) && m.ecart > kEcartDemesure)
      m_remarques.douter(nommer(e) + L" : écart-type démesuré, il se donne en millimètres");
    else
      --m_ecartsDoutes;
  }

  /// The measures of one element, with its covariances.
  void lireGroupe(const TiXmlElement& groupe) {
    std::vector<int> places;  // of the measures; -1 for those that are not read
    int tour = -1;
    for (const TiXmlElement* e = groupe.FirstChildElement(); e; e = e->NextSiblingElement()) {
      const std::string& nom = e->ValueStr();
      if (nom == "cov-mat")
        lireCovariances(*e, places);
      else if (groupe.ValueStr() == "coordinates")
        lireCoordonnees(*e, places);
      else
        lireMesure(groupe, *e, tour, places);
    }
  }

  void lireCoordonnees(const TiXmlElement& e, std::vector<int>& places) {
    const int point = indexDe(e, "id");
    for (std::size_t i = 0; i < 3; ++i) {
      const char nom[2] = {"xyz"[i], '\0'};
      if (!e.Attribute(nom)) continue;
      const std::size_t axe = i == 2 ? 2 : m_axe.at(i);
      mesurePonderee m;
      m.genre = static_cast<genreMesure>(static_cast<std::size_t>(genreMesure::X) + axe);
      m.station = point;
      m.valeur = nombre(e, nom) * (i == 2 ? 1.0 : m_signe.at(i));
      ranger(m, kMillimetre * (i == 2 ? 1.0 : m_signe.at(i)), places);
    }
  }

  void ranger(const mesurePonderee& m, double unite, std::vector<int>& places) {
    places.push_back(static_cast<int>(m_reseau.mesures.size()));
    m_reseau.mesures.push_back(m);
    m_unites.resize(m_reseau.mesures.size(), 0.0);
    m_unites.back() = unite;
  }

  void lireMesure(const TiXmlElement& groupe, const TiXmlElement& e, int& tour, std::vector<int>& places) {
    static constexpr std::array<std::pair<const char*, genreMesure>, 5> kGenres = {
        {{"angle", genreMesure::angle},
         {"direction", genreMesure::direction},
         {"azimuth", genreMesure::gisement},
         {"distance", genreMesure::distance},
         {"dh", genreMesure::denivelee}}};
    const auto genre =
        std::find_if(kGenres.begin(), kGenres.end(), [&](const auto& g) { return e.ValueStr() == g.first; });
    if (genre == kGenres.end()) {
      omettre(e);
      places.push_back(-1);
      return;
    }
    mesurePonderee m;
    m.genre = genre->second;
    m.station = e.Attribute("from") ? indexDe(e, "from") : indexDe(groupe, "from");
    m.vise = indexDe(e, m.genre == genreMesure::angle ? "fs" : "to");
    if (m.genre == genreMesure::angle) m.reference = indexDe(e, "bs");
    if (m.station == m.vise || m.reference == m.vise || m.reference == m.station)
      throw refusGkf(e, L"visée d'un point sur lui-même");
    double unite = kMillimetre;
    m.valeur = lireValeur(m.genre, e, unite);
    if (m.genre == genreMesure::direction) {
      if (tour < 0) tour = m_reseau.ajouterTour(m.station);
      m.tour = tour;
    }
    if (m.genre == genreMesure::denivelee && e.Attribute("dist")) {
      m.longueur = 1000.0 * positif(e, "dist");
      if (longueurInvraisemblable(m))
        m_remarques.douter(nommer(e) +
                           base::formater(L" : longueur de %.15g km pour une dénivelée de %.3f m, "
                                          L"« dist » se donne en kilomètres",
                                          m.longueur / 1000.0, m.valeur));
    }
    m.ecart = ecart(m, e, std::abs(unite));
    douterEcart(m, e);
    ranger(m, unite, places);
  }

  /// @param unite  gets that of standard deviations, with the sign of the value
  double lireValeur(genreMesure genre, const TiXmlElement& e, double& unite) {
    if (!estAngulaire(genre)) {
      const double valeur = nombre(e, "val");
      if (genre == genreMesure::distance && !(valeur > 0.0)) throw refusGkf(e, L"distance nulle ou négative");
      return valeur;
    }
    const double sens = genre == genreMesure::gisement ? 1.0 : m_sens;
    const std::wstring texte = attribut(e, "val");
    const std::size_t tiret = texte.find(L'-', 1);
    unite = sens * (tiret == std::wstring::npos ? kSecondeCentesimale : kSeconde);
    if (tiret == std::wstring::npos) return sens * nombre(e, "val") * kPi / 200.0;
    const bool negatif = texte.front() == L'-';
    std::string morceaux = base::toUtf8(negatif ? texte.substr(1) : texte);
    std::replace(morceaux.begin(), morceaux.end(), '-', ' ');
    std::istringstream flot(morceaux);
    double valeur = 0.0;
    double part = 1.0;
    std::string mot;
    for (int i = 0; i < 3 && flot >> mot; ++i, part /= 60.0) {
      double x = 0.0;
      if (!base::lireReelExact(mot, x) || x < 0.0 || (i > 0 && x >= 60.0))
        throw refusGkf(e, L"« val=\"" + texte + L"\" » n'est pas un angle");
      valeur += x * part;
    }
    return sens * (negatif ? -valeur : valeur) * kPi / 180.0;
  }

  double ecart(const mesurePonderee& m, const TiXmlElement& e, double unite) {
    if (e.Attribute("stdev")) return positif(e, "stdev") * unite;
    if (m.genre == genreMesure::denivelee)
      return m.longueur == base::Z_ABSENT ? 0.0
                                          : m_reseau.m0Apriori * kMillimetre * std::sqrt(m.longueur / 1000.0);
    const std::wstring& defaut = m_defauts.at(static_cast<std::size_t>(m.genre));
    if (defaut.empty()) return 0.0;
    std::istringstream flot(base::toUtf8(defaut));
    double termes[3] = {0.0, 0.0, 1.0};
    for (double& t : termes) {
      std::string mot;
      if (flot >> mot && !base::lireReelExact(mot, t))
        throw refusGkf(e, L"écart-type par défaut illisible : " + defaut);
    }
    if (m.genre == genreMesure::distance) termes[0] += termes[1] * std::pow(m.valeur / 1000.0, termes[2]);
    if (!(termes[0] > 0.0)) throw refusGkf(e, L"écart-type par défaut nul ou négatif : " + defaut);
    return termes[0] * unite;
  }

  /// The upper band of the matrix, row by row.
  void lireCovariances(const TiXmlElement& e, const std::vector<int>& places) {
    const double dimension = nombre(e, "dim");
    const double bande = nombre(e, "band");
    const auto n = static_cast<Eigen::Index>(places.size());
    if (dimension != static_cast<double>(n) || bande < 0.0 || bande >= dimension ||
        bande != std::floor(bande) || n > kDimensionMax)
      throw refusGkf(e, base::formater(L"<cov-mat> de dimension %g et de bande %g pour %d mesures", dimension,
                                       bande, static_cast<int>(n)));
    Eigen::MatrixXd C = Eigen::MatrixXd::Zero(n, n);
    std::istringstream flot(e.GetText() ? e.GetText() : "");
    for (Eigen::Index i = 0; i < n; ++i) {
      for (Eigen::Index j = i; j < std::min(n, i + static_cast<Eigen::Index>(bande) + 1); ++j) {
        std::string mot;
        double x = 0.0;
        if (!(flot >> mot) || !base::lireReelExact(mot, x))
          throw refusGkf(e, L"<cov-mat> incomplète ou illisible");
        C(i, j) = C(j, i) = x;
      }
    }
    if (std::string mot; flot >> mot) throw refusGkf(e, L"<cov-mat> a des nombres en trop");
    const Eigen::LLT<Eigen::MatrixXd> racine(C);
    if (racine.info() != Eigen::Success || !(racine.matrixL().toDenseMatrix().diagonal().minCoeff() > 0.0))
      throw refusGkf(e, L"<cov-mat> n'est pas définie positive");
    garder(C, places);
  }

  void garder(const Eigen::MatrixXd& C, const std::vector<int>& places) {
    blocCovariance bloc;
    std::vector<Eigen::Index> lus;
    for (std::size_t i = 0; i < places.size(); ++i)
      if (places[i] >= 0) lus.push_back(static_cast<Eigen::Index>(i));
    for (const Eigen::Index i : lus) {
      const auto mesure = static_cast<std::size_t>(places[static_cast<std::size_t>(i)]);
      bloc.mesures.push_back(static_cast<int>(mesure));
      m_reseau.mesures[mesure].ecart = std::sqrt(C(i, i)) * std::abs(m_unites[mesure]);
      for (const Eigen::Index j : lus)
        bloc.C.push_back(C(i, j) * m_unites[mesure] *
                         m_unites[static_cast<std::size_t>(places[static_cast<std::size_t>(j)])]);
    }
    if (!lus.empty()) m_reseau.blocs.push_back(std::move(bloc));
  }

  // By the kind of the measure.
  static constexpr std::array<const char*, 4> kDefauts = {"angle-stdev", "direction-stdev", "azimuth-stdev",
                                                          "distance-stdev"};

  reseauPondere& m_reseau;
  base::Remarques& m_remarques;
  std::array<std::size_t, 2> m_axe{};
  std::array<double, 2> m_signe{};
  double m_sens = 1.0;
  std::array<std::wstring, 4> m_defauts;
  std::vector<double> m_unites;
  int m_omis = 0;
  int m_ecartsDoutes = 0;
};

/// A file in UTF-16 or in an 8-bit code as UTF-8, declared as such: the library takes no other's names.
std::string enUtf8(std::string_view octets) {
  const base::DecodedText decode(octets);
  std::string texte = decode.isUtf8() ? std::string(decode.bytes()) : base::toUtf8(decode.wide());
  if (const std::size_t fin = texte.find("?>"); texte.starts_with("<?xml") && fin != std::string::npos)
    texte.erase(0, fin + 2);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + texte;
}

}  // namespace

bool estGkf(std::string_view octets) {
  return base::DecodedText(octets).bytes().find("<gama-local") != std::string_view::npos;
}

std::wstring lireGkf(std::string_view octets, reseauPondere& reseau, base::Remarques& remarques) {
  const std::string texte = enUtf8(octets);
  if (texte.find("<!DOCTYPE") != std::string::npos || texte.find("<!ENTITY") != std::string::npos)
    return L"définitions d'entités (<!DOCTYPE ou <!ENTITY), refusées";
  TiXmlDocument document;
  if (!analyserXML(document, texte)) return L"XML mal formé";
  const TiXmlElement* const racine = document.RootElement();
  if (!racine || racine->ValueStr() != "gama-local") return L"ce n'est pas un réseau gama-local";
  try {
    lecteurGkf(reseau, remarques).lire(*racine);
  } catch (const refusGkf& refus) {
    return refus.texte;
  }
  if (reseau.points.empty()) return L"aucun point";
  return reseau.mesures.empty() ? L"aucune observation" : std::wstring();
}

}  // namespace veltora
