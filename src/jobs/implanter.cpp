#include "jobs/implanter.h"

#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/drawing_records.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/lire_liste.h"
#include "points/projets_topo.h"
#include "stakeout/ajouter_points.h"
#include "stakeout/dessin_implantation.h"
#include "stakeout/listes_implantation.h"
#include "stakeout/saisir_station.h"
#include "stakeout/verifier_vue.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace veltora {
namespace {

constexpr double kMemeLieu = 0.01;  // drawing units

struct lieuNomme {
  std::wstring nom;
  double x = Z_ABSENT;
  double y = Z_ABSENT;
  double z = Z_ABSENT;
};

std::wstring cleNom(const std::wstring& nom) { return base::toLower(base::trim(nom)); }

class Implantation {
public:
  Implantation(const demandeImplanter& demande, resultatImplanter& resultat)
      : m_demande(demande), m_resultat(resultat) {}

  bool faire() {
    regler();
    if (!lireListe() || !trouver(m_demande.station, m_station)) return false;
    m_nord = base::compareNoCase(m_demande.reference, L"NORD") == 0;
    if (!m_nord && !trouver(m_demande.reference, m_reference)) return false;
    if (!rassembler()) return false;
    stationner();
    controler();
    compter();
    return ecrire() && dessiner();
  }

private:
  bool echec(const std::wstring& raison) {
    m_resultat.erreur = raison;
    return false;
  }

  void regler() {
    reglagesImplantation& reglages = reglagesImplantation::commun();
    if (m_demande.hauteurMin >= 0.0) reglages.hauteurMin = hauteurAdmise(m_demande.hauteurMin);
    if (m_demande.hauteurTexte > 0.0) reglages.poserHauteurTexte(m_demande.hauteurTexte);
    if (m_demande.hauteurStation >= 0.0) m_projet.hauteurStation = hauteurAdmise(m_demande.hauteurStation);
    paramsImplantation& params = m_projet.params;
    const bool erreurMax = m_demande.fleche > 0.0;
    params.modeArcs = params.modeClothoides = erreurMax ? params.kErreurMax : params.kParPas;
    params.distArcs = params.distClothoides = erreurMax ? m_demande.fleche : m_demande.pas;
    params.interpolerDroites = m_demande.pasDroites > 0.0 ? 1 : 0;
    if (m_demande.pasDroites > 0.0) params.distDroites = m_demande.pasDroites;
    m_projet.dessin.coordonnees = m_demande.coordonnees ? 1 : 0;
    // Nothing is drawn before all is known.
    m_projet.dessin.numeros = 0;
  }

  bool lireListe() {
    if (m_demande.liste.empty()) return true;
    listeLue lue;
    resultatPoints lecture;
    const bool bonne = lireListePoints({m_demande.liste, {}}, lue, lecture);
    m_resultat.remarques.ajouter(lecture.remarques);
    if (!bonne) return echec(lecture.erreur);
    for (const ligneListe& ligne : lue.lignes)
      m_liste.push_back({ligne.point.nom, ligne.point.x, ligne.point.y, ligne.point.z});
    return true;
  }

  /// The places that bear a name in the current table, else in the list.
  [[nodiscard]] std::vector<lieuNomme> lieuxDe(const std::wstring& nom) const {
    std::vector<lieuNomme> lieux;
    const std::wstring cle = cleNom(nom);
    for (const pointDuDessin& point : *tablesPoints->currTable()->getData())
      if (const std::wstring sien = base::widen(point.getNomPoint()); cleNom(sien) == cle)
        lieux.push_back({sien, point.x, point.y, point.z});
    if (!lieux.empty()) return lieux;
    for (const lieuNomme& lieu : m_liste)
      if (cleNom(lieu.nom) == cle) lieux.push_back(lieu);
    return lieux;
  }

