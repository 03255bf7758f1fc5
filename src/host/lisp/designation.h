#pragma once

#include "arx/db/dbents.h"

#include <memory>
#include <vector>

namespace veltora {

/// How a prompt ended: with a value, without one (Enter, cancel, no drawing), or with something that does not
/// fit, so that it is asked again.
enum class Reponse { kDonnee, kFin, kEncore };

/// Lets the user pick an entity. @param point  where he picked
Reponse designerEntite(const ACHAR* invite, AcDbObjectId& id, AcGePoint3d& point);
/// Lets him select among the entities that bear extended data "VARNPLUS"; `mode` as `acedSSGet`.
/// @return empty when he cancels or nothing was found
std::vector<AcDbObjectId> selectionnerBlocsPoints(const ACHAR* mode);
/// Asks for a distance; Enter takes `valeur` as it is. @return false when he cancels
bool demanderDistance(const std::wstring& invite, double& valeur);
/// Adds an entity to the model space of the working drawing, closed. @return false, the entity gone, when
/// that fails
bool ajouterAuDessin(std::unique_ptr<AcDbEntity> entite);

/// The mark of point blocks.
inline constexpr const ACHAR* kDonneesVeltora = L"VARNPLUS";

}  // namespace veltora
