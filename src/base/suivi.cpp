#include "base/suivi.h"

#include <utility>

namespace veltora::base {
namespace {

PortSuivi*& enVigueur() {
  static PortSuivi* port = nullptr;
  return port;
}

}  // namespace

PortSuivi* portSuivi() { return enVigueur(); }

PortSuivi* setPortSuivi(PortSuivi* port) { return std::exchange(enVigueur(), port); }

void Suivi::etendre(long long minimum, long long maximum) {
  if (!m_ouvert && portSuivi()) {
    m_ouvert = true;
    m_afficheur = portSuivi()->ouvrirSuivi();
  }
  if (m_afficheur) m_afficheur->etendre(minimum, maximum);
}

void Suivi::avancer() {
  if (m_afficheur) m_afficheur->avancer();
}

void Suivi::aller(long long position) {
  if (m_afficheur) m_afficheur->aller(position);
}

bool Suivi::arrete() const { return portSuivi() && portSuivi()->arretDemande(); }

}  // namespace veltora::base
