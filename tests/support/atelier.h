#pragma once

#include "arx/db/dbblockref.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "base/files.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/block_attributes.h"
#include "core/installation.h"
#include "points/infos_topo.h"
#include "support/dossier_temporaire.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>

// What the tests of points share: an installation of their own, a drawing, a project.

namespace veltora {

/// A point from its parts.
inline pointDuDessin unPoint(const wchar_t* nom, double x, double y, double z = Z_ABSENT, int code = 1) {
  pointDuDessin point;
  point.setParams(nom, {x, y, z}, code);
  return point;
}

/// Puts an entity into model space, closed.
inline AcDbObjectId mettre(AcDbDatabase& dessin, AcDbEntity* entite) {
  AcDbObjectId id;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId(), AcDb::kForWrite);
  EXPECT_EQ(espace->appendAcDbEntity(id, entite), Acad::eOk);
  entite->close();
  return id;
}

/// Names of a table in order, joined by blanks.
inline std::string noms(const listePointsDuDessin& table) {
  std::string liste;
  for (const pointDuDessin& point : *table.getData())
    liste += (liste.empty() ? "" : " ") + std::string(point.nomPoint);
  return liste;
}

/// A folder with the block file biblio/varnblk1.dxf, which the code table takes as its installation
/// directory. One for the process, since the code table is.
inline const std::filesystem::path& installationEssai() {
  struct Dossier : DossierTemporaire {
    Dossier() {
      std::filesystem::create_directory(chemin / "biblio");
      setDossierInstallation(chemin);
      AcDbDatabase bloc;
      mettre(bloc, new AcDbLine({-1, 0, 0}, {1, 0, 0}));
      for (const char* nom : {"biblio/varnblk1.dxf", "biblio/varnblk3.dxf", "biblio/autre.dxf"})
        bloc.saveAs(base::fromUtf8((chemin / nom).string()).c_str());
    }
  };
  static const Dossier dossier;
  return dossier.chemin;
}

/// A working drawing and a project, and what was printed.
class Atelier : public ::testing::Test, public base::OutputSink {
protected:
  Atelier() {
    installationEssai();
    getTableCodification().resetDefauts();
    acdbHostApplicationServices()->setWorkingDatabase(&dessin);
    acedPorts().sink = this;
    setSrcInfosTopo(&dessin, &projet, 1, 0);
  }
  ~Atelier() override {
    setSrcInfosTopo(nullptr, nullptr, 0, 0);
    acedPorts() = {};
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }
  void print(const std::string& texte) override { imprime += texte; }

  listePointsDuDessin& table() { return *projet.currTable(); }
  /// Number of living entities of model space.
  [[nodiscard]] int entites() const {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    int nombre = 0;
    for (const AcDbObjectId& id : espace->entities()) nombre += id.isLive() ? 1 : 0;
    return nombre;
  }
  static std::wstring attribut(const AcDbObjectId& bloc, const wchar_t* etiquette) {
    AcString texte = L"(aucun)";
    const AcDbObjectPointer<AcDbBlockReference> reference(bloc);
    if (reference.openStatus() == Acad::eOk) lireAttribut(*reference, etiquette, texte);
    return texte;
  }

  AcDbDatabase dessin;
  projetsTopo projet;
  std::string imprime;
};

}  // namespace veltora
