#include "host/lisp/arguments_lisp.h"

namespace veltora {

namespace {

/// The item behind an argument; a list is skipped as a whole.
const resbuf* suivant(const resbuf* element) {
  int profondeur = 0;
  for (; element; element = element->rbnext) {
    if (element->restype == RTLB) ++profondeur;
    if (element->restype == RTLE) --profondeur;
    if (profondeur <= 0) return element->rbnext;
  }
  return nullptr;
}

}  // namespace

int argumentsLisp::nombre() const {
  int compte = 0;
  for (const resbuf* element = m_chaine; element; element = suivant(element)) ++compte;
  return compte;
}

const resbuf* argumentsLisp::element(int n) const {
  const resbuf* element = n < 0 ? nullptr : m_chaine;
  for (; element && n > 0; --n) element = suivant(element);
  return element;
}

bool argumentsLisp::estEntier(const resbuf* element) {
  return element && (element->restype == RTSHORT || element->restype == RTLONG);
}

bool argumentsLisp::estReel(const resbuf* element) {
  return estEntier(element) || (element && element->restype == RTREAL);
}

bool argumentsLisp::estTexte(const resbuf* element) {
  return element && element->restype == RTSTR && element->resval.rstring;
}

int argumentsLisp::entier(const resbuf* element) {
  if (!estEntier(element)) return kPasEntier;
  return element->restype == RTSHORT ? element->resval.rint : element->resval.rlong;
}

double argumentsLisp::reel(const resbuf* element) {
  if (estEntier(element)) return entier(element);
  return estReel(element) ? element->resval.rreal : kPasReel;
}

std::optional<AcGePoint3d> lirePosition(const resbuf* element) {
  if (!element) return std::nullopt;
  if (element->restype == RTPOINT || element->restype == RT3DPOINT) {
    const double* p = element->resval.rpoint;
    return AcGePoint3d(p[0], p[1], element->restype == RT3DPOINT ? p[2] : 0.0);
  }
  if (element->restype != RTLB) return std::nullopt;
  double place[3] = {0.0, 0.0, 0.0};
  int n = 0;
  const resbuf* nombre = element->rbnext;
  for (; n < 3 && argumentsLisp::estReel(nombre); nombre = nombre->rbnext)
    place[n++] = argumentsLisp::reel(nombre);
  if (n < 2 || !nombre || nombre->restype != RTLE) return std::nullopt;
  return AcGePoint3d(place[0], place[1], place[2]);
}

}  // namespace veltora
