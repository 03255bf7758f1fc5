#pragma once

#include <string>

namespace veltora::terrain {

/// Runs one of the module's commands on the working drawing: MNT, MNTZ, MNTPROFIL, COURBES, MNTFACES.
/// @return false for another name
bool executerCommande(const std::wstring& nom);

}  // namespace veltora::terrain
