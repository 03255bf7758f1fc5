#include "points/exchange/lecture_liste.h"

#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/numbers.h"
#include "base/text.h"
#include "points/exchange/echantillon_liste.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace veltora {
namespace {

using base::Z_ABSENT;

constexpr std::size_t kRoles = static_cast<std::size_t>(roleColonne::kCourante) + 1;
/// Characters of a field that a remark quotes.
constexpr std::size_t kCites = 40;
/// Lines from one step of the progress to the next.

bool estCoordonnee(roleColonne role) {
  return role == roleColonne::kX || role == roleColonne::kY || role == roleColonne::kZ;
}

/// Texts that come again and again, numbered in the order in which they come.
class Repertoire {
public:
  explicit Repertoire(std::vector<std::wstring>& textes) : m_textes(textes) {}
  int rang(const std::wstring& texte) {
    const auto [trouve, nouveau] = m_rangs.try_emplace(texte, static_cast<int>(m_textes.size()));
    if (nouveau) m_textes.push_back(texte);
    return trouve->second;
  }

private:
  std::vector<std::wstring>& m_textes;
  std::unordered_map<std::wstring, int> m_rangs;
};

class LecteurListe {
public:
  LecteurListe(std::string_view octets, const formeListe& forme)
      : m_lignes(octets), m_forme(forme), m_tables(m_lue.tables), m_libelles(m_lue.libelles) {
    const auto coordonnees = std::count_if(forme.colonnes.begin(), forme.colonnes.end(), estCoordonnee);
    m_champsParLigne = forme.colonnes.size() + static_cast<std::size_t>(coordonnees);
  }

  listeLue lire(base::Suivi* suivi) {
    while (m_lignes.next()) {
      if (suivi && m_lignes.number() % kLignesParSuivi == 0 && arrete(*suivi)) {
        m_lue.interrompue = true;
        break;
      }
      if (const auto coupe = m_lignes.cut()) m_lue.remarques.douter(coupe->ligne, coupe->texte);
      if (m_lignes.line().find_first_not_of(" \t") == std::string_view::npos) continue;
      if (m_lignes.number() < m_forme.premiereLigne)
        avant();
      else
        ligne();
    }
    return std::move(m_lue);
  }

  /// The next row with a point, its fields in order. @return false behind the last one
  bool prochaine(std::vector<std::wstring>& textes) {
    while (m_lignes.next()) {
      if (m_lignes.number() < m_forme.premiereLigne) continue;
      if (!repartir()) continue;
      textes.clear();
      for (const champListe& champ : m_champs) textes.push_back(texteChamp(champ, m_lignes));
      return true;
    }
    return false;
  }

private:
  bool arrete(base::Suivi& suivi) {
    if (!suivi.ouvert()) suivi.etendre(0, static_cast<long long>(m_lignes.size()));
    suivi.aller(static_cast<long long>(m_lignes.position()));
    return suivi.arrete();
  }

  void avant() {
    if (m_lignes.number() != m_forme.ligneTitres)
      m_lue.remarques.omettre(m_lignes.number(), L"ignorée, devant les points");
  }

  /// Hands the fields of the line to the roles. @return false when neither X nor Y is a number
  bool repartir() {
    decouperLigne(m_lignes.line(), m_forme.separateur, m_champs);
    m_nombreChamps = m_champs.size();
    m_roles.fill(nullptr);
    for (std::size_t colonne = 0, champ = 0; colonne < m_forme.colonnes.size() && champ < m_champs.size();
         ++colonne, ++champ) {
      const roleColonne role = m_forme.colonnes[colonne];
      if (m_forme.deuxChamps && estCoordonnee(role)) joindre(champ);
      if (role == roleColonne::kObservation && m_forme.separateur == ' ' &&
          colonne + 1 == m_forme.colonnes.size())
        suite(champ);
      m_roles[static_cast<std::size_t>(role)] = &m_champs[champ];
    }
    m_xLu = nombre(roleColonne::kX, m_x);
    m_yLu = nombre(roleColonne::kY, m_y);
    return m_xLu || m_yLu;
  }
  /// A coordinate and its decimals, which a comma parts as it parts columns.
  void joindre(std::size_t champ) {
    if (champ + 1 >= m_champs.size()) return;
    const std::string_view suite = m_champs[champ + 1].texte;
    const char* debut = m_champs[champ].texte.data();
    m_champs[champ].texte = {debut, static_cast<std::size_t>(suite.data() + suite.size() - debut)};
    m_champs.erase(m_champs.begin() + static_cast<std::ptrdiff_t>(champ) + 1);
  }
  /// The words of an observation, joined by one blank.
  void suite(std::size_t champ) {
    m_obs.clear();
    for (std::size_t i = champ; i < m_champs.size(); ++i)
      m_obs.append(m_obs.empty() ? "" : " ").append(m_champs[i].texte);
    m_champs.resize(champ + 1);
    m_champs[champ].texte = m_obs;
  }

