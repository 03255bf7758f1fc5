#pragma once

#include "base/files.h"
#include "core/installation.h"

#include <cstdlib>
#include <filesystem>
#include <string>

/// An empty installation directory for the life of a test.
class DossierEssai {
public:
  DossierEssai() {
    std::string modele = (veltora::base::dossierTemporaire() / "veltora_essai_XXXXXX").string();
    chemin = ::mkdtemp(modele.data());
    veltora::setDossierInstallation(chemin);
  }
  ~DossierEssai() {
    veltora::setDossierInstallation({});
    std::error_code ignoree;
    std::filesystem::remove_all(chemin, ignoree);
  }
  DossierEssai(const DossierEssai&) = delete;
  DossierEssai& operator=(const DossierEssai&) = delete;

  void ecrire(const std::string& nom, const std::string& contenu) const {
    veltora::base::remplacerFichier(chemin / nom, contenu);
  }
  [[nodiscard]] std::string lire(const std::string& nom) const {
    return veltora::base::lireFichier(chemin / nom).value_or("(absent)");
  }

  std::filesystem::path chemin;
};
