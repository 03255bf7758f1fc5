#pragma once

#include "app/ligne_de_commande.h"

namespace veltora::app {

// One job each; the result is the exit status of the program.
int travailSession(const Demande& demande);
int travailPolygonale(const Demande& demande);
int travailHelmert(const Demande& demande);
int travailReseau(const Demande& demande);
int travailPoints(const Demande& demande);
int travailImporter(const Demande& demande);
int travailImporterDessin(const Demande& demande);
int travailLisp(const Demande& demande);
int travailExporter(const Demande& demande);

}  // namespace veltora::app
