#pragma once

#include "base/suivi.h"

/// The user who asks to stop when he has been heard so often; installed for its life.
class ArretCompte : public veltora::base::PortSuivi {
public:
  explicit ArretCompte(int apres) : m_apres(apres), m_ancien(veltora::base::setPortSuivi(this)) {}
  ~ArretCompte() override { veltora::base::setPortSuivi(m_ancien); }
  ArretCompte(const ArretCompte&) = delete;
  ArretCompte& operator=(const ArretCompte&) = delete;
  std::unique_ptr<veltora::base::AfficheurSuivi> ouvrirSuivi() override { return nullptr; }
  [[nodiscard]] bool arretDemande() const override { return ++m_demandes > m_apres; }
  void oublierArret() override {}
  void recommencer() { m_demandes = 0; }

private:
  int m_apres;
  mutable int m_demandes = 0;
  veltora::base::PortSuivi* m_ancien;
};
