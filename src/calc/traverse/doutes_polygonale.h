#pragma once

#include "base/remarque.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"
#include "calc/traverse/polygonale.h"
#include "calc/traverse/tolerances_polygonale.h"

/// What is to be checked before the results of a traverse are used: misclosures beyond their tolerances, with
/// the single mistakes by which they would be explained; heights only where they are adjusted. That the last
/// row aims at another name than the known station is a doubt where the traverse does not close, a remark
/// where it does.
namespace veltora {

/// @param fermetures  of the same data, as computed
VELTORA_API base::Remarques doutesFermee(const polygonaleFermeeObs& obs,
                                         const fermeturesPolygonale& fermetures,
                                         const tolerancesPolygonale& tolerances = {});
VELTORA_API base::Remarques doutesOuverte(const polygonaleOuverteObs& obs,
                                          const fermeturesPolygonale& fermetures,
                                          const tolerancesPolygonale& tolerances = {});

}  // namespace veltora
