#include "jobs/helmert.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/helmert/couples_fichier.h"
#include "calc/helmert/rapport_helmert.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "report/html_document.h"

namespace veltora {
namespace {

constexpr std::size_t kCouplesMinimum = 3;

void transformerDessin(const AcGeMatrix3d& matrice, resultatHelmertUnAppel& resultat) {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return;
  std::vector<AcDbObjectId> entites;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin->modelSpaceId(), AcDb::kForRead);
    if (espace.openStatus() != Acad::eOk) return;
    for (const AcDbObjectId id : espace->entities()) entites.push_back(id);
  }
  for (const AcDbObjectId id : entites) {
    const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite);
    if (entite.openStatus() != Acad::eOk) continue;
    const bool portee = entite->transformBy(matrice) == Acad::eOk;
    ++(portee ? resultat.transformees : resultat.refusees);
  }
}

bool lire(const demandeHelmert& demande, couplesNommes& lus, resultatHelmertUnAppel& resultat) {
  const std::wstring nom = base::fromUtf8(demande.fichier.string());
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = L"« " + nom + L" » : fichier introuvable ou illisible";
    return false;
  }
  resultat.erreur = refusDuGenre(nom, *octets, genreFichier::couples);
  if (!resultat.erreur.empty()) return false;
  lus = lireCouples(*octets);
  resultat.remarques = lus.remarques;
  resultat.remarques.situer(base::fromUtf8(demande.fichier.filename().string()));
  if (lus.noms.size() >= kCouplesMinimum) return true;
  resultat.erreur = base::formater(L"« %s » : %d couple%s de points, il en faut au moins trois", nom.c_str(),
                                   static_cast<int>(lus.noms.size()), lus.noms.size() > 1 ? L"s" : L"");
  return false;
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
  resultat.ecarts = calculerEcarts(portes, couples.arrivee);
  for (std::size_t i = 0; i < portes.size(); ++i) {
    resultat.residus.push_back({lus.noms[i], portes[i] - couples.arrivee[i]});
  }
  htmlDocument rapport;
  rapportHelmert(couples, rapport);
  if (!ecrireRapport(rapport, demande.rapport, resultat.erreur)) return false;
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (demande.appliquer && !resultat.retenu)
    transformerDessin(matriceHelmert(couples.depart, resultat.parametres), resultat);
  return true;
}

}  // namespace veltora
