#include "stakeout/dialogs/liste_codes.h"

#include "base/format.h"
#include "codes/table_codification.h"
#include "points/projets_topo.h"

#include <map>

namespace veltora {

void listerCodes(ui::ComboBox& liste, int choisi) {
  std::map<int, int> nombres{{choisi, 0}};
  if (tablesPoints)
    for (const pointDuDessin& point : *tablesPoints->currTable()->getData()) ++nombres[point.getCode()];
  for (const auto& [code, nombre] : nombres) {
    const AcString libelle = getTableCodification().getOuCreerCode(code).libelle;
    const int rang = liste.addItem(base::formater(L"%4d %s (%d pts)", code, libelle, nombre), code);
    if (code == choisi) liste.setIndex(rang);
  }
}

}  // namespace veltora