  [[nodiscard]] const champListe* champ(roleColonne role) const {
    return m_roles[static_cast<std::size_t>(role)];
  }
  [[nodiscard]] std::wstring texte(roleColonne role) const {
    return champ(role) ? texteChamp(*champ(role), m_lignes) : std::wstring();
  }
  [[nodiscard]] bool vide(roleColonne role) const { return !champ(role) || champ(role)->texte.empty(); }
  bool nombre(roleColonne role, double& valeur) const {
    return champ(role) && lireNombre(champ(role)->texte, m_forme.decimale, valeur);
  }
  void illisible(roleColonne role) {
    const std::wstring nom = base::toUpper(nomRole(role));
    m_lue.remarques.douter(m_lignes.number(), vide(role) ? nom + L" manque"
                                                         : nom + L" n'est pas un nombre, « " +
                                                               texte(role).substr(0, kCites) + L" »");
  }

  void ligne() {
    const bool nombres = repartir();
    if (!nombres && commenceEnNombre(roleColonne::kX) && commenceEnNombre(roleColonne::kY))
      return illisible(roleColonne::kX);
    if (!nombres)
      return m_lue.remarques.omettre(m_lignes.number(), L"ignorée, ni X ni Y n'y sont des nombres");
    enTrop();
    // Where a comma parts decimals as it parts columns, a coordinate without decimals shifts all the others.
    if (m_forme.deuxChamps && m_nombreChamps != m_champsParLigne)
      return m_lue.remarques.douter(
          m_lignes.number(), base::formater(L"%d champs au lieu de %d", static_cast<int>(m_nombreChamps),
                                            static_cast<int>(m_champsParLigne)));
    double z = Z_ABSENT;
    if (!m_xLu) return illisible(roleColonne::kX);
    if (!m_yLu) return illisible(roleColonne::kY);
    if (!vide(roleColonne::kZ) && !nombre(roleColonne::kZ, z)) return illisible(roleColonne::kZ);
    ligneListe lue;
    lue.point.x = m_x;
    lue.point.y = m_y;
    lue.point.z = z;
    lue.point.nom = base::trim(texte(roleColonne::kNumero));
    lue.point.obs = base::trim(texte(roleColonne::kObservation));
    lireCode(lue);
    lireTable(lue);
    m_lue.lignes.push_back(std::move(lue));
  }

  /// True for a number that is written otherwise than those of the list.
  [[nodiscard]] bool commenceEnNombre(roleColonne role) const {
    return !vide(role) && champ(role)->texte.find_first_of("0123456789") <= 1;
  }

  /// Fields behind those of other lines: a separator that stands within a number shifts coordinates.
  void enTrop() {
    while (m_nombreChamps > 0 && m_champs.size() >= m_nombreChamps &&
           m_champs[m_nombreChamps - 1].texte.empty())
      --m_nombreChamps;
    if (m_forme.champs == 0 || m_nombreChamps <= m_forme.champs) return;
    const std::wstring texte = base::formater(L"%d champs au lieu de %d", static_cast<int>(m_nombreChamps),
                                              static_cast<int>(m_forme.champs));
    if (m_forme.separateur == ',' || estNombre(m_champs[m_forme.champs], '\0'))
      m_lue.remarques.douter(m_lignes.number(), texte);
    else
      m_lue.remarques.ajouter(m_lignes.number(), texte + L", les derniers sont laissés de côté");
  }

  void lireCode(ligneListe& lue) {
    if (vide(roleColonne::kCode)) return;
    double code = 0.0;
    const bool chiffres = lireNombre(champ(roleColonne::kCode)->texte, m_forme.decimale, code);
    if (m_forme.codesTexte && (!chiffres || m_forme.codesLibelles)) {
      lue.libelle = m_libelles.rang(base::trim(texte(roleColonne::kCode)));
    } else if (chiffres && code == static_cast<double>(static_cast<int>(std::clamp(code, -1e9, 1e9)))) {
      lue.point.code = code == 0.0 ? 1 : static_cast<int>(code);
    } else {
      m_lue.remarques.ajouter(
          m_lignes.number(),
          L"code illisible « " + texte(roleColonne::kCode).substr(0, kCites) + L" », lu comme 1");
    }
  }

  void lireTable(ligneListe& lue) {
    if (!champ(roleColonne::kTable)) return;
    lue.table = m_tables.rang(texte(roleColonne::kTable));
    if (base::toLower(texte(roleColonne::kCourante)) == L"oui") m_lue.courante = lue.table;
  }

  base::LineReader m_lignes;
  const formeListe& m_forme;
  listeLue m_lue;
  Repertoire m_tables;
  Repertoire m_libelles;
  std::vector<champListe> m_champs;
  std::array<const champListe*, kRoles> m_roles{};
  std::string m_obs;
  std::size_t m_nombreChamps = 0;    ///< of the line, before any are joined
  std::size_t m_champsParLigne = 0;  ///< of every line, when coordinates take two
  double m_x = 0.0;
  double m_y = 0.0;
  bool m_xLu = false;
  bool m_yLu = false;
};

}  // namespace

listeLue lireListe(std::string_view octets, const formeListe& forme, base::Suivi* suivi) {
  return LecteurListe(octets, forme).lire(suivi);
}

std::vector<std::vector<std::wstring>> premieresLignes(std::string_view octets, const formeListe& forme,
                                                       std::size_t nombre) {
  LecteurListe lecteur(octets, forme);
  std::vector<std::vector<std::wstring>> lignes;
  for (std::vector<std::wstring> textes; lignes.size() < nombre && lecteur.prochaine(textes);)
    lignes.push_back(textes);
  return lignes;
}

}  // namespace veltora
