#include "points/exchange/table_obs_xyz.h"

#include "base/files.h"
#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/nombre_suspect.h"
#include "core/valider_nombre.h"
#include "points/comparer_numeros.h"
#include "points/exchange/lecture_liste.h"
#include "points/numeroteur.h"
#include "points/point_du_dessin.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <unordered_map>

namespace veltora {
namespace {

/// Lines from one step of the progress to the next.

/// @return true when the user stops
bool avancer(base::Suivi& suivi, std::size_t fait, std::size_t total) {
  if (!suivi.ouvert()) suivi.etendre(0, static_cast<long long>(total));
  suivi.aller(static_cast<long long>(fait));
  return suivi.arrete();
}
constexpr std::string_view kBlancs = " \t";
constexpr std::wstring_view kBordsNom = L" \t,;.";

/// A file name without what stands around it. The dots with which a relative path begins are part of it.
std::wstring nomPropre(std::wstring_view nom) {
  std::wstring propre = base::trim(nom, kBordsNom);
  const std::size_t debut = nom.find(propre);
  if (propre.empty() || propre[0] != L'/') return propre;
  for (std::size_t i = debut; i-- > 0 && nom[i] == L'.';) propre.insert(propre.begin(), L'.');
  return propre;
}

std::filesystem::path chemin(const std::wstring& nom) { return base::cheminDuTexte(nom); }

/// Takes the next word off a line; empty at its end.
std::string_view prendreMot(std::string_view& reste) {
  const std::size_t debut = reste.find_first_not_of(kBlancs);
  if (debut == std::string_view::npos) return reste = {};
  reste.remove_prefix(debut);
  const std::string_view mot = reste.substr(0, reste.find_first_of(kBlancs));
  reste.remove_prefix(mot.size());
  return mot;
}

bool lireCoordonnee(std::string_view mot, double& valeur) {
  if (!validerNombre(mot)) return false;
  valeur = base::lireReel(mot);
  return std::isfinite(valeur);
}

double lireAltitude(std::string_view mot) {
  if (mot.empty()) return Z_ABSENT;
  const double valeur = base::lireReel(mot);
  return std::isfinite(valeur) ? valeur : Z_ABSENT;
}

/// True when the fourth column of a line that is parted by tabs is blank, and something stands behind it.
bool colonneZVide(std::string_view ligne) {
  for (int colonne = 0; colonne < 3; ++colonne) {
    const std::size_t tabulation = ligne.find('\t');
    if (tabulation == std::string_view::npos) return false;
    ligne.remove_prefix(tabulation + 1);
  }
  const std::size_t tabulation = ligne.find('\t');
  return tabulation != std::string_view::npos && base::trim(ligne.substr(0, tabulation), " ").empty();
}

/// A remark on the line in progress, a doubt when one of these words looks like a number.
void remarquerMots(const base::LineReader& lignes, std::initializer_list<std::string_view> mots,
                   const std::wstring& phrase, bool omise, base::Remarques& remarques) {
  for (const std::string_view mot : mots) {
    const std::wstring raison = raisonNombre(lignes.wide(mot));
    if (raison.empty()) continue;
    remarques.douter(lignes.number(), phrase + L" : « " + lignes.wide(mot) + L" », " + raison);
    return;
  }
  if (omise)
    remarques.omettre(lignes.number(), phrase);
  else
    remarques.ajouter(lignes.number(), phrase);
}

void omettre(const base::LineReader& lignes, std::string_view x, std::string_view y,
             base::Remarques& remarques) {
  const wchar_t* phrase =
      y.empty() ? L"ignorée, il faut au moins un nom, X et Y" : L"ignorée, X ou Y n'est pas un nombre";
  remarquerMots(lignes, {x, y}, phrase, true, remarques);
}

void remarquerAltitude(const base::LineReader& lignes, std::string_view z, base::Remarques& remarques) {
  remarquerMots(lignes, {z}, L"l'altitude n'est pas un nombre, ses premiers chiffres comptent, sinon 0",
                false, remarques);
}

/// "652 318.42 6 862 104.87" in place of X and Y: the groups of Y have become altitude, code and observation.
bool xyEnMilliers(std::string_view x, std::string_view y, std::string_view z, std::string_view code,
                  std::string_view obs) {
  const auto separes = [](std::string_view tete, std::string_view suite) {
    return milliersSepares(base::widen(tete), base::widen(suite));
  };
  const std::string_view premier = obs.substr(0, obs.find(' '));
  return premier.find('.') != std::string_view::npos && separes(x, y) && separes(z, code) &&
         separes(code, premier);
}

/// Reads the line in progress, and tells what is wrong with it. @return false for one that is dropped
bool lireLigne(const base::LineReader& lignes, bool colonneZCompte, pointXYZ& point,
               base::Remarques& remarques) {
  std::string_view reste = lignes.line();
  const std::string_view nom = prendreMot(reste);
  const std::string_view x = prendreMot(reste);
  const std::string_view y = prendreMot(reste);
  if (y.empty() || !lireCoordonnee(x, point.x) || !lireCoordonnee(y, point.y)) {
    omettre(lignes, x, y, remarques);
    return false;
  }
  point.nom = lignes.wide(nom);
  const bool vide = colonneZVide(lignes.line());
  const std::string_view z = vide && colonneZCompte ? std::string_view() : prendreMot(reste);
  if (double lue = 0.0; !z.empty() && !base::lireReelExact(z, lue)) remarquerAltitude(lignes, z, remarques);
  if (vide && !colonneZCompte)
    remarques.ajouter(lignes.number(), L"colonne Z vide, le mot suivant est lu comme altitude");
  point.z = lireAltitude(z);
  const std::string_view code = prendreMot(reste);
  point.code = base::lireEntier(code);
  if (point.code == 0) point.code = 1;
  std::string obs;
  for (std::string_view mot = prendreMot(reste); !mot.empty(); mot = prendreMot(reste))
    obs.append(obs.empty() ? "" : " ").append(mot);
  point.obs = lignes.wide(obs);
  if (xyEnMilliers(x, y, z, code, obs))
    remarques.douter(lignes.number(), std::wstring(L"X et Y semblent écrits avec des ") + kRaisonMilliers);
  return true;
}

std::string texteLigne(const pointXYZ& ligne) {
  // Deliberate (xyz-altitude-en-clair): an absent altitude is written as the number it is kept as.
  std::string texte = base::formater("\n%10s\t%14.6f\t%14.6f\t%14.6f\t%6d", base::narrow(ligne.nom), ligne.x,
                                     ligne.y, ligne.z, ligne.code);
  return ligne.obs.empty() ? texte : texte + ' ' + base::narrow(ligne.obs);
}

template <class Valeur>
int comparer(Valeur a, Valeur b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

/// The order of two lines by a column, given by their indexes.
std::function<int(std::size_t, std::size_t)> ordreColonne(const std::vector<pointXYZ>& lignes, int colonne) {
  if (colonne == 0) {
    auto cles = std::make_shared<std::vector<cleNumero>>();
    cles->reserve(lignes.size());
    for (const pointXYZ& ligne : lignes) cles->emplace_back(ligne.nom);
    return [cles](std::size_t a, std::size_t b) { return comparerNumeros((*cles)[a], (*cles)[b]); };
  }
  return [&lignes, colonne](std::size_t i, std::size_t j) {
    const pointXYZ& a = lignes[i];
    const pointXYZ& b = lignes[j];
    switch (colonne) {
      case 1:
        return comparer(a.x, b.x);
      case 2:
        return comparer(a.y, b.y);
      case 3:
        return comparer(a.z, b.z);
      case 4:
        return comparer(a.code, b.code);
      case 5:
        return comparer(a.numeroInterne, b.numeroInterne);
      default:
        return 0;
    }
  };
}

}  // namespace

int tableObsXYZ::charger(const wchar_t* fichier, bool vider, base::Suivi* suivi) {
  const std::wstring nom = nomPropre(fichier ? fichier : nomFichier);
  if (nom.empty()) return 0;
  const std::optional<std::string> octets = base::lireFichier(chemin(nom));
  return octets ? lire(*octets, vider, suivi) : 0;
}

int tableObsXYZ::lire(std::string_view octets, bool vider, base::Suivi* suivi) {
  base::LineReader reader(octets, kLongueurLigne);
  std::vector<pointXYZ> lues;
  remarques = {};
  while (reader.next()) {
    if (suivi && reader.number() % kLignesParSuivi == 0 && avancer(*suivi, reader.position(), reader.size()))
      return 0;
    if (const auto coupe = reader.cut()) remarques.ajouter(*coupe);
    if (reader.line().find_first_not_of(kBlancs) == std::string_view::npos) continue;
    pointXYZ point;
    if (lireLigne(reader, colonneZCompte, point, remarques)) lues.push_back(std::move(point));
  }
  if (vider)
    lignes = std::move(lues);
  else
    lignes.insert(lignes.end(), std::make_move_iterator(lues.begin()), std::make_move_iterator(lues.end()));
  return 1;
}

int tableObsXYZ::sauver(const wchar_t* fichier, base::Suivi* suivi) const {
  std::wstring nom = nomPropre(fichier ? fichier : nomFichier);
  if (nom.empty()) return 0;
  if (!base::toLower(nom).ends_with(L".xyz")) nom += L".xyz";
  base::RemplacementFichier sortie{chemin(nom)};
  std::string octets;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    octets += texteLigne(lignes[i]);
    if ((i + 1) % kLignesParSuivi != 0) continue;
    if (suivi && avancer(*suivi, i + 1, lignes.size())) return 0;
    if (!sortie.ecrire(octets)) return 0;
    octets.clear();
  }
  return sortie.ecrire(octets) && sortie.terminer() ? 1 : 0;
}

std::string tableObsXYZ::contenu() const {
  std::string octets;
  octets.reserve(lignes.size() * 70);
  for (const pointXYZ& ligne : lignes) octets += texteLigne(ligne);
  return octets;
}

void tableObsXYZ::renumeroter(const AcString& prefixe, int depart, const AcString& suffixe) {
  for (std::size_t i = 0; i < lignes.size(); ++i) lignes[i].nom = nomNumerote(prefixe, depart, i, suffixe);
}

const pointXYZ* tableObsXYZ::chercher(long long numeroInterne) const {
  for (const pointXYZ& ligne : lignes)
    if (ligne.numeroInterne == numeroInterne) return &ligne;
  return nullptr;
}

std::function<int(long long, long long)> tableObsXYZ::comparateur(int colonne) const {
  const std::vector<int> rangs = rangsTries(lignes.size(), ordreColonne(lignes, colonne));
  auto rangDe = std::make_shared<std::unordered_map<long long, int>>();
  rangDe->reserve(lignes.size());
  for (std::size_t i = 0; i < lignes.size(); ++i) rangDe->emplace(lignes[i].numeroInterne, rangs[i]);
  return [rangDe](long long a, long long b) {
    const auto gauche = rangDe->find(a);
    const auto droite = rangDe->find(b);
    if (gauche == rangDe->end() || droite == rangDe->end()) return 0;
    return comparer(gauche->second, droite->second);
  };
}

}  // namespace veltora
