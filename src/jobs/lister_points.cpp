#include "jobs/lister_points.h"

#include "arx/db/dbmain.h"
#include "base/paths.h"
#include "base/text.h"
#include "points/exchange/export_tables.h"

namespace veltora {

bool listerPoints(const std::filesystem::path& dessin, bool csv, std::string& texte, std::wstring& erreur) {
  AcDbDatabase database(false, true);
  if (database.readDwgFile(base::texteDuChemin(dessin).c_str(), &erreur) != Acad::eOk) return false;
  if (exporterTables(&database, csv ? formatTables::kCsv : formatTables::kTexte, texte)) return true;
  erreur = base::fromUtf8(texte);
  return false;
}

}  // namespace veltora