  bool trouver(const std::wstring& nom, unPoint& trouve) {
    const std::vector<lieuNomme> lieux = lieuxDe(nom);
    if (lieux.empty())
      return echec(L"le point « " + nom + L" » n'est pas dans la table courante" +
                   (m_demande.liste.empty() ? L"" : L", ni dans la liste"));
    const lieuNomme& lieu = lieux.back();
    if (lieu.x == Z_ABSENT || lieu.y == Z_ABSENT)
      return echec(L"le point « " + nom + L" » n'a pas de coordonnées");
    if (lieux.size() > 1)
      m_resultat.remarques.douter(
          base::formater(L"%d points portent le nom « %s » : le dernier est pris (%.4f, %.4f)",
                         static_cast<int>(lieux.size()), nom, lieu.x, lieu.y));
    for (const lieuNomme& autre : m_liste)
      if (lieux.size() == 1 && cleNom(autre.nom) == cleNom(nom) &&
          std::hypot(autre.x - lieu.x, autre.y - lieu.y) > kMemeLieu)
        m_resultat.remarques.douter(base::formater(
            L"le point « %s » est ailleurs dans la liste (%.4f, %.4f) : celui de la table est pris", nom,
            autre.x, autre.y));
    trouve.nom = lieu.nom;
    trouve.x = lieu.x;
    trouve.y = lieu.y;
    trouve.z = lieu.z;
    return true;
  }

  bool rassembler() {
    if (!m_demande.liste.empty()) {
      for (const lieuNomme& lieu : m_liste) ajouter(lieu);
    } else if (!m_demande.calque.empty()) {
      if (!rassemblerCalque()) return false;
    } else {
      for (const pointDuDessin& point : *tablesPoints->currTable()->getData())
        if (point.code == m_demande.code)
          ajouter({base::widen(point.getNomPoint()), point.x, point.y, point.z});
    }
    if (m_projet.points.empty()) return echec(L"aucun point à implanter");
    return true;
  }

  void ajouter(const lieuNomme& lieu) {
    if (lieu.x == m_station.x && lieu.y == m_station.y && cleNom(lieu.nom) == cleNom(m_station.nom)) return;
    observationImplantation point;
    point.nom = lieu.nom.empty() ? m_projet.params.suivant() : lieu.nom;
    point.x = lieu.x;
    point.y = lieu.y;
    point.z = lieu.z;
    m_projet.ajouterPoint(point);
  }

  bool rassemblerCalque() {
    AcDbDatabase& dessin = *acdbHostApplicationServices()->workingDatabase();
    const AcDbObjectId calque = recordNamed(dessin.layerTableId(), m_demande.calque);
    if (calque.isNull()) return echec(L"le dessin n'a pas de calque « " + m_demande.calque + L" »");
    const ServicesTerrain terrain;
    std::vector<AcDbObjectId> entites;
    {
      const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
      for (const AcDbObjectId& id : espace->entities())
        if (const AcDbObjectPointer<AcDbEntity> entite(id);
            entite.openStatus() == Acad::eOk && entite->layerId() == calque)
          entites.push_back(id);
    }
    int sans = 0;
    for (const AcDbObjectId& id : entites) {
      const std::optional<int> points = ajouterElement(m_projet, terrain, id);
      if (!points) return echec(L"un élément du calque donnerait plus d'un million de points");
      if (*points == 0) ++sans;
    }
    if (sans > 0)
      m_resultat.remarques.ajouter(
          base::formater(L"éléments du calque qui ne donnent aucun nouveau point : %d", sans));
    return true;
  }

  void stationner() {
    const std::uint32_t id = creerMiseEnStation(
        m_projet, m_station, m_reference.nom, {m_reference.x, m_reference.y, m_reference.z},
        m_nord ? modeOrientation::kNord : modeOrientation::kReference);
    for (observationImplantation& point : m_projet.points) point.idStation = id;
    verifierVisibilites(m_projet);
  }

