#pragma once

#include "app/ligne_de_commande.h"

#include <CLI/CLI.hpp>

namespace veltora::app {

/// The job "reseau" and its options.
CLI::App* declarerReseau(CLI::App& app, Demande& demande);

}  // namespace veltora::app
