// The module's entry: every message of the host comes in here.

#include "arx/db/dbservices.h"
#include "arx/rx/appmsg.h"
#include "arx/rx/rxdlinkr.h"
#include "base/export.h"
#include "calc/dialogs/calculs_topo_dlg.h"
#include "codes/dialogs/tab_codification_dlg.h"
#include "core/installation.h"
#include "host/commandes.h"
#include "host/donnees_document.h"
#include "host/lisp/table_lisp.h"
#include "jobs/feuille_calculs.h"
#include "points/infos_topo.h"

namespace veltora {
namespace {

const AsdkDataManager<CDocData> s_donneesDocuments;

/// The library of blocks is one of the paths on which the host looks files up.
void annoncerBibliotheque() {
  const std::filesystem::path dossier = dossierInstallation();
  if (!dossier.empty()) acdbHostApplicationServices()->addSupportFolder(dossier / "biblio");
}

}  // namespace
}  // namespace veltora

extern "C" VELTORA_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId);

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg:
      acrxDynamicLinker->unlockApplication(appId);
      acrxDynamicLinker->registerAppMDIAware(appId);
      veltora::enregistrerCommandes();
      veltora::installerDialoguesCodes();
      veltora::installerFeuilleCalculs([] { veltora::CDlgCalculsTopo().doModal(); });
      veltora::annoncerBibliotheque();
      break;
    case AcRx::kUnloadAppMsg:
      veltora::retirerCommandes();
      break;
    case AcRx::kLoadDwgMsg:
      veltora::enregistrerFonctionsLisp();
      break;
    case AcRx::kUnloadDwgMsg:
      veltora::retirerFonctionsLisp();
      break;
    case AcRx::kInvkSubrMsg:
      veltora::appelerFonctionLisp();
      break;
    case AcRx::kSaveMsg:
      veltora::sauvegarderInfosTopo();
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}
