// The module's functions called from LISP: points entered and placed by a routine, found again, and entered a
// second time over the first.

#include "arx/ap/acdocman.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/aclisp.h"
#include "arx/rx/rxdlinkr.h"
#include "base/files.h"
#include "core/installation.h"
#include "mesure.h"
#include "points/infos_topo.h"

#include <cstdlib>
#include <filesystem>
#include <string>

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId);

namespace {

void evaluate(const std::wstring& expression) {
  const AcEdRbHolder value(acedPorts().evaluate(expression));
  if (value) return;
  std::fprintf(stderr, "an expression failed\n");
  std::exit(1);
}

void run(Mesure& measure, int n) {
  acDocManager->appContextNewDocument();
  veltora::projetsTopo project;
  veltora::setSrcInfosTopo(nullptr, &project, 1, 0);
  const std::wstring count = std::to_wstring(n);
  const std::wstring enter =
      L"(progn (setq i 0) (repeat " + count +
      L" (setq i (1+ i)) (tpcdaddpt (itoa i) 1 (list (* 1.0 (rem i 1000)) (/ i 1000.0)) "
      L"10.0 \"\")))";
  AcDbDatabase& drawing = *acDocManager->curDocument()->database();
  drawing.undoLog().begin(L"LISP");
  measure("tpcdaddpt, new points", n, [&] { evaluate(enter); });
  measure("tpcdaddpt, replacing", n, [&] { evaluate(enter); });
  drawing.undoLog().end();
  if (project.currTable()->nbPoint() != n) std::exit(1);
  veltora::setSrcInfosTopo(nullptr, nullptr, 0, 0);
  acDocManager->closeDocument(acDocManager->curDocument());
}

}  // namespace

int main() {
  const std::filesystem::path folder =
      veltora::base::creerFichierTemporaire(veltora::base::dossierTemporaire(), "BCH");
  std::filesystem::remove(folder);
  std::filesystem::create_directories(folder);
  std::filesystem::copy(VELTORA_SOURCE_DIR "/data", folder, std::filesystem::copy_options::recursive);
  veltora::setDossierInstallation(folder);
  aclispInstall();
  acrxDynamicLinker->registerModule(L"veltora", acrxEntryPoint);
  Mesure measure;
  for (const int n : {1000, 10000, 100000}) run(measure, n);
  acrxDynamicLinker->unloadModule(L"veltora");
  acedPorts() = {};
  std::filesystem::remove_all(folder);
}
