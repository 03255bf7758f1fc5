#pragma once

#include "base/export.h"
#include "calc/leve/calcul_leve.h"
#include "calc/leve/fichiers_leve.h"
#include "field/leve_gsi.h"
#include "jobs/lire_liste.h"

#include <filesystem>
#include <string>
#include <vector>

/// A field book and known points to coordinates, in one call without a dialog.
namespace veltora {

struct demandeLever {
  std::filesystem::path carnet;         ///< GSI
  std::filesystem::path canevas;        ///< list of the known points, of any form that `importer` reads
  std::filesystem::path regles;         ///< of code blocks; empty for the usual ones
  std::vector<stationNommee> stations;  ///< that the user names
  optionsLeve options;
  std::string projection;  ///< its scale at the middle of the known points, and the reduction from their
                           ///< height, multiply the distances too; see `calculerEchelle`; empty for none
  std::filesystem::path
      points;  ///< list of the computed points to write, .xyz; empty for none, likewise the others
  std::filesystem::path reseau;      ///< .mc
  std::filesystem::path polygonale;  ///< .obs; a second traverse gets "_2" behind the name, and so on
  std::filesystem::path rapport;     ///< the Word form when it ends in ".doc"
  bool placer = false;               ///< into the current table and the working drawing
  bool malgreDoutes = false;         ///< place and write points even when they are doubtful
};

/// Reads "LIGNE=NOM" or "LIGNE=NOM,HAUTEUR". Nothing for any other text, a line below 1 or a height out of
/// 0 to 10 m.
VELTORA_API std::optional<stationNommee> lireStationNommee(std::wstring_view texte);

struct resultatLever {
  resultatCalculLeve calcul;
  std::wstring corrections;  ///< that were applied, French
  std::size_t visees = 0;
  int connus = 0;                              ///< points of the list
  std::vector<polygonaleDuLeve> polygonales;   ///< found, whether they are written or not
  std::vector<std::filesystem::path> ecrites;  ///< files of them
  int places = 0;
  bool retenu = false;  ///< neither placed nor written as a list, for there are doubts
  base::Remarques remarques;
  std::wstring erreur;  ///< French, why there is no result; empty on success
};

/// Reads, computes, writes report, network and traverses, then the list and the drawing unless there are
/// doubts.
/// @return false with `erreur` set, nothing placed: no drawing is open, a file cannot be read or holds
/// nothing of its kind, no station could be computed, a file cannot be written
VELTORA_API bool lever(const demandeLever& demande, resultatLever& resultat);

}  // namespace veltora
