#include "base/files.h"
#include "support/dossier_temporaire.h"

#include <gtest/gtest.h>
#include <fstream>

namespace veltora::base {
namespace {
namespace fs = std::filesystem;

class Files : public ::testing::Test {
protected:
  [[nodiscard]] std::size_t entries() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()));
  }
  const DossierTemporaire m_dossier;
  const fs::path& m_folder = m_dossier.chemin;
};

TEST_F(Files, ReplacingKeepsPermissionsAndLeavesNothingBeside) {
  const fs::path path = m_folder / "plan.dxf";
  ASSERT_TRUE(remplacerFichier(path, "un"));
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_TRUE(remplacerFichier(path, std::string("d\0ux", 4)));
  EXPECT_EQ(lireFichier(path), std::string("d\0ux", 4));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(entries(), 1U);
}

TEST_F(Files, ASymbolicLinkStaysALink) {
  const fs::path target = m_folder / "vrai.txt";
  ASSERT_TRUE(remplacerFichier(target, "a"));
  fs::create_symlink(target, m_folder / "lien.txt");
  ASSERT_TRUE(remplacerFichier(m_folder / "lien.txt", "b"));
  EXPECT_TRUE(fs::is_symlink(m_folder / "lien.txt"));
  EXPECT_EQ(lireFichier(target), "b");
}

TEST_F(Files, AFailureNamesThePathAndChangesNothing) {
  std::string reason;
  EXPECT_FALSE(remplacerFichier(m_folder / "absent" / "x.txt", "a", &reason));
  EXPECT_TRUE(reason.find("absent") != std::string::npos && reason.ends_with("introuvable")) << reason;
  EXPECT_FALSE(remplacerFichier(m_folder, "a", &reason));
  EXPECT_EQ(entries(), 0U);
  EXPECT_EQ(lireFichier(m_folder), std::nullopt);
  EXPECT_EQ(lireFichier(m_folder / "absent.txt"), std::nullopt);
}

TEST_F(Files, TemporaryNamesAreUnique) {
  const fs::path a = creerFichierTemporaire(m_folder, "_TP");
  const fs::path b = creerFichierTemporaire(m_folder, "_TP");
  EXPECT_NE(a, b);
  EXPECT_TRUE(fs::exists(a) && fs::exists(b));
  EXPECT_EQ(a.filename().string().substr(0, 3), "_TP");
  EXPECT_TRUE(creerFichierTemporaire(m_folder / "absent", "_TP").empty());
}

}  // namespace
}  // namespace veltora::base
