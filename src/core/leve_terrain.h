#pragma once

#include "base/export.h"

#include <optional>
#include <string>
#include <vector>

/// What a surveyor sighted, whatever instrument wrote it: the common form between field books and the
/// computation of coordinates. Angles in grades, clockwise; lengths in metres.
namespace veltora {

struct positionLeve {
  double x = 0.0;
  double y = 0.0;
  std::optional<double> z;
};

/// One pointing. What was not measured is absent.
struct viseeTerrain {
  int ligne = 0;                    ///< of the file, from 1
  std::wstring nom;                 ///< of the target, without outer blanks and leading zeros
  std::optional<double> h;          ///< horizontal circle, as read: of the second face half a turn on
  std::optional<double> v;          ///< zenith distance, as read: of the second face above 200
  std::optional<double> di;         ///< slope distance
  std::optional<double> dh;         ///< horizontal distance
  std::optional<double> dn;         ///< height difference from the instrument's axis to the target
  std::optional<double> hMire;      ///< height of the target above the point
  std::optional<double> hAppareil;  ///< height of the instrument's axis above the station
  std::wstring code;                ///< of the point; empty for none
  std::wstring observation;         ///< words behind the code, joined by one blank
};

/// The pointings from one station with one setting of the horizontal circle.
struct miseEnPlace {
  std::wstring nom;                      ///< of the station; empty when the book does not tell
  int ligne = 0;                         ///< that opens it
  std::optional<positionLeve> position;  ///< as the book tells it
  std::vector<viseeTerrain> visees;
};

struct leveTerrain {
  std::vector<miseEnPlace> stations;
};

/// A name as it is compared: capitals, no outer blanks, no leading zeros or points; "0" for zeros alone.
VELTORA_API std::wstring cleNomLeve(std::wstring_view nom);

}  // namespace veltora
