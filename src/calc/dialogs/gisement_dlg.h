#pragma once

#include "ui/dialog.h"

namespace veltora {

/// Bearing from a station to a direction point. The caller sets unit and station, shows the dialog, and after
/// OK takes `gisementCalcule`.
class VELTORA_API CCalcGisementDlg : public ui::Dialog {
public:
  CCalcGisementDlg();

  /// Bearing of the fields in force, full precision, in the unit of `modeAngle`.
  [[nodiscard]] double gisementCalcule() const;

  ui::Group station{this, L"Station"};
  ui::TextField stationNom{&station, L"Nom"};
  ui::NumberField stationX{&station, L"X", 0.0, L"%.15g"};
  ui::NumberField stationY{&station, L"Y", 0.0, L"%.15g"};
  // Deliberate (prelever-inerte): the two buttons pick nothing; a point is typed.
  ui::Button stationPrelever{&station, L"Prélever du dessin"};
  ui::Group direction{this, L"Direction"};
  ui::TextField directionNom{&direction, L"Nom"};
  ui::NumberField directionX{&direction, L"X", 0.0, L"%.15g"};
  ui::NumberField directionY{&direction, L"Y", 0.0, L"%.15g"};
  ui::Button directionPrelever{&direction, L"Prélever du dessin"};
  ui::Label gisement{this, L"Gisement calculé:"};  ///< empty until a coordinate is edited
  ui::Label unite{this, {}, L"Grades"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Cancel", ui::Button::Role::Cancel};

  int modeAngle = 0;      ///< 0 grades, 1 degres, 2 radians
  double stationZ = 0.0;  ///< not shown

protected:
  void onInit() override;
};

}  // namespace veltora
