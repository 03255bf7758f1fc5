#include "calc/traverse/rapport_altitudes.h"

#include "report/report_setup.h"

#include <array>
#include <cmath>

namespace veltora {

void titresAltitudes(plumeRapport& plume, int modeNivellement) {
  if (!compenseAltitudes(modeNivellement)) {
    plume.paragraphe(L"Pas de correction de nivellement", attributs::kTitre);
    return;
  }
  static constexpr std::array<const wchar_t*, 4> kTitres = {
      L"", L"Correction simple, erreur de fermeture répartie uniformèment",  // sic
      L"Correction proportionnelle aux distances", L"Correction proportionnelle aux racines distances"};
  plume.paragraphe(L"Correction des altitudes", attributs::kTitre);
  plume.paragraphe(kTitres[static_cast<std::size_t>(modeNivellement)], attributs::kTitre);
}

void entetesAltitudes(plumeRapport& plume, std::initializer_list<const wchar_t*> premieres,
                      int modeNivellement) {
  plume.ouvrirLigne();
  for (const wchar_t* titre : premieres) plume.texte(titre, attributs::kGrisCentre);
  if (modeNivellement == 2) plume.texte(L"Distance", attributs::kGrisCentre);
  if (modeNivellement == 3) plume.texte(L"Racine.dist", attributs::kGrisCentre);
  for (const wchar_t* titre : {L"Correction", L"d.Z Corrigé", L"Z"})
    plume.texte(titre, attributs::kGrisCentre);
  plume.fermerLigne();
}

void celluleAltitudes(plumeRapport& plume, int modeNivellement, const corrections& parts, std::size_t i,
                      double X, double Y, double Z) {
  plume.nombres({X, Y, parts.dz[i]});
  if (modeNivellement == 2) plume.nombre(parts.L[i]);
  if (modeNivellement == 3) plume.nombre(std::sqrt(parts.L[i]));
  plume.nombres({parts.c[i], parts.dz[i] - parts.c[i], Z});
}

}  // namespace veltora
