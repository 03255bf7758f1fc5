#include "core/compteur_identifiants.h"

#include <ctime>
#include <utility>

namespace veltora {

compteurIdentifiants& compteurIdentifiants::commun() {
  static compteurIdentifiants compteur;
  return compteur;
}

std::uint32_t compteurIdentifiants::suivant() {
  if (m_valeur == kNonInitialise) {
    m_valeur = static_cast<std::uint32_t>(m_horloge ? m_horloge() : std::time(nullptr));
  }
  std::uint32_t pris = m_valeur++;
  if (pris == kNonInitialise) pris = m_valeur++;
  return pris;
}

void compteurIdentifiants::reinitialiser(std::function<std::int64_t()> horloge) {
  m_valeur = kNonInitialise;
  m_horloge = std::move(horloge);
}

}  // namespace veltora
