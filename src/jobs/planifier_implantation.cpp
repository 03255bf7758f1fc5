#include "jobs/planifier_implantation.h"

#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/drawing_records.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/lire_liste.h"
#include "points/projets_topo.h"
#include "stakeout/ajouter_points.h"
#include "stakeout/listes_plan.h"

#include <algorithm>
#include <map>
#include <vector>

namespace veltora {
namespace {

constexpr double kMemeLieu = 0.01;  // drawing units

const pointDuDessin& pointDeTable(int index) {
  const listePointsDuDessin& table = *tablesPoints->currTable();
  return *table.getData(index);
}

std::wstring nomDe(int index) { return base::widen(pointDeTable(index).getNomPoint()); }

std::wstring cle(const std::wstring& nom) { return base::toLower(base::trim(nom)); }

/// What is to be set out, and the plan made of it.
class Planification {
public:
  Planification(const demandePlanifier& demande, resultatPlanifier& resultat)
      : m_demande(demande), m_resultat(resultat) {}

  bool faire() {
    if (!rassembler()) return false;
    m_plan.preparer(m_points, m_demande.codeStations, m_noms);
    if (m_plan.stations().empty())
      return echec(base::formater(L"la table courante n'a aucun point du code %d, qui serait une station",
                                  m_demande.codeStations));
    m_plan.choisirReferences(m_demande.modeReference, m_demande.referenceMin, m_demande.referenceMax);
    if (m_demande.moinsDeStations) m_plan.minimiserStations(m_demande.porteeMin, m_demande.porteeMax);
    controlerPlan(m_plan, m_demande.porteeMin, m_demande.porteeMax, m_resultat.remarques);
    m_resultat.retenu = m_resultat.remarques.douteuses() && !m_demande.malgreDoutes;
    lister();
    return ecrire() && dessiner();
  }

private:
  bool echec(const std::wstring& raison) {
    m_resultat.erreur = raison;
    return false;
  }

  bool rassembler() {
    const bool lu = !m_demande.liste.empty()    ? rassemblerListe()
                    : !m_demande.calque.empty() ? rassemblerCalque()
                                                : rassemblerCode();
    if (m_stations > 0)
      m_resultat.remarques.ajouter(
          base::formater(L"points qui sont des stations, laissés de côté : %d", m_stations));
    return lu && (!m_points.empty() || echec(L"aucun point à implanter"));
  }
  /// A point that is a station of that name at that place is not set out.
  void ajouter(const std::wstring& nom, double x, double y) {
    if (m_lieuxStations.empty())
      for (const pointDuDessin& p : *tablesPoints->currTable()->getData())
        if (p.code == m_demande.codeStations)
          m_lieuxStations.emplace(cle(base::widen(p.getNomPoint())), AcGePoint2d(p.x, p.y));
    const auto [debut, fin] = m_lieuxStations.equal_range(cle(nom));
    if (std::any_of(debut, fin, [&](const auto& s) { return s.second.x == x && s.second.y == y; })) {
      ++m_stations;
      return;
    }
    m_points.emplace_back(x, y);
    m_noms.push_back(nom.empty() ? m_plan.numerotation.suivant() : nom);
  }
  bool rassemblerListe() {
    listeLue lue;
    resultatPoints lecture;
    const bool bonne = lireListePoints({m_demande.liste, {}}, lue, lecture);
    m_resultat.remarques.ajouter(lecture.remarques);
    if (!bonne) return echec(lecture.erreur);
    for (const ligneListe& ligne : lue.lignes) ajouter(ligne.point.nom, ligne.point.x, ligne.point.y);
    return true;
  }
  bool rassemblerCode() {
    for (const pointDuDessin& p : *tablesPoints->currTable()->getData())
      if (p.code == m_demande.code) ajouter(base::widen(p.getNomPoint()), p.x, p.y);
    return true;
  }
  bool rassemblerCalque() {
    AcDbDatabase& dessin = *acdbHostApplicationServices()->workingDatabase();
    const AcDbObjectId calque = recordNamed(dessin.layerTableId(), m_demande.calque);
    if (calque.isNull()) return echec(L"le dessin n'a pas de calque « " + m_demande.calque + L" »");
    projetImplantation projet;
    const bool erreurMax = m_demande.fleche > 0.0;
    paramsImplantation& params = projet.params;
    params.modeArcs = params.modeClothoides = erreurMax ? params.kErreurMax : params.kParPas;
    params.distArcs = params.distClothoides = erreurMax ? m_demande.fleche : m_demande.pas;
    params.interpolerDroites = m_demande.pasDroites > 0.0 ? 1 : 0;
    if (m_demande.pasDroites > 0.0) params.distDroites = m_demande.pasDroites;
    projet.dessin.numeros = 0;  // nothing is drawn
    const ServicesTerrain terrain;
    std::vector<AcDbObjectId> entites;
    {
      const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
      entites = espace->entities();
    }
    for (const AcDbObjectId& id : entites) {
      {
        const AcDbObjectPointer<AcDbEntity> entite(id);
        if (entite.openStatus() != Acad::eOk || entite->layerId() != calque) continue;
      }
      if (!ajouterElement(projet, terrain, id))
        return echec(L"un élément du calque donnerait plus d'un million de points");
    }
    for (const observationImplantation& point : projet.points) ajouter(point.nom, point.x, point.y);
    return true;
  }

