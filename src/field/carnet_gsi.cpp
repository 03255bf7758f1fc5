#include "field/carnet_gsi.h"

#include "base/lines/line_reader.h"
#include "base/text.h"
#include "field/regles_gsi.h"
#include "field/textes_gsi.h"

#include <array>
#include <utility>

namespace veltora {
namespace {

/// A measure and its place in `donneesLecture::present`; no word of the index measures where there is none.
struct Champ {
  double donneesLecture::*valeur = nullptr;
  donneesLecture::Mesure mesure = donneesLecture::kX;
};
using Champs = std::array<Champ, 100>;

constexpr Champs champsParIndice() {
  using D = donneesLecture;
  Champs c{};
  c[81] = {&D::x, D::kX};
  c[82] = {&D::y, D::kY};
  c[83] = {&D::z, D::kZ};
  c[21] = {&D::ah, D::kAh};
  c[22] = {&D::av, D::kAv};
  c[31] = {&D::di, D::kDi};
  c[33] = {&D::dz, D::kDz};
  c[32] = {&D::dh, D::kDh};
  c[84] = {&D::xStat, D::kXStat};
  c[85] = {&D::yStat, D::kYStat};
  c[86] = {&D::zStat, D::kZStat};
  c[87] = {&D::hMire, D::kHMire};
  c[88] = {&D::hAppareil, D::kHAppareil};
  return c;
}

void entrer(const motGSI& mot, donneesLecture& donnees) {
  static constexpr Champs kChamps = champsParIndice();
  const Champ& champ = kChamps.at(mot.indexMot);
  if (mot.indexMot == motGSI::kNom) donnees.nom = mot.texte;
  if (!champ.valeur) return;
  donnees.*champ.valeur = mot.valeur;
  donnees.present[champ.mesure] = true;
}

void entrerBlocCode(etatLectureGSI& etat, std::uint32_t numeroLigne, const ligneGSI& mots) {
  reglesCodesGSI& regles = getReglesCodesGSI();
  if (etat.debutBlocCode == etatLectureGSI::kAucun) etat.debutBlocCode = numeroLigne;
  analyserCodesGSI(regles, numeroLigne - etat.debutBlocCode + 1, mots);
  if (reglesCompletes(regles))
    etat.stationCourante = getTableObsRayonnees().ajouterStation(regles.code, regles.hauteur);
}

}  // namespace

std::string_view carnetGSI::ligne(std::size_t i) const {
  const std::size_t debut = i == 0 ? 0 : m_fins[i - 1];
  return std::string_view(m_texte).substr(debut, m_fins[i] - debut);
}

void carnetGSI::ajouter(std::string_view ligne) {
  m_texte += ligne;
  m_fins.push_back(m_texte.size());
}

std::wstring carnetGSI::brut() const {
  std::wstring texte;
  texte.reserve(m_texte.size() + 2 * m_fins.size());
  for (std::size_t i = 0; i < nombreLignes(); ++i) {
    texte += base::widen(ligne(i));
    texte += L"\r\n";
  }
  return texte;
}

carnetGSI lireCarnet(std::string_view octets) {
  carnetGSI carnet;
  carnet.reserver(octets.size());
  base::LineReader lignes(octets, kLigneGsiMax);
  while (lignes.next()) {
    if (auto coupe = lignes.cut()) carnet.remarques.ajouter(*std::move(coupe));
    if (lignes.isUtf8())
      carnet.ajouter(base::narrow(lignes.wide()));
    else
      carnet.ajouter(lignes.line());
  }
  return carnet;
}

// Deliberate (gsi-autres-lignes): a line that opens with another word leaves no trace, whatever it holds.
void interpreterLigneGSI(etatLectureGSI& etat, std::uint32_t numeroLigne, const ligneGSI& mots) {
  if (mots.empty()) return;
  const int premier = mots.GetAt(0).indexMot;
  if (premier == motGSI::kBlocCode) entrerBlocCode(etat, numeroLigne, mots);
  if (premier != motGSI::kNom) return;
  lectureGSI lecture;
  for (const motGSI& mot : mots) entrer(mot, lecture.donnees);
  getTableObsRayonnees().ajouterLecture(etat.stationCourante, std::move(lecture));
}

void analyseGSI::preparer(const carnetGSI& carnet, std::string& detail) {
  detail.reserve(detail.size() + carnet.taille());
  getTableObsRayonnees().lectures.reserve(getTableObsRayonnees().lectures.size() + carnet.nombreLignes());
}

int analyseGSI::lire(std::string_view ligne, std::string& detail, std::string_view fin) {
  const int propre = decoderLigneGSI(m_etat, ligne, m_mots);
  interpreterLigneGSI(m_etat, m_numero++, m_mots);
  const std::size_t avant = detail.size();
  ajouterTexteLigneGSI(m_etat, m_mots, detail);
  if (detail.size() > avant) detail += fin;
  return propre;
}

}  // namespace veltora
