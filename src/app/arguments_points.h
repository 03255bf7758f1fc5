#pragma once

#include "app/ligne_de_commande.h"

#include <CLI/CLI.hpp>

namespace veltora::app {

// The jobs on point tables: their arguments. Each gives back the sub-command that was added.
CLI::App* declarerPoints(CLI::App& app, Demande& demande);
CLI::App* declarerImporter(CLI::App& app, Demande& demande);
CLI::App* declarerLisp(CLI::App& app, Demande& demande);
CLI::App* declarerExporter(CLI::App& app, Demande& demande);

}  // namespace veltora::app
