#include "terrain/commandes_terrain.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "core/picking.h"
#include "terrain/dessin_terrain.h"
#include "terrain/lecture_dessin.h"
#include "terrain/mnt_dlg.h"
#include "terrain/terrains_ouverts.h"
#include "ui/driver.h"

#include <cmath>

namespace veltora::terrain {
namespace {

constexpr double kPlusGrande = 1e6;  ///< sizes that prompts take

void mnt(AcDbDatabase& dessin) { DlgMnt(dessin).doModal(); }

/// The terrain that the other commands work on; a message where there is none.
const Terrain* terrainDeTravail(AcDbDatabase& dessin) {
  const Terrain* const terrain = terrainCourant(dessin);
  if (const int nombre = illisibles(dessin); nombre > 0)
    acutPrintf(L"\nTerrains illisibles dans ce dessin : %d", nombre);
  if (!terrain) acutPrintf(L"\nCe dessin n'a pas de terrain : la commande MNT en fait un.");
  return terrain;
}

bool confirmer(const std::wstring& texte, const wchar_t* titre) {
  return ui::messageBox(L"À confirmer : " + texte + L"\nContinuer ?", titre, ui::Buttons::YesNo) == ui::kYes;
}

bool demander(const wchar_t* invite, const wchar_t* format, double basse, double& valeur) {
  if (!askDistance(base::formater(invite, base::formater(format, valeur)), valeur)) return false;
  if (valeur >= basse && valeur <= kPlusGrande) return true;
  acutPrintf(L"\nIl faut une valeur de %g à %.0f.", basse, kPlusGrande);
  return false;
}

void mntz(AcDbDatabase& dessin) {
  const Terrain* const terrain = terrainDeTravail(dessin);
  if (!terrain) return;
  ads_point lu = {0.0, 0.0, 0.0};
  while (acedGetPoint(nullptr, L"\nPoint dont l'altitude est cherchée : ", lu) == RTNORM) {
    AcGePoint3d point(lu[0], lu[1], 0.0);
    if (terrain->surface().altitude(point))
      acutPrintf(L"\nX = %.3f  Y = %.3f  Z = %.3f", point.x, point.y, point.z);
    else
      acutPrintf(L"\nX = %.3f  Y = %.3f  hors du terrain « %s »", point.x, point.y, terrain->modele().nom);
  }
}

void mntProfil(AcDbDatabase& dessin) {
  const Terrain* const terrain = terrainDeTravail(dessin);
  AcDbObjectId id;
  if (!terrain || pickEntity(L"\nLigne du profil : ", id) != RTNORM) return;
  std::vector<AcGePoint3d> axe;
  {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    bool fermee = false;
    axe = sommetsDe(*entite, fermee);
    if (fermee && axe.size() > 1 && !(axe.front() == axe.back())) axe.push_back(axe.front());
  }
  if (axe.size() < 2) return void(acutPrintf(L"\nCe n'est pas une ligne."));
  const Profil profil = profilLeLong(terrain->surface(), axe);
  if (profil.empty()) return void(acutPrintf(L"\nLa ligne ne passe pas sur le terrain."));
  AspectProfil aspect;
  ads_point coin = {0.0, 0.0, 0.0};
  if (!demander(L"\nExagération des altitudes <%s> : ", L"%g", kPlusFine, aspect.exageration)) return;
  if (!demander(L"\nHauteur des textes <%s> : ", L"%g", kPlusFine, aspect.hauteurTexte)) return;
  if (acedGetPoint(nullptr, L"\nCoin inférieur gauche du profil : ", coin) != RTNORM) return;
  aspect.coin = {coin[0], coin[1], coin[2]};
  std::wstring erreur;
  if (!dessinerProfil(dessin, profil, aspect, erreur))
    return void(acutPrintf(L"\nProfil impossible : %s.", erreur));
  acutPrintf(L"\nProfil de %d points en %d tronçon(s), de 0.00 à %.2f.",
             static_cast<int>(nombreDePlaces(profil)), static_cast<int>(profil.size()),
             profil.back().back().distance);
}

void courbes(AcDbDatabase& dessin) {
  const Terrain* const terrain = terrainDeTravail(dessin);
  if (!terrain) return;
  AspectCourbes aspect;
  if (!demander(L"\nEquidistance <%s> : ", L"%g", kPlusFine, aspect.equidistance)) return;
  double maitresse = aspect.equidistance * aspect.maitresses;
  if (!demander(L"\nEquidistance des courbes maîtresses <%s> : ", L"%g", kPlusFine, maitresse)) return;
  const double rapport = maitresse / aspect.equidistance;
  aspect.maitresses = static_cast<int>(std::lround(rapport));
  if (aspect.maitresses < 1 || std::abs(rapport - aspect.maitresses) > 1e-9 * rapport)
    return void(acutPrintf(L"\nL'équidistance des courbes maîtresses doit être un multiple de l'autre."));
  const double ampleur = ampleurCourbes(terrain->surface(), aspect.equidistance);
  if (ampleur > kDemesure &&
      !confirmer(base::formater(L"les courbes compteraient %.0f sommets.", ampleur), L"Courbes"))
    return;
  BilanCourbes bilan;
  std::wstring erreur;
  if (!dessinerCourbes(dessin, terrain->surface(), aspect, bilan, erreur))
    return void(acutPrintf(L"\nCourbes impossibles : %s.", erreur));
  if (bilan.anciennes > 0)
    acutPrintf(L"\nLes calques des courbes portaient déjà %d polylignes, qui restent.", bilan.anciennes);
  acutPrintf(L"\nCourbes : %d, dont maîtresses : %d%s", bilan.courbes, bilan.maitresses,
             bilan.interrompu ? L" (interrompu)" : L"");
}

void mntFaces(AcDbDatabase& dessin) {
  const Terrain* const terrain = terrainDeTravail(dessin);
  if (!terrain) return;
  const auto nombre = static_cast<double>(terrain->surface().faces().size());
  if (nombre > kDemesure && !confirmer(base::formater(L"le terrain compte %.0f faces.", nombre), L"Faces"))
    return;
  std::wstring erreur;
  const int dessinees = dessinerFaces(dessin, terrain->surface(), erreur);
  if (dessinees < 0) return void(acutPrintf(L"\nFaces impossibles : %s.", erreur));
  acutPrintf(L"\nFaces 3D : %d", dessinees);
}

}  // namespace

bool executerCommande(const std::wstring& nom) {
  struct Commande {
    const wchar_t* nom;
    void (*fonction)(AcDbDatabase&);
  };
  static constexpr Commande kCommandes[] = {{L"MNT", mnt},
                                            {L"MNTZ", mntz},
                                            {L"MNTPROFIL", mntProfil},
                                            {L"COURBES", courbes},
                                            {L"MNTFACES", mntFaces}};
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  for (const Commande& commande : kCommandes) {
    if (nom != commande.nom) continue;
    if (dessin) commande.fonction(*dessin);
    return true;
  }
  return false;
}

}  // namespace veltora::terrain
