#include "jobs/genre_fichier.h"

#include "base/lines/decoded_text.h"
#include "base/lines/line_reader.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/obs_jetons.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace veltora {
namespace {

using Jetons = std::vector<std::wstring>;

/// How much of a file is looked at.
constexpr std::size_t kOctetsVus = 65536;
constexpr std::size_t kLignesVues = 500;
/// Lines among which a drawing begins its first section.
constexpr std::size_t kLignesEntete = 12;
/// Words of the line of a known station in a traverse, of a point with its code, and of a named pair.
constexpr std::size_t kJetonsPoint = 5;

struct DescriptionGenre {
  genreFichier genre;
  const wchar_t* nature;
  const wchar_t* lecteur;
};

constexpr const wchar_t* kDessin = L"que lisent « veltora importer » et OPEN";
constexpr std::array<DescriptionGenre, 13> kDescriptions = {{
    {genreFichier::obs, L"des observations de polygonale (.obs)", L"que lit « veltora polygonale »"},
    {genreFichier::mc, L"un réseau (.mc)", L"que lit « veltora reseau »"},
    {genreFichier::xyz, L"une liste de coordonnées (.xyz)", L"que lit « veltora importer --points »"},
    {genreFichier::couples, L"des couples de points", L"que lit « veltora helmert »"},
    {genreFichier::formules, L"des formules de poids (.fmc)", L"que lit CORRMCARRES, « Poids »"},
    {genreFichier::dxf, L"un dessin DXF", kDessin},
    {genreFichier::dwg, L"un dessin binaire DWG", L"à enregistrer d'abord en DXF"},
    {genreFichier::html, L"un rapport HTML", L"qu'aucun calcul ne lit"},
    {genreFichier::xml, L"un fichier XML", L"qu'aucun calcul ne lit"},
    {genreFichier::gkf, L"un réseau .gkf", L"que lisent « veltora reseau --pondere » et COMPENSER"},
    {genreFichier::gsi, L"un carnet GSI", L"que lit « veltora carnet »"},
    {genreFichier::lisp, L"un programme LISP", L"que lit « veltora lisp »"},
    {genreFichier::binaire, L"un fichier binaire", L"qui n'est pas du texte"},
}};

const DescriptionGenre* decrire(genreFichier genre) {
  const auto trouve = std::find_if(kDescriptions.begin(), kDescriptions.end(),
                                   [genre](const DescriptionGenre& d) { return d.genre == genre; });
  return trouve == kDescriptions.end() ? nullptr : &*trouve;
}

/// Files that begin with bytes of their own.
genreFichier parSignature(std::string_view octets) {
  constexpr std::string_view kFormules("i90\0\0", 5);
  if (octets.starts_with(kFormules)) return genreFichier::formules;
  if (octets.starts_with("AutoCAD Binary DXF")) return genreFichier::dxf;
  if (octets.starts_with("AC10") && octets.find('\0') < 16) return genreFichier::dwg;
  const std::string_view debut = octets.substr(0, 4096);
  if (base::DecodedText(debut).bytes().find("<gama-local") != std::string_view::npos)
    return genreFichier::gkf;
  if (octets.starts_with("\xFF\xFE") || octets.starts_with("\xFE\xFF")) return genreFichier::inconnu;
  const auto commande = [](char c) {
    return (c >= 0 && c < ' ' && c != '\t' && c != '\n' && c != '\r' && c != '\f');
  };
  const auto commandes = static_cast<std::size_t>(std::count_if(debut.begin(), debut.end(), commande));
  // A stray zero byte or Ctrl-Z does not make a text binary.
  return commandes * 50 > debut.size() + 100 || octets.starts_with("%PDF") ? genreFichier::binaire
                                                                           : genreFichier::inconnu;
}

bool estNombre(const std::wstring& jeton) {
  double valeur = 0.0;
  return base::lireReelExact(base::narrow(jeton), valeur);
}
bool aUnPoint(const std::wstring& jeton) { return jeton.find(L'.') != std::wstring::npos; }

/// "*110001+0000000000000101 ...": word index, four more digits or points, a sign.
bool ligneGsi(const std::wstring& ligne) {
  const std::wstring_view mot = std::wstring_view(ligne).substr(ligne.starts_with(L'*') ? 1 : 0);
  if (mot.size() < 15 || (mot[6] != L'+' && mot[6] != L'-')) return false;
  return std::all_of(mot.begin(), mot.begin() + 6,
                     [](wchar_t c) { return (c >= L'0' && c <= L'9') || c == L'.'; });
}

/// What the lines of a text have shown so far.
class Indices {
public:
  void voir(const std::wstring& ligne) {
    if (ligneGsi(ligne)) ++m_gsi;
    const Jetons jetons = decouperLigneObs(ligne);
    if (jetons.empty() || ligne.front() == L'#' || ligne.front() == L';') return;
    if (++m_lignes == 1) voirPremiere(ligne);
    if (m_zero && m_lignes <= kLignesEntete && base::toUpper(jetons[0]) == L"SECTION") m_dxf = true;
    const std::wstring cle = base::toUpper(std::wstring_view(jetons[0]).substr(0, 4));
    if (jetons.size() == 1 && (cle == L"XYZ" || cle == L"OBS")) m_mc = true;
    if (jetons.size() == 2 && (cle == L"NIVE" || cle == L"FERM")) m_obs = true;
    if (jetons.size() == kJetonsStation) m_obs = m_obs || stationConnue(jetons);
    voirCoordonnees(jetons);
  }

