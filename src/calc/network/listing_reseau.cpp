#include "calc/network/listing_reseau.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"

namespace veltora {

std::wstring nommerObservation(const donneesReseau& reseau, const ObservationReduite& o) {
  const auto nom = [&reseau](int point) { return reseau.points.GetAt(point).nom; };
  const std::wstring station = nom(o.station);
  const std::wstring vise = nom(o.vise);
  if (o.type == ObservationReduite::kAngle) {
    return base::formater(L"Angle %s %s %s = %14.4f (grades)", o.reference == -1 ? L"NORD" : nom(o.reference),
                          station, vise, o.mesure * 200.0 / kPi);
  }
  if (o.type == ObservationReduite::kDistance) {
    return base::formater(L"Distance %s-%s = %14.4f ", station, vise, o.mesure);
  }
  return base::formater(L"Dénivellée %s vers %s =%14.4f", station, vise, o.mesure);
}

std::wstring citerObservation(const donneesReseau& reseau, const ObservationReduite& o) {
  std::wstring texte;
  for (const wchar_t c : nommerObservation(reseau, o)) {
    if (c != L' ' || texte.empty() || texte.back() != L' ') texte += c;
  }
  return base::trim(texte);
}

std::wstring listerReseau(const donneesReseau& reseau) {
  std::wstring texte = L"XYZ";
  for (int i = 0; i < reseau.points.GetSize(); ++i) {
    const pointACalculer& p = reseau.points.GetAt(i);
    if (!p.planiConnue) continue;
    texte += base::formater(L"\r\n%d Point %10s  X=%14.4f Y=%14.4f ", i, p.nom, p.X, p.Y);
    texte += p.Z == base::Z_ABSENT ? L"Z: Inconnu" : base::formater(L"Z=%14.4f", p.Z);
  }
  texte += L"\r\nPoints à calculer:";
  for (int i = 0; i < reseau.points.GetSize(); ++i) {
    const pointACalculer& p = reseau.points.GetAt(i);
    if (!p.planiConnue) texte += base::formater(L"\r\nPoint %d %10s  ", i, p.nom);
  }
  texte += L"\r\nObservations";
  for (const ObservationReduite& o : reseau.observations) texte += L"\r\n" + nommerObservation(reseau, o);
  return texte;
}

std::wstring solutionTrouvee(const pointACalculer& p) {
  if (p.Z == base::Z_ABSENT) {
    return base::formater(L"\r\nSolution trouvée: X=%14.4f Y=%14.4f ", p.X, p.Y);
  }
  return base::formater(L"\r\nSolution trouvée: X=%14.4f Y=%14.4f Z=%14.4f", p.X, p.Y, p.Z);
}

}  // namespace veltora
