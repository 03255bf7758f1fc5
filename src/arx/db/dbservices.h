#pragma once

#include "arx/adesk.h"

#include <filesystem>
#include <string>
#include <vector>

class AcDbDatabase;

/// Services of the host to code that has no document at hand.
class ARX_API AcDbHostApplicationServices {
public:
  [[nodiscard]] AcDbDatabase* workingDatabase() const { return m_working; }
  void setWorkingDatabase(AcDbDatabase* database) { m_working = database; }
  /// Looks a file up: as given, then in the folder of the working drawing, then in the support folders. A
  /// name that ends in ".dwg" is found too where only the ".dxf" of that name lies, which serves it. An empty
  /// result when it is nowhere.
  [[nodiscard]] std::wstring findFile(const std::wstring& name) const;
  /// Adds a folder behind those that are there; one that is there keeps its place.
  void addSupportFolder(const std::filesystem::path& folder);

private:
  AcDbDatabase* m_working = nullptr;
  std::vector<std::filesystem::path> m_support;
};
ARX_API AcDbHostApplicationServices* acdbHostApplicationServices();
/// The working drawing; null for none.
inline AcDbDatabase* acdbCurDwg() { return acdbHostApplicationServices()->workingDatabase(); }

/// Registers an application name for xdata in the working database; success also when it is registered
/// already.
ARX_API Acad::ErrorStatus acdbRegApp(const ACHAR* name);
