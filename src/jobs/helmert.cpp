#include "jobs/helmert.h"

#include "arx/db/dbgroupmap.h"
#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/helmert/controle_helmert.h"
#include "calc/helmert/couples_fichier.h"
#include "calc/helmert/rapport_helmert.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "points/exchange/table_obs_xyz.h"
#include "points/projets_topo.h"
#include "report/html_document.h"

namespace veltora {
namespace {

/// The entities of model space.
std::vector<AcDbObjectId> entitesDuDessin() {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin ? dessin->modelSpaceId() : AcDbObjectId());
  return espace ? espace->entities() : std::vector<AcDbObjectId>();
}

/// @return false, with the error set, when an entity cannot be carried along
bool seTransforment(const std::vector<AcDbObjectId>& entites, resultatHelmertUnAppel& resultat) {
  const std::wstring fixes = acdbImmovable(entites);
  if (fixes.empty()) return true;
  resultat.erreur = L"rien n'est transformé, ces objets du dessin ne peuvent pas l'être : " + fixes;
  return false;
}

void transformer(const std::vector<AcDbObjectId>& entites, const AcGeMatrix3d& matrice,
                 resultatHelmertUnAppel& resultat) {
  for (const AcDbObjectId id : entites) {
    const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite);
    if (entite.openStatus() != Acad::eOk) continue;
    const bool portee = entite->transformBy(matrice) == Acad::eOk;
    ++(portee ? resultat.transformees : resultat.refusees);
  }
}

bool lire(const demandeHelmert& demande, couplesNommes& lus, resultatHelmertUnAppel& resultat) {
  const std::wstring nom = base::texteDuChemin(demande.fichier);
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = L"« " + nom + L" » : fichier introuvable ou illisible";
    return false;
  }
  resultat.erreur = refusDuGenre(nom, *octets, genreFichier::couples);
  if (!resultat.erreur.empty()) return false;
  lus = lireCouples(*octets);
  resultat.remarques = lus.remarques;
  resultat.remarques.situer(base::texteDuChemin(demande.fichier.filename()));
  if (lus.noms.size() >= kCouplesMinimum) return true;
  resultat.erreur = base::formater(L"« %s » : %d couple%s de points, il en faut au moins trois", nom.c_str(),
                                   static_cast<int>(lus.noms.size()), lus.noms.size() > 1 ? L"s" : L"");
  return false;
}

/// Carries the points of the drawing's tables, or says that they stay behind.
void porterTables(const demandeHelmert& demande, const AcGePoint2d& centre,
                  resultatHelmertUnAppel& resultat) {
  if (!tablesPoints) return;
  int points = 0;
  for (listePointsDuDessin* table : tablesPoints->tablesListe) {
    points += table->nbPoint();
    if (!demande.tables) continue;
    for (pointDuDessin& point : *table->getData()) {
      const AcGePoint2d p = porterPoint({point.x, point.y}, resultat.parametres, centre);
      point.setXY(p.x, p.y, point.z);
    }
  }
  if (points > 0 && !demande.tables) {
    resultat.remarques.ajouter(
        base::formater(L"les tables gardent les anciennes coordonnées de leurs points (%d) ; --tables les "
                       L"porte avec le dessin",
                       points));
  }
}

bool lireListe(const demandeHelmert& demande, tableObsXYZ& liste, resultatHelmertUnAppel& resultat) {
  const std::wstring nom = L"« " + base::texteDuChemin(demande.points) + L" »";
  const auto octets = base::lireFichier(demande.points);
  if (!octets) {
    resultat.erreur = nom + L" : fichier introuvable ou illisible";
    return false;
  }
  resultat.erreur = refusDuGenre(base::texteDuChemin(demande.points), *octets, genreFichier::xyz);
  if (!resultat.erreur.empty()) return false;
  liste.colonneZCompte = true;
  liste.lire(*octets);
  base::Remarques lues = liste.remarques;
  lues.situer(base::texteDuChemin(demande.points.filename()));
  resultat.remarques.citer(lues);
  if (liste.lignes.empty()) resultat.erreur = nom + L" : aucun point";
  return !liste.lignes.empty();
}

bool ecrireListe(const demandeHelmert& demande, tableObsXYZ& liste, const AcGePoint2d& centre,
                 resultatHelmertUnAppel& resultat) {
  for (pointXYZ& ligne : liste.lignes) {
    const AcGePoint2d p = porterPoint({ligne.x, ligne.y}, resultat.parametres, centre);
    ligne.x = p.x;
    ligne.y = p.y;
  }
  if (!ecrireOctets(liste.contenu(), demande.vers, resultat.erreur)) return false;
  resultat.portes = static_cast<int>(liste.lignes.size());
  return true;
}

}  // namespace

bool executerHelmert(const demandeHelmert& demande, resultatHelmertUnAppel& resultat) {
  resultat = {};
  couplesNommes lus;
  if (!lire(demande, lus, resultat)) return false;
  const couplesHelmert& couples = lus.couples;
  std::vector<AcGePoint2d> portes;
  if (!transformerHelmert(couples, portes, resultat.parametres)) {
    resultat.erreur = L"transformation indéterminée : les points de départ sont confondus ou trop proches";
    return false;
  }
  tableObsXYZ liste;
  const bool avecListe = !demande.points.empty();
  if (avecListe && !lireListe(demande, liste, resultat)) return false;
  controlerCouples(lus, portes, resultat.remarques);
  const AcGePoint2d centre = centreDes(couples.depart);
  resultat.translation = translationOrigine(couples.depart, resultat.parametres);
  resultat.ecarts = calculerEcarts(portes, couples.arrivee);
  for (std::size_t i = 0; i < portes.size(); ++i) {
    resultat.residus.push_back({lus.noms[i], portes[i] - couples.arrivee[i]});
  }
  htmlDocument rapport;
  rapportHelmert(couples, rapport);
  if (!ecrireRapport(rapport, demande.rapport, resultat.erreur)) return false;
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  const std::vector<AcDbObjectId> entites =
      demande.appliquer ? entitesDuDessin() : std::vector<AcDbObjectId>();
  if (!seTransforment(entites, resultat)) return false;
  if (avecListe && !ecrireListe(demande, liste, centre, resultat)) return false;
  if (!demande.appliquer) return true;
  transformer(entites, matriceHelmert(couples.depart, resultat.parametres), resultat);
  porterTables(demande, centre, resultat);
  return true;
}

}  // namespace veltora
