#include "calc/network/fichier_mc.h"

#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/obs_jetons.h"
#include "core/nombre_suspect.h"
#include "core/valider_nombre.h"

#include <algorithm>
#include <unordered_map>

namespace veltora {
namespace {

constexpr std::size_t kJetonsPoint = 4;
constexpr std::size_t kJetonsObservation = 9;

class lecteurMc {
public:
  explicit lecteurMc(reseauMoindresCarres& reseau) : m_reseau(reseau) {}
  void lire(const base::LineReader& lignes);
  [[nodiscard]] const base::Remarques& remarques() const { return m_remarques; }
  [[nodiscard]] lignesMc& lignes() { return m_lignes; }

private:
  enum class Section { kPoints, kObservations };
  using Jetons = std::vector<std::wstring>;
  void lireUnite(const Jetons& jetons);
  void lirePoint(const Jetons& jetons, const std::wstring& ligne);
  /// Tells why nothing was taken from the line of a known point.
  void omettrePoint(const Jetons& jetons, const std::wstring& ligne);
  void douterMilliers(const std::wstring& mots);
  void lireObservation(const Jetons& jetons, const std::wstring& ligne);
  void ajouter(signed char type, double mesure, double poids, int station, int reference, int vise);
  int indexDe(const std::wstring& nom);
  /// Number of an optional token; Z_ABSENT when it is missing or none, "." is the usual sign for that.
  double nombre(const Jetons& jetons, std::size_t i);
  /// Tells the tokens behind those that a line may hold.
  void remarquerSurplus(const Jetons& jetons, std::size_t permis);
  /// On the line in progress. @param format  with one "%s" for the text
  void remarquer(const wchar_t* format, const std::wstring& texte);
  void omettre(const std::wstring& ligne) { m_remarques.omettre(m_numero, L"ignorée, « " + ligne + L" »"); }

