#pragma once

#include "arx/ap/acdocman.h"
#include "arx/ap/apsession.h"
#include "arx/ed/edvalue.h"
#include "arx/rx/rxdlinkr.h"
#include "ed_support.h"
#include "fake_module.h"
#include "support/dossier_temporaire.h"

#include <filesystem>
#include <fstream>

/// A host without documents and modules, with a folder of its own; both are emptied at the end.
class HostTest : public EditorTest {
protected:
  const DossierTemporaire dossier;
  const std::filesystem::path& folder = dossier.chemin;

  HostTest() { FakeModule::reset(); }
  ~HostTest() override {
    FakeModule::onMessage = nullptr;
    acDocManager->quit();
  }

  [[nodiscard]] std::wstring path(const char* name) const {
    return veltora::base::fromUtf8((folder / name).string());
  }
  static bool loadFake() { return acrxDynamicLinker->registerModule(L"faux", FakeModule::entry); }
  static AcDbDatabase& db() { return *curDoc()->database(); }
  /// Entities of model space that are not erased.
  static std::size_t count(AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    std::size_t live = 0;
    for (const AcDbObjectId id : space->entities()) live += id.isLive() ? 1 : 0;
    return live;
  }
  static std::size_t count() { return count(db()); }
};
