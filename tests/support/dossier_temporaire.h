#pragma once

#include "base/files.h"

#include <filesystem>
#include <string>

/// An empty folder for the life of a test.
class DossierTemporaire {
public:
  DossierTemporaire()
      : chemin(veltora::base::creerFichierTemporaire(veltora::base::dossierTemporaire(), "veltora_essai_")) {
    std::filesystem::remove(chemin);
    std::filesystem::create_directory(chemin);
  }
  ~DossierTemporaire() {
    std::error_code ignoree;
    std::filesystem::remove_all(chemin, ignoree);
  }
  DossierTemporaire(const DossierTemporaire&) = delete;
  DossierTemporaire& operator=(const DossierTemporaire&) = delete;

  void ecrire(const std::string& nom, const std::string& contenu) const {
    veltora::base::remplacerFichier(chemin / nom, contenu);
  }
  [[nodiscard]] std::string lire(const std::string& nom) const {
    return veltora::base::lireFichier(chemin / nom).value_or("(absent)");
  }
  std::filesystem::path chemin;
};
