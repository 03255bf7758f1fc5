#pragma once

#include "base/export.h"
#include "base/remarque.h"

#include <cstdint>
#include <filesystem>
#include <string>

/// A stake-out from one station in one call, on the working drawing and the installed project.
namespace veltora {

struct demandeImplanter {
  // What is set out: a list of coordinates, else the elements of a layer, else the current table's points
  // with the code.
  std::filesystem::path liste;
  std::wstring calque;
  int code = 0;

  std::wstring station;          ///< name in the current table, else in the list
  std::wstring reference;        ///< likewise; "NORD" for bearings
  double pas = 20.0;             ///< along arcs and clothoids, drawing units
  double fleche = 0.0;           ///< above 0: largest distance between chord and curve, in place of `pas`
  double pasDroites = 0.0;       ///< above 0: points along straight lines too
  double hauteurStation = -1.0;  ///< of the instrument, for sights; below 0: the usual one; likewise the next
  double hauteurMin = -1.0;      ///< what may rise above a sight

  std::filesystem::path rapport;  ///< report to write; the Word form when it ends in ".doc"; empty for none
  std::filesystem::path texte;    ///< text to write, UTF-8
  std::filesystem::path csv;      ///< the same as columns; not written when there are doubts
  int modeAngle = 0;              ///< of `resultatImplanter::listing`
  bool dessiner = false;          ///< into the working drawing, unless there are doubts
  bool coordonnees = false;       ///< drawn below the names
  double hauteurTexte = 0.0;      ///< of what is drawn; 0: the usual one
  bool malgreDoutes = false;
};

struct resultatImplanter {
  std::wstring listing;  ///< the list as a text
  int points = 0;
  int visibles = 0;  ///< of the sights that were checked, likewise the next
  int masques = 0;
  bool retenu = false;  ///< neither drawn nor written as columns, for there are doubts
  base::Remarques remarques;
  std::wstring erreur;  ///< French, why there is no result; empty on success
};

/// Stations the points, checks their sights where there is a terrain, writes and draws.
/// @return false with `erreur` set, nothing drawn: no drawing, nothing to set out, a station or reference
/// that is unknown, a file that cannot be written
VELTORA_API bool implanter(const demandeImplanter& demande, resultatImplanter& resultat);

}  // namespace veltora
