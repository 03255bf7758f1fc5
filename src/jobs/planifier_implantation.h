#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"
#include "base/remarque.h"
#include "stakeout/plan_implantation_auto.h"

#include <filesystem>
#include <optional>
#include <string>

/// A stake-out from many stations in one call: each point from the nearest one.
namespace veltora {

struct demandePlanifier {
  // What is set out: a list of coordinates, else the elements of a layer, else the current table's points
  // with the code.
  std::filesystem::path liste;
  std::wstring calque;
  int code = 0;
  double pas = 20.0;        ///< along arcs and clothoids, drawing units
  double fleche = 0.0;      ///< above 0: largest distance between chord and curve, in place of `pas`
  double pasDroites = 0.0;  ///< above 0: points along straight lines too

  int codeStations = 100;  ///< of the current table's points that are stations
  int modeReference = planImplantationAuto::kProche;
  double referenceMin = 1.0;  ///< wished distance of the reference, drawing units
  double referenceMax = 1000.0;
  double porteeMin = 0.0;  ///< wished distances of the points, drawing units
  double porteeMax = 1e9;
  bool moinsDeStations = false;  ///< few stations instead of short distances

  std::filesystem::path rapport;  ///< report to write; the Word form when it ends in ".doc"; empty for none
  std::filesystem::path texte;    ///< text to write, UTF-8
  std::filesystem::path csv;      ///< columns; not written when there are doubts
  int modeAngle = 0;              ///< of `resultatPlanifier::listing` alone
  bool dessiner = false;          ///< the picture, unless there are doubts
  std::optional<AcGePoint2d> tables;  ///< upper left corner of the lists as tables, drawn with it
  double hauteurTexte = 0.0;          ///< of what is drawn; 0: the usual one
  bool malgreDoutes = false;
};

struct resultatPlanifier {
  std::wstring listing;  ///< the lists for people
  int points = 0;
  int stations = 0;     ///< that have points
  bool retenu = false;  ///< neither drawn nor written as columns, for there are doubts
  base::Remarques remarques;
  std::wstring erreur;  ///< French, why there is no result; empty on success
};

/// @return false with `erreur` set, nothing drawn: no drawing, nothing to set out, no station, a file that
/// cannot be written
VELTORA_API bool planifierImplantation(const demandePlanifier& demande, resultatPlanifier& resultat);

/// What a plan leaves to be checked: points at their station or out of reach, no reference, doubled names.
VELTORA_API void controlerPlan(const planImplantationAuto& plan, double porteeMin, double porteeMax,
                               base::Remarques& remarques);

}  // namespace veltora
