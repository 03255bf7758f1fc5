#pragma once

#include "base/export.h"
#include "base/growable_array.h"
#include "calc/traverse/obs_polygonale.h"
#include "calc/traverse/polygonale.h"

#include <functional>
#include <string>
#include <vector>

namespace veltora {

class htmlDocument;

/// The stations of a closed traverse, departure first, from its rows and its three results.
VELTORA_API std::vector<stationCalculee> stationsFermee(const lignesPolygonale& lignes,
                                                        const base::CArray<double>& X,
                                                        const base::CArray<double>& Y,
                                                        const base::CArray<double>& Z);

/// Adjusts a closed traverse: equal shares of the angular misclosure, compass rule for the coordinates,
/// heights after `modeNivellement`. No tolerance applies and zero lengths are not guarded: infinities go on
/// into the results.
/// @param nomDepart, Xdep, Ydep, Zdep  the departure station, drawing units
/// @param Vo  bearing of the first leg, in the unit of modeAngle; neither corrected nor reduced
/// @param modeNivellement  0 aucun, 1 simple, 2 distance, 3 racine
/// @param modeAngle  0 grades, 1 degres, 2 radians
/// @param lignes  the rows; modes 1 to 3 replace each `dz` by its corrected value
/// @param X, Y, Z  emptied, then one entry a row: entry i is the station reached after i legs, entry 0 the
/// departure
/// @param rapport  gets the report while it is computed; null for none
/// @param dessinerBrute, dessinerCompensee  append the raw and the adjusted traverse to the working drawing
/// @param fermetures  gets the misclosures; null for none
/// @return 0, nothing changed, with fewer than two rows; else 1
VELTORA_API int calculerPolygonaleFermee(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep,
                                         double Vo, int modeNivellement, int modeAngle,
                                         lignesPolygonale& lignes, base::CArray<double>& X,
                                         base::CArray<double>& Y, base::CArray<double>& Z,
                                         htmlDocument* rapport, bool dessinerBrute, bool dessinerCompensee,
                                         fermeturesPolygonale* fermetures = nullptr);

/// Shows a message: text, title.
using montrerMessage = std::function<void(const std::wstring& texte, const std::wstring& titre)>;

/// Checks a closed traverse and puts it in order: rotates the rows so that the one before the departure comes
/// first, reduces Vo and every angle into one turn. Called by neither traverse dialog.
/// @param nomDepart  in capitals and without outer blanks, as row names are compared with it in that form
/// @return 0 after a message when the departure is none of the rows, a coordinate lies outside -1e9 to 1e9,
/// or a leg is shorter than 0.0001; what was put in order by then stays so
VELTORA_API int verifierPolygonaleFermee(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep,
                                         double& Vo, lignesPolygonale& lignes, int modeAngle,
                                         const montrerMessage& montrer);

}  // namespace veltora
