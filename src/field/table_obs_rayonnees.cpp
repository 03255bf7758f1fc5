#include "field/table_obs_rayonnees.h"

#include "base/text.h"

namespace veltora {
namespace {

constexpr std::size_t kAlveoles = 16;

nomGSI enMinuscules(const nomGSI& nom) { return base::toLowerAnsi(nom.texte()); }

}  // namespace

tableObsRayonnees::connus::connus() : noms(kAlveoles, &memoire), parNom(&memoire) {
  noms.max_load_factor(1.0F);
}

tableObsRayonnees::tableObsRayonnees() : m_connus(std::make_unique<connus>()) {
  for (const char* nom : {"nord", "north", "."}) m_connus->noms.insert(nom);
}

std::uint32_t tableObsRayonnees::ajouterStation(const nomGSI& nom, double hauteur) {
  stationsGSI.push_back({nom, hauteur});
  return static_cast<std::uint32_t>(stationsGSI.size());
}

std::size_t tableObsRayonnees::ajouterLecture(std::uint32_t station, lectureGSI lecture) {
  lecture.station = station;
  if (lecture.donnees.situee()) {
    // Names that ascend, as they do in most field books, find their place at once.
    m_connus->parNom.insert_or_assign(m_connus->parNom.end(), lecture.donnees.nom, lectures.size());
  } else {
    // Deliberate (gsi-lecture-double): a sighting without X or Y stands twice.
    lectures.push_back(lecture);
  }
  lectures.push_back(std::move(lecture));
  return lectures.size();
}

// Deliberate (gsi-vider-noms): the names known from the start go too and only a new process brings them back.
void tableObsRayonnees::viderTable() {
  // Made anew: the order of the set depends on nothing that was read before.
  m_connus = std::make_unique<connus>();
  stationsGSI.clear();
  lectures.clear();
}

tableObsRayonnees::ensembleNoms& tableObsRayonnees::nomsCanevas() {
  for (std::size_t& rang = m_connus->nommees; rang < lectures.size(); ++rang)
    if (lectures[rang].donnees.situee()) m_connus->noms.insert(lectures[rang].donnees.nom);
  return m_connus->noms;
}

void tableObsRayonnees::nomsCanevasListe(std::vector<nomGSI>& sortie) {
  sortie.assign(nomsCanevas().begin(), nomsCanevas().end());
}

bool tableObsRayonnees::lirePointCanevas(const nomGSI& nom, donneesLecture& sortie) const {
  const auto trouve = pointsCanevas().find(nom);
  if (trouve == pointsCanevas().end()) return false;
  sortie = lectures[trouve->second].donnees;
  return true;
}

void tableObsRayonnees::propagerCanevas() {
  for (std::size_t avant = nomsCanevas().size() + 1; avant != nomsCanevas().size();) {
    avant = nomsCanevas().size();
    for (const lectureGSI& lecture : lectures) {
      if (lecture.station == 0 || lecture.station > stationsGSI.size()) continue;
      if (nomsCanevas().contains(enMinuscules(stationsGSI[lecture.station - 1].nom)))
        nomsCanevas().insert(enMinuscules(lecture.donnees.nom));
    }
  }
}

tableObsRayonnees& getTableObsRayonnees() {
  static tableObsRayonnees table;
  return table;
}

}  // namespace veltora
