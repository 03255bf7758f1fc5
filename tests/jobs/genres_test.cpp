#include "base/files.h"
#include "base/text.h"
#include "jobs/genre_fichier.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <array>

namespace veltora {
namespace {

constexpr std::array kNoms = {"inconnu", "obs",  "mc",  "xyz", "couples", "formules", "dxf",
                              "dwg",     "html", "xml", "gkf", "gsi",     "lisp",     "binaire"};

std::string contenu(std::string texte) {
  if (const auto octets = base::lireFichier(VELTORA_SOURCE_DIR "/" + texte)) return *octets;
  for (std::size_t ou = 0; (ou = texte.find("\\0")) != std::string::npos;) texte.replace(ou, 2, 1, '\0');
  return texte;
}

TEST(GenreFichier, IsToldByTheContent) {
  for (const CaseRow& cas : caseRows("jobs/cases/genres.txt", "kinds"))
    EXPECT_STREQ(kNoms.at(static_cast<std::size_t>(reconnaitreGenre(contenu(cas[1])))), cas[2].c_str())
        << cas;
}

/// A large file is cut in the middle of a line, which says nothing then.
TEST(GenreFichier, LooksAtTheBeginningOfLargeFiles) {
  std::string liste;
  while (liste.size() < 70000) liste += "P100 652318.420 6862104.870 214.360 100\n";
  EXPECT_EQ(reconnaitreGenre(liste), genreFichier::xyz);
}

TEST(GenreFichier, ARefusalSaysWhatReadsTheFile) {
  EXPECT_EQ(base::toUtf8(refusDuGenre(L"r.mc", contenu("examples/reseau_mixte.mc"), genreFichier::obs)),
            "« r.mc » contient, à ce qu'il semble, un réseau (.mc), que lit « veltora reseau », et non des "
            "observations de polygonale (.obs)");
  EXPECT_EQ(refusDuGenre(L"r.mc", contenu("examples/reseau_mixte.mc"), genreFichier::mc), L"");
  EXPECT_EQ(refusDuGenre(L"c.txt", contenu("examples/helmert.txt"), genreFichier::xyz), L"")
      << "a list without headings may look like pairs";
  EXPECT_TRUE(doutesDuGenre(L"r.mc", contenu("examples/reseau_mixte.mc"), genreFichier::obs).douteuses());
}

}  // namespace
}  // namespace veltora