  void lister() {
    const uniteAngle& unite = uniteDeMode(m_demande.modeAngle);
    std::wstring& texte = m_resultat.listing;
    texte = L"Implantation automatique, angles en " + std::wstring(unite.nom) + L"\n";
    const double versUnite = uniteDeMode(0).versRadians / unite.versRadians;
    std::size_t largeur = 8;
    for (const AcString& nom : m_noms) largeur = std::max(largeur, nom.size() + 2);
    const auto colonne = [largeur](std::wstring mot) {
      mot.resize(std::max(largeur, mot.size()), L' ');
      return mot;
    };
    for (const viseesPlan& liste : viseesDuPlan(m_plan)) {
      ++m_resultat.stations;
      texte += L"\nStation " + nomDe(liste.station);
      texte += liste.reference < 0
                   ? std::wstring(L", sans référence\n")
                   : base::formater(L", référence %s, gisement %.4f\n", nomDe(liste.reference),
                                    liste.gisReference / unite.versRadians);
      texte += colonne(L"Point") + base::formater(L"%15s%15s%15s%15s\n", L"X", L"Y", L"Angle", L"Distance");
      for (const int rang : liste.points)
        texte += colonne(m_plan.nom(rang)) +
                 base::formater(L" %14.4f %14.4f %14.4f %14.4f\n", m_plan.point(rang).x, m_plan.point(rang).y,
                                liste.angleVers(m_plan, rang) * versUnite, liste.distanceVers(m_plan, rang));
    }
    m_resultat.points = m_plan.nbPoints();
  }

  bool ecrire() {
    if (!m_demande.rapport.empty() &&
        !ecrireRapportPlan(m_plan, base::texteDuChemin(m_demande.rapport), m_resultat.erreur))
      return false;
    return ecrireOctets(base::toUtf8(textePlan(m_plan)), m_demande.texte, m_resultat.erreur) &&
           (m_resultat.retenu ||
            ecrireOctets(base::toUtf8(csvPlan(m_plan)), m_demande.csv, m_resultat.erreur));
  }
  bool dessiner() {
    if (!m_demande.dessiner || m_resultat.retenu) return true;
    reglagesImplantation& reglages = reglagesImplantation::commun();
    if (m_demande.hauteurTexte > 0.0) reglages.poserHauteurTexte(m_demande.hauteurTexte);
    schematiserPlan(m_plan, {});
    if (m_demande.tables)
      dessinerTablesPlan(m_plan, {m_demande.tables->x, m_demande.tables->y, 0.0}, reglages.hauteurTexte);
    return true;
  }

  const demandePlanifier& m_demande;
  resultatPlanifier& m_resultat;
  planImplantationAuto m_plan;
  std::vector<AcGePoint2d> m_points;
  std::vector<AcString> m_noms;
  std::multimap<std::wstring, AcGePoint2d> m_lieuxStations;
  int m_stations = 0;  ///< points passed over
};

void douterDe(const std::vector<std::wstring>& noms, const std::wstring& texte, base::Remarques& remarques) {
  if (!noms.empty())
    remarques.douter(base::formater(L"%s (%d) : ", texte, static_cast<int>(noms.size())) +
                     base::enumerer(noms));
}

}  // namespace

void controlerPlan(const planImplantationAuto& plan, double porteeMin, double porteeMax,
                   base::Remarques& remarques) {
  std::vector<std::wstring> aLaStation;
  std::vector<std::wstring> horsPortee;
  std::vector<std::wstring> doubles;
  std::map<std::wstring, int> noms;
  for (int i = 0; i < plan.nbPoints() && plan.nbColonnes() > 0; ++i) {
    const double distance = plan.tableStations(i, 0).distance;
    if (distance < kMemeLieu)
      aLaStation.push_back(plan.nom(i));
    else if (!(porteeMin <= distance && distance <= porteeMax))
      horsPortee.push_back(plan.nom(i));
    if (++noms[cle(plan.nom(i))] == 2) doubles.push_back(plan.nom(i));
  }
  std::vector<std::wstring> seules;
  std::vector<std::wstring> confondues;
  for (const viseesPlan& liste : viseesDuPlan(plan)) {
    if (liste.reference < 0) {
      seules.push_back(nomDe(liste.station));
      continue;
    }
    const pointDuDessin& s = pointDeTable(liste.station);
    const pointDuDessin& r = pointDeTable(liste.reference);
    if (AcGePoint2d(s.x, s.y).distanceTo({r.x, r.y}) < kMemeLieu) confondues.push_back(nomDe(liste.station));
  }
  douterDe(aLaStation, L"points à leur station même, dont l'angle n'a pas de sens", remarques);
  douterDe(horsPortee, L"points hors de la portée voulue de leur station", remarques);
  douterDe(doubles, L"noms que portent plusieurs points", remarques);
  douterDe(seules, L"stations sans référence, dont les angles sont des gisements", remarques);
  douterDe(confondues, L"stations dont la référence est au même endroit", remarques);
}

bool planifierImplantation(const demandePlanifier& demande, resultatPlanifier& resultat) {
  resultat = {};
  if (!acdbHostApplicationServices()->workingDatabase() || !tablesPoints) {
    resultat.erreur = kSansProjet;
    return false;
  }
  return Planification(demande, resultat).faire();
}

}  // namespace veltora
