#pragma once

namespace veltora {

/// Registers the commands, in their order, in group "VELTORA4" of the host's command stack.
void enregistrerCommandes();
void retirerCommandes();

}  // namespace veltora
