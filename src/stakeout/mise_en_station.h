#pragma once

#include "arx/ge/gepoint.h"
#include "base/uncopyable.h"
#include "stakeout/un_point.h"

namespace veltora {

class crayonImplantation;

/// A station with its orientation: where an instrument stands and what its circle reads.
class VELTORA_API observationMiseEnStation : public uneStationReference, private Uncopyable {
public:
  enum Type { kOrientee = 10, kVisee = 20 };

  /// Angle that the instrument reads on a point, radians; `Z_ABSENT` when a coordinate it needs is unknown.
  [[nodiscard]] virtual double gisementVers(const unPoint& point) const = 0;
  /// Plain bearing from the station, likewise.
  [[nodiscard]] virtual double gisementBrut(const unPoint& point) const {
    return gisementImplantation(*this, point);
  }
  /// Forgets what was drawn, which stays in the drawing.
  virtual void oublierEntites();
  /// Appends what was drawn. @param oublier  forgets it then
  virtual void recupererEntites(entitesDessinees& sortie, bool oublier);
  /// Draws the star, the reference or the direction, by the option word; nothing for a station without
  /// coordinates, or drawn already.
  virtual void dessiner(int options) = 0;
  /// Erases what was drawn.
  virtual void effacerEntites();
  [[nodiscard]] virtual int type() const = 0;
  /// Appends the station's head in a report, Windows-1252.
  virtual void texteHtml(std::string& sortie) const = 0;
  /// Draws the station's two lines of text above a table. @param position  upper left corner
  /// @param hauteur  of the texts
  virtual void dessinerTexte(const AcGePoint3d& position, double hauteur, entitesDessinees& sortie) const = 0;
  virtual ~observationMiseEnStation() = default;

  /// The table's columns "Station" and "Ref".
  [[nodiscard]] std::wstring texteStation() const;
  [[nodiscard]] virtual std::wstring texteReference() const = 0;
  /// Whether anything is drawn for it now.
  [[nodiscard]] virtual bool dessinee() const { return !entites.empty() || !entitesMise.empty(); }

  std::uint32_t idMise;
  entitesDessinees entitesMise{8};

protected:
  explicit observationMiseEnStation(const unPoint& station);
  void dessinerEtoile(crayonImplantation& crayon);
  /// "<br><u> Station :</u> ..." up to the word "Reference". @param fin  behind the altitude
  void debutHtml(std::string& sortie, const char* fin) const;
  /// The two lines above a table, the second with this orientation.
  void dessinerTexte(const AcGePoint3d& position, double hauteur, const std::wstring& orientation,
                     entitesDessinees& sortie) const;
};

/// Oriented on a reference point, on which the instrument reads 0.
class VELTORA_API observationMiseEnStationVisee : public observationMiseEnStation {
public:
  observationMiseEnStationVisee(const unPoint& station, const unPoint& ref);
  [[nodiscard]] double gisementVers(const unPoint& point) const override;
  void oublierEntites() override;
  void recupererEntites(entitesDessinees& sortie, bool oublier) override;
  void dessiner(int options) override;
  void effacerEntites() override;
  [[nodiscard]] int type() const override { return kVisee; }
  void texteHtml(std::string& sortie) const override;
  using observationMiseEnStation::dessinerTexte;
  void dessinerTexte(const AcGePoint3d& position, double hauteur, entitesDessinees& sortie) const override;
  [[nodiscard]] std::wstring texteReference() const override;
  [[nodiscard]] bool dessinee() const override {
    return observationMiseEnStation::dessinee() || !reference.entites.empty();
  }

  uneStationReference reference;
};

/// Oriented by what the circle reads to the north.
class VELTORA_API observationMiseEnStationOrientee : public observationMiseEnStation {
public:
  explicit observationMiseEnStationOrientee(const unPoint& station) : observationMiseEnStation(station) {}
  // Deliberate (orientee-plus-v0): the angle is added to the bearing, and the sum is not reduced to a turn.
  [[nodiscard]] double gisementVers(const unPoint& point) const override;
  void dessiner(int options) override;
  [[nodiscard]] int type() const override { return kOrientee; }
  void texteHtml(std::string& sortie) const override;
  using observationMiseEnStation::dessinerTexte;
  void dessinerTexte(const AcGePoint3d& position, double hauteur, entitesDessinees& sortie) const override;
  [[nodiscard]] std::wstring texteReference() const override;

  double angleV0 = 0.0;  ///< radians
};

/// "NORD (O gr)", "EST (10O gr)", "SUD (20O gr)", "OUEST (30O gr)" or the angle, grades with four decimals.
VELTORA_API std::wstring motOrientation(double angleV0);
/// "X=%.4f,Y=%.4f"
std::wstring texteCoordonnees(const unPoint& point);

}  // namespace veltora
