#pragma once

#include "base/export.h"
#include "base/growable_array.h"
#include "calc/traverse/obs_polygonale.h"
#include "calc/traverse/polygonale.h"

#include <string>
#include <vector>

namespace veltora {

class htmlDocument;

/// A station that is known beforehand, with the bearing that goes with it.
struct stationConnue {
  std::wstring nom;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double gisement = 0.0;  ///< departure: from the back sight; arrival: to the sight that closes
};

/// The points of an open traverse as they are placed, departure first. The computed arrival, under the name
/// of the last row and with the known arrival's height, stands for the known one.
VELTORA_API std::vector<stationCalculee> stationsOuverte(const stationConnue& depart, double Zarr,
                                                         const lignesPolygonale& lignes,
                                                         const base::CArray<double>& X,
                                                         const base::CArray<double>& Y,
                                                         const base::CArray<double>& Z);

/// Adjusts an open traverse between two known stations: shares of the angular misclosure that grow from
/// station to station, compass rule against the known arrival, heights after `modeNivellement`. No tolerance
/// applies and zero lengths are not guarded: infinities go on into the results.
/// @param nomDepart, Xdep, Ydep, Zdep  the departure, drawing units
/// @param Vo  known bearing from the back sight to the departure, in the unit of modeAngle
/// @param nomArrivee, Xarr, Yarr, Zarr  the arrival
/// @param Va  known bearing at the arrival. It must lie in the turn in which the angles sum up: the
/// misclosure is not reduced, and whole turns in it bend every leg
/// @param A  closing angle at the arrival, from the last leg to the sight of bearing Va
/// @param modeNivellement  0 aucun, 1 simple, 2 distance, 3 racine
/// @param modeAngle  0 grades, 1 degres, 2 radians
/// @param lignes  the rows; each `angle` is reduced into one turn, modes 1 to 3 correct each `dz`
/// @param X, Y  emptied, then one entry a row: the end of leg i
/// @param Z  likewise, but entry i is the height of station i, the departure's first
/// @param rapport  gets the report while it is computed; null for none
/// @param dessinerBrute, dessinerCompensee  append the raw and the adjusted traverse to the working drawing
/// @param fermetures  gets the misclosures; null for none
/// @return 0, nothing changed, with fewer than two rows; else 1
VELTORA_API int calculerPolygonaleOuverte(const std::wstring& nomDepart, double Xdep, double Ydep,
                                          double Zdep, double Vo, const std::wstring& nomArrivee, double Xarr,
                                          double Yarr, double Zarr, double Va, double A, int modeNivellement,
                                          int modeAngle, lignesPolygonale& lignes, base::CArray<double>& X,
                                          base::CArray<double>& Y, base::CArray<double>& Z,
                                          htmlDocument* rapport, bool dessinerBrute, bool dessinerCompensee,
                                          fermeturesPolygonale* fermetures = nullptr);

}  // namespace veltora
