#pragma once

#include "base/export.h"
#include "calc/formule.h"
#include "calc/table_variables.h"

#include <string>

namespace veltora {

class VeltoraSerializer;

/// Weights of observations as formulas of the angle "ang" (grades) and the distances "d1", "d2", "d3".
class VELTORA_API formulesPoids : public tableVariables {
public:
  /// Texts "1.0", the system variables in the table.
  formulesPoids();
  void reinitialiser();
  /// Empties the table and sets the four system variables.
  void reinitialiserVariables();

  std::string angles = "1.0";
  std::string gisements = "1.0";
  std::string distances = "1.0";
  std::string quatrieme;  ///< only read from the file

  /// Parses the four texts; a bad text leaves whatever tree it made.
  void compiler();
  double poidsAngle(double d1, double d2, double d3, double angleRadians);
  double poidsGisement(double d1, double angleRadians);
  double poidsDistance(double d1);

  /// Reads a formula file's fields in order, also after a wrong magic; what has been read stays.
  /// @return false when a field cannot be read or the magic is wrong
  bool lire(VeltoraSerializer& fichier);

private:
  formule m_angles;
  formule m_gisements;
  formule m_distances;
  formule m_quatrieme;
};

}  // namespace veltora