  [[nodiscard]] genreFichier conclure() const {
    if (m_premier != genreFichier::inconnu) return m_premier;
    if (m_dxf) return genreFichier::dxf;
    if (m_gsi > 0 && m_gsi * 2 > m_lignes) return genreFichier::gsi;
    if (m_obs) return genreFichier::obs;
    if (m_mc) return genreFichier::mc;
    if (m_lignes < 2) return genreFichier::inconnu;
    if (m_points == m_lignes) return genreFichier::xyz;
    return m_couples == m_lignes ? genreFichier::couples : genreFichier::inconnu;
  }

private:
  void voirPremiere(const std::wstring& ligne) {
    const std::wstring debut = base::toLower(base::trim(ligne));
    m_zero = debut == L"0" || debut == L"999";
    if (debut.starts_with(L'<')) m_premier = genreFichier::xml;
    if (debut.starts_with(L"<!doctype html") || debut.starts_with(L"<html")) m_premier = genreFichier::html;
    if (debut.starts_with(L"(")) m_premier = genreFichier::lisp;
  }

  /// The keys of closed or open traverses, each with its value.
  static bool stationConnue(const Jetons& jetons) {
    std::wstring cles;
    for (std::size_t i = 0; i < jetons.size(); i += 2) cles += base::toUpper(jetons[i].front());
    return cles.find_first_of(L"NDA") != std::wstring::npos && cles.find(L'X') != std::wstring::npos &&
           cles.find(L'Y') != std::wstring::npos;
  }

  /// A name, three numbers with a point in X and Y, then a code without one; or a name and four numbers with
  /// points.
  void voirCoordonnees(const Jetons& jetons) {
    if (jetons.size() < kJetonsPoint) return;
    if (!std::all_of(jetons.begin() + 1, jetons.begin() + kJetonsPoint, estNombre)) return;
    if (!aUnPoint(jetons[1]) || !aUnPoint(jetons[2])) return;
    if (!aUnPoint(jetons[4]) && jetons[4].size() <= 4) ++m_points;
    if (aUnPoint(jetons[4]) && jetons.size() == kJetonsPoint) ++m_couples;
  }

  genreFichier m_premier = genreFichier::inconnu;
  std::size_t m_lignes = 0;
  std::size_t m_gsi = 0;
  std::size_t m_points = 0;
  std::size_t m_couples = 0;
  bool m_zero = false;  ///< the first line is a group code of drawings
  bool m_dxf = false;
  bool m_obs = false;
  bool m_mc = false;
};

}  // namespace

genreFichier reconnaitreGenre(std::string_view octets) {
  const std::string_view debut = octets.substr(0, kOctetsVus);
  const genreFichier signature = parSignature(debut);
  if (signature != genreFichier::inconnu) return signature;
  Indices indices;
  base::LineReader lignes(debut);
  for (std::size_t vues = 0; vues < kLignesVues && lignes.next(); ++vues) {
    // The last line may be cut in two.
    if (debut.size() < octets.size() && lignes.position() >= lignes.size()) break;
    indices.voir(base::trim(lignes.wide()));
  }
  return indices.conclure();
}

std::wstring refusDuGenre(std::wstring_view nom, std::string_view octets, genreFichier attendu) {
  const genreFichier genre = reconnaitreGenre(octets);
  const DescriptionGenre* description = decrire(genre);
  if (!description || genre == attendu) return {};
  // Pairs under other headings may well be a list of coordinates.
  if (attendu == genreFichier::xyz && genre == genreFichier::couples) return {};
  return L"« " + std::wstring(nom) + L" » contient, à ce qu'il semble, " + description->nature + L", " +
         description->lecteur + L", et non " + decrire(attendu)->nature;
}

base::Remarques doutesDuGenre(std::wstring_view nom, std::string_view octets, genreFichier attendu) {
  base::Remarques remarques;
  std::wstring refus = refusDuGenre(nom, octets, attendu);
  if (!refus.empty()) remarques.douter(std::move(refus));
  return remarques;
}

}  // namespace veltora
