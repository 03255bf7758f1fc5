#include "jobs/feuille_calculs.h"

namespace veltora {
namespace {

void (*s_montrer)() = nullptr;

}  // namespace

void installerFeuilleCalculs(void (*montrer)()) { s_montrer = montrer; }

bool montrerFeuilleCalculs() {
  if (!s_montrer) return false;
  s_montrer();
  return true;
}

}  // namespace veltora
