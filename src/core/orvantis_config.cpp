#include "core/orvantis_config.h"

namespace veltora {
namespace {

ReglagesOrvantis& reglages() {
  static ReglagesOrvantis valeurs;
  return valeurs;
}

}  // namespace

const ReglagesOrvantis& reglagesOrvantis() { return reglages(); }

void setCouleurParDefaut(std::int32_t couleur) { reglages().couleurParDefaut = couleur; }
void setDecimalesAltitudes(std::int32_t decimales) { reglages().decimalesAltitudes = decimales; }
void setHauteurTextes(double hauteur) { reglages().hauteurTextes = hauteur; }
void setEchelleDessin(double echelle) { reglages().echelleDessin = echelle; }
void setUniteLongueur(std::int64_t unite) { reglages().uniteLongueur = unite; }

}  // namespace veltora
