#include "jobs/lister_points.h"

#include "arx/db/dbmain.h"
#include "base/paths.h"
#include "base/text.h"
#include "points/exchange/export_tables.h"

namespace veltora {

bool listerPoints(const std::filesystem::path& dessin, bool csv, std::string& texte, std::wstring& erreur,
                  std::vector<std::string>& defauts) {
  AcDbDatabase database(false, true);
  if (database.readDwgFile(base::texteDuChemin(dessin).c_str(), &erreur) != Acad::eOk) return false;
  defauts = database.readFindings();
  if (exporterTables(&database, csv ? formatTables::kCsv : formatTables::kTexte, texte)) return true;
  erreur = base::fromUtf8(texte);
  return false;
}

}  // namespace veltora
