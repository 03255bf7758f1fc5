// Choices of files: filters and the names that they complete.
#include "ui/file_filter.h"
#include "base/text.h"

#include <gtest/gtest.h>

namespace {
using namespace veltora;

TEST(FileFilter, CompletesANameByTheChosenFilter) {
  const std::wstring filter = L"Liste|*.xyz;*.TXT|Tableau|*.csv|Tous les fichiers|*.*|";
  struct Row {
    const wchar_t* extension;
    const wchar_t* path;
    int filterIndex;
    const char* completed;
  };
  const Row rows[] = {
      {L"xyz", L"leve", 1, "leve.xyz"},
      {L"txt", L"leve", 1, "leve.txt"},  // one of several, in any case
      {L"mc", L"leve", 1, "leve.mc"},    // nobody chose that filter
      {L"xyz", L"leve", 2, "leve.csv"},
      {L"xyz", L"leve", 3, "leve.xyz"},
      {L"xyz", L"leve", 9, "leve.xyz"},
      {L"", L"leve", 2, "leve"},
      {L"*.xyz", L"leve", 1, "leve.xyz"},
      {L"xyz", L"leve.dat", 2, "leve.dat"},
      {L"xyz", L"lot.1/leve", 2, "lot.1/leve.csv"},
  };
  for (const Row& row : rows) {
    base::FileRequest request;
    request.extension = row.extension;
    request.filter = filter;
    EXPECT_EQ(base::toUtf8(ui::completedPath(request, row.path, row.filterIndex)), row.completed);
  }
  EXPECT_EQ(ui::filtersOf(filter).size(), 3U);
  EXPECT_EQ(ui::filtersOf(L"Seul").size(), 0U);
}

}  // namespace
