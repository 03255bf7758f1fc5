#pragma once

#include "app/ligne_de_commande.h"

#include <CLI/CLI.hpp>

namespace veltora::app {

/// The job "helmert" and its options.
CLI::App* declarerHelmert(CLI::App& app, Demande& demande);

}  // namespace veltora::app
