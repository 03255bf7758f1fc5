#include "core/imprimer_doutes.h"

#include "arx/ed/acutads.h"

namespace veltora {

void imprimerDoutes(const base::Remarques& remarques) {
  for (const base::Remarque& remarque : remarques)
    if (remarque.douteuse) acutPrintf(L"\n%s", remarque.phrase());
}

}  // namespace veltora
