#include "drafting/clothoids/imprimer_matrice.h"

#include "arx/ed/acutads.h"

#include <numbers>

namespace veltora {

void analyserMatrice(const AcGeMatrix2d& matrice, const std::wstring& nom) {
  acutPrintf(L"\n\nDonnées de la matrice %s\n-------------\n :", nom);
  for (const auto& [a, b, c] : matrice.entry) acutPrintf(L"\n |\t %10.4f\t %10.4f\t %10.4f   |", a, b, c);
  double echelle = 0.0;
  double angle = 0.0;
  bool miroir = false;
  AcGeVector2d axe;
  if (!matrice.isConformal(echelle, angle, miroir, axe)) {
    acutPrintf(L"\nTransformation NON CONFORME !!!!");
    return;
  }
  const AcGeVector2d deplacement = matrice.translation();
  acutPrintf(L"\nVecteur déplacement :%.4f,%.4f", deplacement.x, deplacement.y);
  acutPrintf(L"\nRotation = %.4f degres", angle * 180.0 / std::numbers::pi);
  acutPrintf(L"\nScale factor =%.4f", echelle);
  if (miroir) acutPrintf(L"\n\t Mirror autour de %.4f %.4f", axe.x, axe.y);
}

void imprimerMatrice(const AcGeMatrix2d& matrice, const std::wstring& nom) {
  acutPrintf(L"\nMatrice: %s \n", nom);
  for (const auto& [a, b, c] : matrice.entry) acutPrintf(L"| %10.6f%10.6f%10.6f|\n", a, b, c);
}

}  // namespace veltora
