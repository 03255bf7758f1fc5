#include "core/config_variable.h"

#include "core/config_store.h"

#include <utility>

namespace veltora {

template <class T>
Static_ConfigVariable<T>::Static_ConfigVariable(std::string nomCle, const T& defaut)
    : ConfigVariable_base<T>(std::move(nomCle)) {
  ConfigStore& store = ConfigStore::instance();
  if (store.lire(this->cle, this->valeur)) return;
  this->valeur = defaut;
  store.poser(this->cle, defaut);
  store.sauver();
}

template class Static_ConfigVariable<AcGePoint2d>;
template class Static_ConfigVariable<int>;

}  // namespace veltora