  reseauMoindresCarres& m_reseau;
  base::Remarques m_remarques;
  lignesMc m_lignes;
  std::unordered_map<std::wstring, int> m_index;
  Section m_section = Section::kPoints;
  int m_modeAngle = 0;
  int m_numero = 0;
};

void lecteurMc::remarquer(const wchar_t* format, const std::wstring& texte) {
  m_remarques.ajouter(m_numero, base::formater(format, texte));
}

void lecteurMc::remarquerSurplus(const Jetons& jetons, std::size_t permis) {
  for (std::size_t i = permis; i < jetons.size(); ++i) remarquer(L"« %s » est en trop, ignoré", jetons[i]);
}

double lecteurMc::nombre(const Jetons& jetons, std::size_t i) {
  if (i >= jetons.size()) return base::Z_ABSENT;
  if (validerNombre(jetons[i])) return base::lireReel(jetons[i]);
  if (const std::wstring raison = raisonNombre(jetons[i]); !raison.empty())
    m_remarques.douter(m_numero, L"« " + jetons[i] + L" » n'est pas un nombre, lu comme absent : " + raison);
  else if (jetons[i] != L".")
    remarquer(L"« %s » n'est pas un nombre, lu comme absent", jetons[i]);
  return base::Z_ABSENT;
}

void lecteurMc::lire(const base::LineReader& lignes) {
  m_numero = lignes.number();
  if (const auto coupe = lignes.cut()) m_remarques.ajouter(*coupe);
  const std::wstring ligne = base::toUpper(base::trimLeft(lignes.wide()));
  if (ligne.empty() || ligne.front() == L'*') return;
  const Jetons jetons = decouperLigneObs(ligne);
  if (jetons.empty()) return;
  if (jetons[0] == L"XYZ") {
    m_section = Section::kPoints;
  } else if (jetons[0] == L"OBS") {
    m_section = Section::kObservations;
  } else if (jetons[0] == L"ANGLES") {
    lireUnite(jetons);
  } else if (m_section == Section::kPoints) {
    lirePoint(jetons, ligne);
  } else {
    lireObservation(jetons, ligne);
  }
}

void lecteurMc::lireUnite(const Jetons& jetons) {
  if (jetons.size() < 2) return;
  for (int mode = 0; mode < 3; ++mode) {
    if (jetons[1] == base::toUpper(uniteDeMode(mode).motCle)) {
      m_modeAngle = mode;
      return;
    }
  }
  remarquer(L"unité d'angle inconnue « %s », l'unité reste inchangée", jetons[1]);
}

void lecteurMc::omettrePoint(const Jetons& jetons, const std::wstring& ligne) {
  for (std::size_t i = 1; i < std::min<std::size_t>(jetons.size(), 3); ++i) {
    const std::wstring raison = raisonNombre(jetons[i]);
    if (raison.empty()) continue;
    m_remarques.douter(m_numero, L"ignorée, « " + ligne + L" » : « " + jetons[i] + L" », " + raison);
    return;
  }
  omettre(ligne);
}

void lecteurMc::douterMilliers(const std::wstring& mots) {
  m_remarques.douter(m_numero, L"« " + mots + L" » : sans doute des " + kRaisonMilliers);
}

void lecteurMc::lirePoint(const Jetons& jetons, const std::wstring& ligne) {
  if (jetons.size() < 3 || !validerNombre(jetons[1]) || !validerNombre(jetons[2])) {
    omettrePoint(jetons, ligne);
    return;
  }
  if (milliersSepares(jetons, kJetonsPoint)) douterMilliers(jetons[1] + L" " + jetons[2]);
  pointACalculer point;
  point.nom = jetons[0];
  point.X = base::lireReel(jetons[1]);
  point.Y = base::lireReel(jetons[2]);
  point.Z = nombre(jetons, 3);
  point.planiConnue = true;
  point.altiConnue = point.Z != base::Z_ABSENT;
  remarquerSurplus(jetons, kJetonsPoint);
  if (point.nom == L"NORD")
    remarquer(L"« %s » désigne le nord, aucune observation ne peut nommer ce point", point.nom);
  const auto [entree, nouveau] = m_index.try_emplace(base::toLower(point.nom), m_reseau.points.GetSize());
  if (!nouveau) remarquer(L"le point « %s » figure déjà plus haut, c'est ce premier qui sert", point.nom);
  m_reseau.points.Add(point);
  m_lignes.points.push_back(m_numero);
}

int lecteurMc::indexDe(const std::wstring& nom) {
  if (nom == L"NORD") return -1;
  const std::wstring propre = base::toUpper(base::trim(nom));
  const auto [entree, nouveau] = m_index.try_emplace(base::toLower(nom), m_reseau.points.GetSize());
  if (nouveau) {
    pointACalculer point;
    point.nom = propre;
    m_reseau.points.Add(point);
    m_lignes.points.push_back(0);
    m_index.try_emplace(base::toLower(propre), entree->second);
  }
  return entree->second;
}

void lecteurMc::ajouter(signed char type, double mesure, double poids, int station, int reference, int vise) {
  ObservationReduite o;
  o.type = type;
  o.mesure = mesure;
  o.poids = poids;
  o.station = station;
  o.reference = reference;
  o.vise = vise;
  m_reseau.observations.Add(o);
  m_lignes.observations.push_back(m_numero);
}

void lecteurMc::lireObservation(const Jetons& jetons, const std::wstring& ligne) {
  if (jetons.size() < 4) {
    omettre(ligne);
    return;
  }
  // The order in which new names become points: reference, station, target.
  const int reference = indexDe(jetons[1]);
  const int station = indexDe(jetons[0]);
  const int vise = indexDe(jetons[2]);
  if (station == -1 || vise == -1)
    remarquer(L"« NORD » n'a pas de sens comme station ou point visé, « %s »", ligne);
  remarquerSurplus(jetons, kJetonsObservation);
  const double angle = nombre(jetons, 3);
  const double distance = nombre(jetons, 4);
  const double denivelee = nombre(jetons, 5);
  // A length in two words: the second one stands where the height difference does.
  if (denivelee != base::Z_ABSENT && denivelee > distance && milliersSepares(jetons[4], jetons[5]))
    douterMilliers(jetons[4] + L" " + jetons[5]);
  const double facteur = uniteDeMode(m_modeAngle).versRadians;
  if (angle != base::Z_ABSENT) {
    ++m_reseau.anglesParUnite.at(static_cast<std::size_t>(m_modeAngle));
    ajouter(ObservationReduite::kAngle, angle * facteur, nombre(jetons, 6), station, reference, vise);
  }
  if (distance != base::Z_ABSENT) {
    ajouter(ObservationReduite::kDistance, distance, nombre(jetons, 7), station, -1, vise);
  }
  if (denivelee != base::Z_ABSENT) {
    ajouter(ObservationReduite::kDenivelee, denivelee, nombre(jetons, 8), station, -1, vise);
  }
}

}  // namespace

bool lireMc(std::string_view octets, reseauMoindresCarres& reseau, base::Remarques* remarques,
            lignesMc* lignes) {
  reseau.points.RemoveAll();
  reseau.observations.RemoveAll();
  reseau.utilisable.RemoveAll();
  reseau.equivalentes.clear();
  reseau.anglesParUnite = {};
  lecteurMc lecteur(reseau);
  base::LineReader lecture(octets, kLongueurLigneObs);
  while (lecture.next()) lecteur.lire(lecture);
  if (lignes) *lignes = std::move(lecteur.lignes());
  if (remarques) remarques->ajouter(lecteur.remarques());
  return !reseau.points.empty() && !reseau.observations.empty();
}

}  // namespace veltora
