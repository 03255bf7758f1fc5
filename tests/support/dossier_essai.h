#pragma once

#include "core/installation.h"
#include "support/dossier_temporaire.h"

/// An empty installation directory for the life of a test.
class DossierEssai : public DossierTemporaire {
public:
  DossierEssai() { veltora::setDossierInstallation(chemin); }
  ~DossierEssai() { veltora::setDossierInstallation({}); }
};
