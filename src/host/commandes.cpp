#include "host/commandes.h"

#include "arx/db/dblines.h"
#include "arx/ed/accmd.h"
#include "arx/ed/acedads.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edhelp.h"
#include "arx/rx/rxdict.h"
#include "base/text.h"
#include "calc/dialogs/fermee_dlg.h"
#include "calc/dialogs/leve_dlg.h"
#include "calc/dialogs/moindres_carres_dlg.h"
#include "calc/dialogs/ouverte_dlg.h"
#include "codes/commandes_codes.h"
#include "core/drawing_space.h"
#include "core/picking.h"
#include "drafting/clothoids/commande_clothoide.h"
#include "drafting/dialogs/carroyage_dlg.h"
#include "drafting/dialogs/formulaire_xyz_dlg.h"
#include "drafting/dialogs/points_dlg.h"
#include "drafting/polylines/rectoriente_jig.h"
#include "field/dialogs/import_gsi_dlg.h"
#include "host/lisp/table_lisp.h"
#include "host/tracer.h"
#include "jobs/tableau.h"
#include "jobs/terrain.h"
#include "points/projets_topo.h"
#include "stakeout/dialogs/implantation_auto_dlg.h"

#include <array>
#include <memory>

namespace veltora {
namespace {

constexpr const ACHAR* kGroupe = L"VELTORA4";

struct commande {
  const ACHAR* nom;
  Adesk::Int32 options;
  AcRxFunctionPtr fonction;
  descriptionAide aide;
  const ACHAR* nomGlobal = nullptr;  ///< in every language; null for the same name
};

void corrPolFermee() { corrPolygoDLG().doModal(); }
void corrPolOuverte() { corrPolygoOuverteDLG().doModal(); }
void corrMCarres() { CDlgMoindresCarres().doModal(); }
void importGsi() { ImportGSI().doModal(); }

void rect3Pt() { rectorienteJig().dessiner(); }

template <DlgPntsDuDessin::Mode Mode>
void pointsDuDessin() {
  montrerPointsDuDessin(Mode);
}

/// Adds a host point for each point of the current table that has an altitude.
void ptsEn3D() {
  if (!tablesPoints) return;
  const listePointsDuDessin& table = *tablesPoints->currTable();
  DrawingSpace espace;
  if (!espace.ready()) return;
  constexpr double kAltitudeExtreme = 1e8;
  for (const pointDuDessin& point : *table.getData()) {
    if (!(-kAltitudeExtreme <= point.z && point.z < kAltitudeExtreme)) continue;
    espace.add(std::make_unique<AcDbPoint>(point.getAs3dPnt()));
  }
  acutPrintf(L"\n%d points", table.nbPoint());
}

/// Draws the coordinates of the current table's points as one object at a point that the user gives.
void tableCoord() {
  demandeTableau demande;
  resultatTableau resultat;
  ads_point coin = {0.0, 0.0, 0.0};
  if (!tablesPoints || tablesPoints->currTable()->nbPoint() == 0) {
    acutPrintf(L"\nLa table courante ne contient aucun point.");
    return;
  }
  if (!askDistance(L"\nHauteur des textes <2.5> : ", demande.hauteur)) return;
  if (!(demande.hauteur > 0)) {
    acutPrintf(L"\nLa hauteur des textes doit être supérieure à 0.");
    return;
  }
  if (acedGetPoint(nullptr, L"\nCoin supérieur gauche du tableau : ", coin) != RTNORM) return;
  demande.coin = {coin[0], coin[1], coin[2]};
  if (dessinerTableau(demande, resultat))
    acutPrintf(L"\n%d points en tableau.", resultat.points);
  else
    acutPrintf(L"\nTableau impossible : %s.", resultat.erreur);
}

/// Of the sibling module, which may be missing.
template <std::size_t Rang>
void duTerrain();

constexpr std::array<commande, 23> kCommandes{{
    {L"CARROYAGE",
     ACRX_CMD_USEPICKSET,
     carroyage,
     {L"Plan", L"Le carroyage de régions : croix, amorces, coordonnées"}},
    {L"VCODIFICATION",
     ACRX_CMD_TRANSPARENT,
     vcodification,
     {L"Codes", L"La table des codes : libellés, calques, symboles"}},
    {L"COORDSXYZ",
     ACRX_CMD_MODAL,
     coordsXYZ,
     {L"Points", L"Une liste de coordonnées (.xyz) : chargée, placée, écrite"}},
    {L"CORRPOLFERMEE", ACRX_CMD_MODAL, corrPolFermee, {L"Calculs", L"Polygonale fermée (.obs)"}},
    {L"CORRPOLOUVERTE",
     ACRX_CMD_MODAL,
     corrPolOuverte,
     {L"Calculs", L"Polygonale ouverte entre deux stations connues (.obs)"}},
    {L"CORRMCARRES", ACRX_CMD_MODAL, corrMCarres, {L"Calculs", L"Réseau par moindres carrés (.mc)"}},
    {L"IMPORTGSI",
     ACRX_CMD_MODAL,
     importGsi,
     {L"Calculs", L"Un carnet de terrain GSI, lu et montré en clair"}},
    {L"RECT3PT",
     ACRX_CMD_TRANSPARENT | ACRX_CMD_USEPICKSET,
     rect3Pt,
     {L"Points", L"Un rectangle de toute direction, par trois points"}},
    {L"IMPORTPOINTS",
     ACRX_CMD_USEPICKSET,
     pointsDuDessin<DlgPntsDuDessin::kImportPoints>,
     {L"Points", L"Reprend en points les entités du dessin"}},
    {L"EXPORTPOINTS",
     ACRX_CMD_USEPICKSET,
     pointsDuDessin<DlgPntsDuDessin::kExportPoints>,
     {L"Points", L"Écrit des points : texte ou rapport"}},
    {L"TABLEXYZ",
     ACRX_CMD_USEPICKSET,
     pointsDuDessin<DlgPntsDuDessin::kTableXYZ>,
     {L"Points", L"Dessine le tableau des coordonnées"}},
    {L"MAJPOINTS",
     ACRX_CMD_USEPICKSET,
     pointsDuDessin<DlgPntsDuDessin::kMajPoints>,
     {L"Points", L"Relit la table d'après les blocs du dessin"}},
    {L"PTSEN3D", ACRX_CMD_MODAL, ptsEn3D, {L"Points", L"Dessine un point 3D par point de la table"}},
    {L"TABLECOORD",
     ACRX_CMD_MODAL,
     tableCoord,
     {L"Points", L"Pose les coordonnées des points en un tableau d'un seul objet"}},
    {L"MNT",
     ACRX_CMD_MODAL,
     duTerrain<14>,
     {L"Terrain", L"Les terrains du dessin : créer, choisir, supprimer"}},
    {L"MNTZ", ACRX_CMD_MODAL, duTerrain<15>, {L"Terrain", L"L'altitude du terrain en un point"}},
    {L"MNTPROFIL",
     ACRX_CMD_MODAL,
     duTerrain<16>,
     {L"Terrain", L"Le profil du terrain le long d'une ligne, dessiné et en tableau"}},
    {L"COURBES", ACRX_CMD_MODAL, duTerrain<17>, {L"Terrain", L"Les courbes de niveau du terrain"}},
    {L"MNTFACES", ACRX_CMD_MODAL, duTerrain<18>, {L"Terrain", L"Dessine les faces du terrain"}},
    {L"TRACER",
     ACRX_CMD_MODAL,
     tracer,
     {L"Plan", L"Le plan du dessin à l'échelle, en PDF, SVG ou PNG"},
     L"PLOT"},
    {L"CLOTHOIDE",
     ACRX_CMD_MODAL,
     commandeClothoide,
     {L"Plan", L"Une clothoïde par ses rayons, ses extrémités et l'intersection de ses tangentes"}},
    {L"IMPLANTAUTO",
     ACRX_CMD_MODAL,
     implantationAuto,
     {L"Calculs", L"Implante des points depuis les plus proches des stations d'un code"}},
    {L"LEVER",
     ACRX_CMD_MODAL,
     commandeLever,
     {L"Calculs", L"Un carnet GSI et un canevas : stations et points calculés, placés"}},
}};

template <std::size_t Rang>
void duTerrain() {
  commandeTerrain(kCommandes[Rang].nom);
}

/// Tells AIDE of what there is, subject by subject.
void decrireCommandes() {
  for (const std::wstring_view sujet : {L"Calculs", L"Points", L"Codes", L"Plan", L"Terrain"}) {
    const auto decrire = [sujet](const descriptionAide& aide, const std::wstring& nom) {
      if (aide.sujet && aide.sujet == sujet) acedDescribeCommand({kGroupe, aide.sujet, nom, aide.ligne});
    };
    for (const commande& c : kCommandes) decrire(c.aide, c.nom);
    for (const fonctionLisp& f : tableFonctionsLisp)
      if (f.aide.sujet)
        decrire(f.aide, base::toUpper(f.nom + 2));  // behind "c:" stands the name of a command
  }
}

AcEdCommandStack* pileDeCommandes() {
  return AcEdCommandStack::cast(acrxSysRegistry()->at(ACAD_REGISTERED_COMMANDS));
}

}  // namespace

void enregistrerCommandes() {
  AcEdCommandStack* pile = pileDeCommandes();
  if (!pile) return;
  for (const commande& c : kCommandes)
    pile->addCommand(kGroupe, c.nomGlobal ? c.nomGlobal : c.nom, c.nom, c.options, c.fonction);
  decrireCommandes();
}

void retirerCommandes() {
  if (AcEdCommandStack* pile = pileDeCommandes()) pile->removeGroup(kGroupe);
  acedForgetDescriptions(kGroupe);
}

}  // namespace veltora
