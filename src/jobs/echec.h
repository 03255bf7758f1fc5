#pragma once

#include <string>
#include <utility>

namespace veltora {

/// Says why a job has no result. @return false
template <class Resultat>
bool echec(Resultat& resultat, std::wstring raison) {
  resultat.erreur = std::move(raison);
  return false;
}

}  // namespace veltora
