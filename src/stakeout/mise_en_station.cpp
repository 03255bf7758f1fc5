#include "stakeout/mise_en_station.h"

#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/compteur_identifiants.h"
#include "stakeout/crayon_implantation.h"

#include <cmath>
#include <utility>

namespace veltora {
namespace {

void joindre(const entitesDessinees& de, entitesDessinees& sortie) {
  for (const AcDbObjectId& id : de) sortie.Add(id);
}

/// A point's arrow head, its tip at the point.
void dessinerFleche(crayonImplantation& crayon, const unPoint& de, unPoint& vers, int couleur) {
  const reglagesImplantation& reglages = reglagesImplantation::commun();
  const AcGePoint2d pointe(vers.x, vers.y);
  const AcGeVector2d sens = (pointe - AcGePoint2d(de.x, de.y)).normal();
  auto fleche = std::make_unique<AcDbPolyline>(2U);
  fleche->addVertexAt(0, pointe - sens * reglages.longueurFleche, 0.0, reglages.largeurFleche, 0.0);
  fleche->addVertexAt(1, pointe);
  crayon.tracer(std::move(fleche), couleur, vers.entites);
}

void ajouterCoordonnees(std::string& sortie, const unPoint& point, const char* fin) {
  if (point.x != Z_ABSENT) sortie += base::formater("<b> x </b> = %.4f", point.x);
  if (point.y != Z_ABSENT) sortie += base::formater("<b> y </b>= %.4f", point.y);
  if (point.z != Z_ABSENT) sortie += base::formater("<b> z </b>= %.4f", point.z) + fin;
}

}  // namespace

std::wstring texteCoordonnees(const unPoint& point) {
  return base::formater(L"X=%.4f,Y=%.4f", point.x, point.y);
}

std::wstring motOrientation(double angleV0) {
  // Deliberate (orientation-lettre-o): the letter O stands for the zeros of the four words.
  constexpr std::pair<double, const wchar_t*> kMots[] = {
      {0.0, L"NORD (O gr)"}, {100.0, L"EST (10O gr)"}, {200.0, L"SUD (20O gr)"}, {300.0, L"OUEST (30O gr)"}};
  constexpr double kEcart = 0.000001;  // grades, strict
  const double grades = enGrades(angleV0);
  for (const auto& [angle, mot] : kMots)
    if (std::abs(grades - angle) < kEcart) return mot;
  return base::formater(L"%.4f gr", grades);
}

observationMiseEnStation::observationMiseEnStation(const unPoint& station)
    : uneStationReference{station}, idMise(compteurIdentifiants::commun().suivant()) {
  entites.RemoveAll();
}

void observationMiseEnStation::oublierEntites() {
  entites.RemoveAll();
  entitesMise.RemoveAll();
}

void observationMiseEnStation::recupererEntites(entitesDessinees& sortie, bool oublier) {
  joindre(entites, sortie);
  joindre(entitesMise, sortie);
  if (oublier) oublierEntites();
}

void observationMiseEnStation::effacerEntites() {
  effacerDessinees(entites);
  effacerDessinees(entitesMise);
}

std::wstring observationMiseEnStation::texteStation() const {
  return nom.empty() ? texteCoordonnees(*this) : nom;
}

void observationMiseEnStation::dessinerEtoile(crayonImplantation& crayon) {
  constexpr int kBranches = 6;
  const reglagesImplantation& reglages = reglagesImplantation::commun();
  for (int i = 0; i < kBranches; ++i) {
    const double angle = 2.0 * kPi * i / kBranches;
    crayon.ligne({x, y},
                 {x + std::sin(angle) * reglages.croixStation, y + std::cos(angle) * reglages.croixStation},
                 reglages.couleurStation, entites);
  }
}

void observationMiseEnStation::debutHtml(std::string& sortie, const char* fin) const {
  sortie += base::formater("<br><u> Station :</u> %s ", base::narrow(nom));
  ajouterCoordonnees(sortie, *this, fin);
  sortie += "<br><u> Reference </u>";
}

void observationMiseEnStation::dessinerTexte(const AcGePoint3d& position, double hauteur,
                                             const std::wstring& orientation,
                                             entitesDessinees& sortie) const {
  constexpr double kInterligne = 1.5;  // in text heights, likewise the next
  constexpr double kBase = 1.2;
  std::wstring ligne = base::formater(L"%%%%uStation :%%%%u %s", nom);
  if (x != Z_ABSENT) ligne += base::formater(L" x  = %.4f", x);
  if (y != Z_ABSENT) ligne += base::formater(L" y = %.4f", y);
  if (z != Z_ABSENT) ligne += base::formater(L" z = %.4f", z);
  crayonImplantation crayon(marqueImplantation::kStation, idMise);
  const AcGePoint2d place(position.x, position.y - kBase * hauteur);
  crayon.texte(place, hauteur, ligne, 0.0, kDuCalque, sortie);
  crayon.texte({place.x, place.y - kInterligne * hauteur}, hauteur, L"%%uReference:%%u " + orientation, 0.0,
               kDuCalque, sortie);
}

observationMiseEnStationVisee::observationMiseEnStationVisee(const unPoint& station, const unPoint& ref)
    : observationMiseEnStation(station), reference{ref} {
  reference.entites.RemoveAll();
}

double observationMiseEnStationVisee::gisementVers(const unPoint& point) const {
  const double vers = gisementBrut(point);
  const double depart = gisementBrut(reference);
  if (vers == Z_ABSENT || depart == Z_ABSENT) return Z_ABSENT;
  const double angle = vers - depart;
  return angle < 0.0 ? angle + 2.0 * kPi : angle;
}

void observationMiseEnStationVisee::oublierEntites() {
  observationMiseEnStation::oublierEntites();
  reference.entites.RemoveAll();
}

void observationMiseEnStationVisee::recupererEntites(entitesDessinees& sortie, bool oublier) {
  observationMiseEnStation::recupererEntites(sortie, false);
  joindre(reference.entites, sortie);
  if (oublier) oublierEntites();
}

void observationMiseEnStationVisee::effacerEntites() {
  observationMiseEnStation::effacerEntites();
  effacerDessinees(reference.entites);
}

void observationMiseEnStationVisee::dessiner(int options) {
  if (!situe() || dessinee()) return;
  const int couleur = reglagesImplantation::commun().couleurReference;
  crayonImplantation crayon(marqueImplantation::kStation, idMise);
  dessinerEtoile(crayon);
  if (!reference.situe()) return;
  dessinerFleche(crayon, *this, reference, couleur);
  crayon.visee(*this, reference, gisementVers(reference), options, couleur, entitesMise);
}

void observationMiseEnStationVisee::texteHtml(std::string& sortie) const {
  debutHtml(sortie, " \n");
  sortie += base::formater("<b>%s</b>", base::narrow(reference.nom));
  ajouterCoordonnees(sortie, reference, " \n");
  sortie += "\n";
}

void observationMiseEnStationVisee::dessinerTexte(const AcGePoint3d& position, double hauteur,
                                                  entitesDessinees& sortie) const {
  dessinerTexte(position, hauteur, texteReference(), sortie);
}

std::wstring observationMiseEnStationVisee::texteReference() const {
  return reference.nom.empty() ? texteCoordonnees(reference) : reference.nom;
}

double observationMiseEnStationOrientee::gisementVers(const unPoint& point) const {
  const double vers = gisementBrut(point);
  return vers == Z_ABSENT || angleV0 == Z_ABSENT ? Z_ABSENT : vers + angleV0;
}

void observationMiseEnStationOrientee::dessiner(int) {
  if (!situe() || dessinee()) return;
  crayonImplantation crayon(marqueImplantation::kStation, idMise);
  dessinerEtoile(crayon);
  auto direction = std::make_unique<AcDbRay>();
  direction->setBasePoint({x, y, 0.0});
  direction->setUnitDir({std::sin(angleV0), std::cos(angleV0), 0.0});
  crayon.tracer(std::move(direction), reglagesImplantation::commun().couleurReference, entitesMise);
}

void observationMiseEnStationOrientee::texteHtml(std::string& sortie) const {
  debutHtml(sortie, "");
  sortie += base::narrow(motOrientation(angleV0)) + "\n";
}

void observationMiseEnStationOrientee::dessinerTexte(const AcGePoint3d& position, double hauteur,
                                                     entitesDessinees& sortie) const {
  dessinerTexte(position, hauteur, motOrientation(angleV0), sortie);
}

std::wstring observationMiseEnStationOrientee::texteReference() const {
  return angleV0 == 0.0 ? L"NORD" : base::formater(L"V0=%.4f gr", enGrades(angleV0));
}

}  // namespace veltora
