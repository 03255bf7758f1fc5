#include "base/lines/line_reader.h"
#include "base/text.h"
#include "support/case_rows.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

namespace veltora::base {
namespace {

/// The bytes that a cell stands for.
std::string bytesOf(const std::string& cell) {
  std::string bytes;
  for (std::size_t i = 0; i < cell.size(); ++i) {
    if (cell[i] != '\\') {
      bytes += cell[i];
      continue;
    }
    const char kind = cell.at(++i);
    if (kind != 'x') {
      bytes += kind == 'n' ? '\n' : kind == 'r' ? '\r' : '\0';
      continue;
    }
    const std::string digits = "0123456789ABCDEF";
    bytes += static_cast<char>(digits.find(cell.at(i + 1)) * 16 + digits.find(cell.at(i + 2)));
    i += 2;
  }
  return bytes;
}

TEST(LineReader, ReadsWhateverWroteTheFile) {
  constexpr std::size_t kLimit = 8;
  for (const CaseRow& row : caseRows("base/cases/lines.txt", "lines")) {
    const std::string bytes = bytesOf(row[1]);
    LineReader reader(bytes, kLimit);
    std::string lines;
    while (reader.next()) {
      lines += (lines.empty() ? "" : " ") + std::to_string(reader.number()) + ":" + toUtf8(reader.wide());
      const auto cut = reader.cut();
      if (!cut) continue;
      EXPECT_EQ(cut->ligne, reader.number()) << row;
      lines += "!" + toUtf8(cut->texte);
    }
    EXPECT_EQ(lines, row[2]) << row;
    EXPECT_GE(reader.position(), reader.size()) << row;
  }
}

TEST(Remarques, TellTheirPlaceAsFarAsItIsKnown) {
  Remarques remarques;
  remarques.ajouter(L"seule");
  remarques.omettre(12, L"ignorée");
  EXPECT_EQ(texteDe(remarques), "seule\nligne 12 : ignorée\n");
  remarques.situer(L"a.obs");
  remarques.douter(L"douteuse");
  EXPECT_EQ(texteDe(remarques), "a.obs, seule\na.obs, ligne 12 : ignorée\nà vérifier : douteuse\n");
  std::string doubtful;
  for (const Remarque& remarque : remarques) doubtful += remarque.douteuse ? 'd' : '-';
  EXPECT_EQ(doubtful, "--d");
}

TEST(Remarques, CiteTheFirstTwentyAndCountTheRest) {
  Remarques lues;
  for (int i = 1; i <= 20; ++i) lues.omettre(i, L"x");
  Remarques dites;
  dites.citer(lues);
  EXPECT_EQ(dites.nombre(), 20U);
  lues.ajouter(21, L"autre");
  lues.omettre(22, L"x");
  dites = {};
  dites.citer(lues);
  ASSERT_EQ(dites.nombre(), 21U);
  EXPECT_EQ(phrasesDe(dites).back(), "… et 2 de plus");
  dites = {};
  dites.citer(lues, [](int reste) { return std::to_wstring(reste) + L" autres"; });
  EXPECT_EQ(phrasesDe(dites).back(), "2 autres");
  dites = {};
  dites.ajouterGroupees(lues);
  EXPECT_EQ(
      texteDe(dites),
      "ligne 21 : autre\n21 lignes ignorées : 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, "
      "19, 20…\n");
}

TEST(Remarques, BeyondTheFirstOnesAreOnlyCounted) {
  Remarques lues;
  for (int i = 1; i <= 10500; ++i) lues.omettre(i, L"x");
  for (int i = 1; i <= 7; ++i) lues.ajouter(i, L"autre");
  EXPECT_EQ(lues.nombre(), 10507U);
  EXPECT_EQ(phrasesDe(lues).size(), 10001U);
  EXPECT_EQ(phrasesDe(lues).back(), "… et 507 de plus");
  Remarques dites;
  dites.ajouterGroupees(lues);
  EXPECT_EQ(dites.nombre(), 8U);
  EXPECT_EQ(phrasesDe(dites).at(0).substr(0, 32), "10500 lignes ignorées : 1, 2, 3");
  EXPECT_EQ(phrasesDe(dites).back(), "… et 7 de plus");
}

}  // namespace
}  // namespace veltora::base
