#pragma once

#include "arx/db/dbmain.h"
#include "base/paths.h"
#include "points/infos_topo.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace veltora {

/// A drawing with an empty project, and an installation folder of its own.
class ProjetEssai : public ::testing::Test {
protected:
  ProjetEssai() {
    acdbHostApplicationServices()->setWorkingDatabase(&m_dessin);
    setSrcInfosTopo(&m_dessin, &m_projets, 0, 0);
  }
  ~ProjetEssai() override {
    setSrcInfosTopo(&m_dessin, nullptr, 0, 0);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  }
  [[nodiscard]] std::string fichier(const std::string& nom, const std::string& octets) const {
    m_dossier.ecrire(nom, octets);
    return (m_dossier.chemin / nom).string();
  }
  /// The blocks of the code table's default rows; without its block a point is not placed.
  void ecrireBlocs() const {
    std::filesystem::create_directory(m_dossier.chemin / "biblio");
    for (const char* nom : {"biblio/varnblk1.dxf", "biblio/varnblk3.dxf"})
      AcDbDatabase().saveAs(base::texteDuChemin(m_dossier.chemin / nom).c_str());
  }

  DossierEssai m_dossier;
  AcDbDatabase m_dessin;
  projetsTopo m_projets;
};

}  // namespace veltora
