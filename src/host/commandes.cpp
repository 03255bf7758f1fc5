#include "host/commandes.h"

#include "arx/db/dblines.h"
#include "arx/ed/accmd.h"
#include "arx/ed/acutads.h"
#include "arx/rx/rxdict.h"
#include "calc/dialogs/fermee_dlg.h"
#include "calc/dialogs/moindres_carres_dlg.h"
#include "calc/dialogs/ouverte_dlg.h"
#include "codes/commandes_codes.h"
#include "core/drawing_space.h"
#include "drafting/dialogs/formulaire_xyz_dlg.h"
#include "drafting/dialogs/points_dlg.h"
#include "points/projets_topo.h"

#include <array>
#include <memory>

namespace veltora {
namespace {

constexpr const ACHAR* kGroupe = L"VELTORA4";

struct commande {
  const ACHAR* nom;
  Adesk::Int32 options;
  AcRxFunctionPtr fonction;
};

void corrPolFermee() { corrPolygoDLG().doModal(); }
void corrPolOuverte() { corrPolygoOuverteDLG().doModal(); }
void corrMCarres() { CDlgMoindresCarres().doModal(); }

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

template <std::size_t Rang>
void nonDisponible();

constexpr std::array<commande, 13> kCommandes{{
    {L"CARROYAGE", ACRX_CMD_USEPICKSET, nonDisponible<0>},
    {L"VCODIFICATION", ACRX_CMD_TRANSPARENT, vcodification},
    {L"COORDSXYZ", ACRX_CMD_MODAL, coordsXYZ},
    {L"CORRPOLFERMEE", ACRX_CMD_MODAL, corrPolFermee},
    {L"CORRPOLOUVERTE", ACRX_CMD_MODAL, corrPolOuverte},
    {L"CORRMCARRES", ACRX_CMD_MODAL, corrMCarres},
    {L"IMPORTGSI", ACRX_CMD_MODAL, nonDisponible<6>},
    {L"RECT3PT", ACRX_CMD_TRANSPARENT | ACRX_CMD_USEPICKSET, nonDisponible<7>},
    {L"IMPORTPOINTS", ACRX_CMD_USEPICKSET, pointsDuDessin<DlgPntsDuDessin::kImportPoints>},
    {L"EXPORTPOINTS", ACRX_CMD_USEPICKSET, pointsDuDessin<DlgPntsDuDessin::kExportPoints>},
    {L"TABLEXYZ", ACRX_CMD_USEPICKSET, pointsDuDessin<DlgPntsDuDessin::kTableXYZ>},
    {L"MAJPOINTS", ACRX_CMD_USEPICKSET, pointsDuDessin<DlgPntsDuDessin::kMajPoints>},
    {L"PTSEN3D", ACRX_CMD_MODAL, ptsEn3D},
}};

template <std::size_t Rang>
void nonDisponible() {
  acutPrintf(L"\nLa commande %s n'est pas encore disponible dans cette version.", kCommandes[Rang].nom);
}

AcEdCommandStack* pileDeCommandes() {
  return AcEdCommandStack::cast(acrxSysRegistry()->at(ACAD_REGISTERED_COMMANDS));
}

}  // namespace

void enregistrerCommandes() {
  AcEdCommandStack* pile = pileDeCommandes();
  if (!pile) return;
  for (const commande& c : kCommandes) pile->addCommand(kGroupe, c.nom, c.nom, c.options, c.fonction);
}

void retirerCommandes() {
  if (AcEdCommandStack* pile = pileDeCommandes()) pile->removeGroup(kGroupe);
}

}  // namespace veltora