  void controler() {
    if (!m_nord && distanceImplantation(m_station, m_reference) < kMemeLieu)
      m_resultat.remarques.douter(L"la référence est à la station : elle n'oriente rien");
    constexpr double kTropLoin = 1e6;
    std::vector<std::wstring> aLaStation;
    std::vector<std::wstring> loin;
    std::map<std::wstring, int> noms;
    std::vector<std::wstring> doubles;
    for (const observationImplantation& point : m_projet.points) {
      const double distance = distanceImplantation(m_station, point);
      if (distance < kMemeLieu) aLaStation.push_back(point.nom);
      if (!(distance <= kTropLoin)) loin.push_back(point.nom);
      if (++noms[cleNom(point.nom)] == 2) doubles.push_back(point.nom);
    }
    douterDe(loin, L"à plus de 1000000 unités de la station (X et Y échangés ?)");
    douterDe(aLaStation, L"à la station même : leur angle n'a pas de sens");
    douterDe(doubles, L"noms que portent plusieurs points");
    remarquerLieux();
  }
  void douterDe(const std::vector<std::wstring>& noms, const wchar_t* texte) {
    if (!noms.empty()) m_resultat.remarques.douter(std::wstring(texte) + L" : " + base::enumerer(noms));
  }
  /// Points of other names at one place.
  void remarquerLieux() {
    std::map<std::pair<std::int64_t, std::int64_t>, const observationImplantation*> lieux;
    std::vector<std::wstring> memes;
    for (const observationImplantation& point : m_projet.points) {
      if (!(std::abs(point.x) < 1e12 && std::abs(point.y) < 1e12)) continue;
      const auto [place, neuf] =
          lieux.try_emplace({std::llround(point.x / kMemeLieu), std::llround(point.y / kMemeLieu)}, &point);
      if (!neuf) memes.push_back(place->second->nom + L" et " + point.nom);
    }
    if (!memes.empty()) m_resultat.remarques.ajouter(L"points au même endroit : " + base::enumerer(memes));
  }

  void compter() {
    m_resultat.points = m_projet.points.GetSize();
    for (const observationImplantation& point : m_projet.points) {
      const verdictVisee vu = verdict(point);
      if (vu == verdictVisee::kVisible) ++m_resultat.visibles;
      if (vu == verdictVisee::kNonVisible) ++m_resultat.masques;
    }
    m_resultat.listing = texteImplantation(m_projet, m_demande.modeAngle);
    m_resultat.retenu = m_resultat.remarques.douteuses() && !m_demande.malgreDoutes;
  }

  bool ecrire() {
    const std::wstring rapport = base::texteDuChemin(m_demande.rapport);
    const std::wstring extension = base::texteDuChemin(m_demande.rapport.extension());
    if (!rapport.empty() && !exporterImplantation(m_projet, rapport, extension, m_resultat.erreur))
      return false;
    return ecrireOctets(base::toUtf8(m_resultat.listing), m_demande.texte, m_resultat.erreur) &&
           (m_resultat.retenu ||
            ecrireOctets(base::toUtf8(csvImplantation(m_projet)), m_demande.csv, m_resultat.erreur));
  }
  bool dessiner() {
    if (!m_demande.dessiner || m_resultat.retenu) return true;
    effacerResultats(m_projet);
    m_projet.dessin.numeros = 1;
    dessinerResultats(m_projet, m_projet.dessin.options());
    grouperResultats(m_projet);
    oublierResultats(m_projet);
    return true;
  }

  const demandeImplanter& m_demande;
  resultatImplanter& m_resultat;
  projetImplantation m_projet;
  std::vector<lieuNomme> m_liste;
  uneStationReference m_station;
  uneStationReference m_reference;
  bool m_nord = false;
};

}  // namespace

bool implanter(const demandeImplanter& demande, resultatImplanter& resultat) {
  resultat = {};
  if (!acdbHostApplicationServices()->workingDatabase() || !tablesPoints) {
    resultat.erreur = kSansProjet;
    return false;
  }
  return Implantation(demande, resultat).faire();
}

}  // namespace veltora
