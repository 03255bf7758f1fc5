#include "arx/db/dbservices.h"

#include "arx/db/dbmain.h"
#include "base/paths.h"

#include <algorithm>

AcDbHostApplicationServices* acdbHostApplicationServices() {
  static auto* const services = new AcDbHostApplicationServices;
  return services;
}

namespace {

std::filesystem::path pathOf(const std::wstring& name) { return veltora::base::cheminDuTexte(name); }

/// A file, or the name of a drawing that the file of the same name ending in ".dxf" serves.
bool isFile(const std::filesystem::path& path) {
  std::error_code ignored;
  if (std::filesystem::is_regular_file(path, ignored)) return true;
  return veltora::base::terminaison(path) == L"dwg" &&
         std::filesystem::is_regular_file(std::filesystem::path(path).replace_extension(".dxf"), ignored);
}

std::wstring nameOf(const std::filesystem::path& path) { return veltora::base::texteDuChemin(path); }

}  // namespace

std::wstring AcDbHostApplicationServices::findFile(const std::wstring& name) const {
  if (name.empty()) return {};
  const std::filesystem::path path = pathOf(name);
  if (isFile(path)) return nameOf(path);
  if (path.is_absolute()) return {};
  if (m_working && !m_working->fileName().empty()) {
    const std::filesystem::path beside = pathOf(m_working->fileName()).parent_path() / path;
    if (isFile(beside)) return nameOf(beside);
  }
  for (const std::filesystem::path& folder : m_support) {
    if (isFile(folder / path)) return nameOf(folder / path);
  }
  return {};
}

void AcDbHostApplicationServices::addSupportFolder(const std::filesystem::path& folder) {
  if (std::find(m_support.begin(), m_support.end(), folder) == m_support.end()) m_support.push_back(folder);
}

Acad::ErrorStatus acdbRegApp(const ACHAR* name) {
  AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
  if (!database) return Acad::eNoDatabase;
  AcDbObjectPointer<AcDbRegAppTable> table(database->ensureTable("APPID"), AcDb::kForRead);
  if (table.openStatus() != Acad::eOk) return table.openStatus();
  if (table->has(name)) return Acad::eOk;
  Acad::ErrorStatus status = table->upgradeOpen();
  if (status != Acad::eOk) return status;
  auto record = std::make_unique<AcDbRegAppTableRecord>();
  status = record->setName(name);
  if (status == Acad::eOk) status = table->add(record.get());
  if (status == Acad::eOk) record.release()->close();
  return status;
}
