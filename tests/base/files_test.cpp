#include "base/files.h"
#include "base/paths.h"
#include "base/usage_note.h"
#include "support/dossier_temporaire.h"

#include <gtest/gtest.h>
#include <array>
#include <cstdlib>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

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

TEST_F(Files, WhatIsNoFileIsLeftAlone) {
  fs::create_symlink(m_folder / "nulle part", m_folder / "perdu");
  fs::create_symlink("cercle", m_folder / "cercle");
  ASSERT_EQ(::mkfifo((m_folder / "tube").c_str(), 0666), 0);
  for (const char* name : {"perdu", "cercle", "tube", "/dev/null"}) {
    std::string reason;
    EXPECT_FALSE(remplacerFichier(m_folder / name, "a", &reason)) << name;
    EXPECT_EQ(reason.find("erreur du système"), std::string::npos) << reason;
    EXPECT_EQ(lireFichier(m_folder / name), std::nullopt) << name;
  }
  EXPECT_EQ(entries(), 3U);
  EXPECT_TRUE(fs::is_symlink(m_folder / "perdu") && fs::is_fifo(m_folder / "tube"));
}

TEST_F(Files, TheOwnerStays) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can make files of others";
  // The usual folder of the tests is closed to others.
  std::string pattern = (fs::temp_directory_path() / "veltora_essai_XXXXXX").string();
  ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
  const fs::path folder = pattern;
  const fs::path path = folder / "plan.dxf";
  ASSERT_TRUE(remplacerFichier(path, "un texte plus long"));
  ASSERT_EQ(::chown(path.c_str(), 4711, 4712), 0);
  fs::permissions(path, fs::perms(0666));
  fs::permissions(folder, fs::perms(0777));
  const auto owner = [&path] {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? std::to_string(info.st_uid) + ":" + std::to_string(info.st_gid)
                                            : std::string();
  };
  ASSERT_TRUE(remplacerFichier(path, "de root"));
  EXPECT_EQ(owner(), "4711:4712");
  ASSERT_EQ(::seteuid(4713), 0);
  std::string reason;
  const bool written = remplacerFichier(path, "autre", &reason);
  ASSERT_EQ(::seteuid(0), 0);
  EXPECT_TRUE(written) << reason;
  EXPECT_EQ(lireFichier(path), "autre") << "the old file itself is written";
  EXPECT_EQ(owner(), "4711:4712");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
  fs::remove_all(folder);
}

TEST_F(Files, WhatAKilledProcessLeftGoesWithTheNextSave) {
  const std::string abandoned = m_folder / ".plan.dxf.veltora-abcdef";
  const std::string ofAnother = m_folder / ".plan.dxf.bak.veltora-abcdef";
  for (const std::string& path : {abandoned, ofAnother}) std::ofstream(path) << "moitié";
  RemplacementFichier slow(m_folder / "plan.dxf");
  EXPECT_FALSE(fs::exists(abandoned));
  ASSERT_TRUE(remplacerFichier(m_folder / "plan.dxf", "vite"));
  ASSERT_TRUE(slow.ecrire("lent") && slow.terminer()) << "a file that is being written is no litter";
  EXPECT_EQ(lireFichier(m_folder / "plan.dxf"), "lent");
  EXPECT_EQ(entries(), 2U);
}

TEST_F(Files, ANoteTellsWhoHasAFileOpen) {
  const fs::path file = m_folder / "plan.dxf";
  const std::string note = file.string() + ".ouvert";
  {
    NoteUsage first;
    EXPECT_EQ(first.poser(file), "");
    NoteUsage second;
    const std::string told = second.poser(file);
    EXPECT_NE(told.find("déjà ouvert par "), std::string::npos) << told;
    EXPECT_NE(told.find("processus " + std::to_string(::getpid())), std::string::npos) << told;
    second.retirer();
    EXPECT_TRUE(fs::exists(note)) << "the note of the first stays";
  }
  EXPECT_FALSE(fs::exists(note));
  std::array<char, 256> host{};
  ::gethostname(host.data(), host.size() - 1);
  const auto left = [&](const std::string& where) {
    std::ofstream(note) << "Ce dessin\nposte : " << where
                        << "\nutilisateur : Léa\nprocessus : 7\ndepuis : lundi\n";
  };
  left(host.data());
  NoteUsage next;
  EXPECT_NE(next.poser(file).find("laissé ouvert par Léa sur "), std::string::npos);
  next.retirer();
  left("ailleurs");
  EXPECT_NE(next.poser(file).find("déjà ouvert par Léa sur ailleurs (processus 7), depuis le lundi"),
            std::string::npos);
  next.retirer();
  EXPECT_TRUE(fs::exists(note)) << "whether it is abandoned cannot be seen from here";
}

TEST_F(Files, TemporaryFilesLieInAFolderOfTheUsersOwn) {
  const char* const former = std::getenv("TMPDIR");
  const std::string kept = former ? former : "";
  ::setenv("TMPDIR", m_folder.c_str(), 1);
  const fs::path usual = m_folder / ("veltora-" + std::to_string(::geteuid()));
  EXPECT_EQ(dossierTemporaire(), usual);
  EXPECT_EQ(fs::status(usual).permissions(), fs::perms::owner_all);
  EXPECT_EQ(dossierTemporaire(), usual) << "the same one for all sessions";
  fs::permissions(usual, fs::perms::all);
  const fs::path other = dossierTemporaire();
  EXPECT_NE(other, usual) << "open to others";
  EXPECT_EQ(fs::status(other).permissions(), fs::perms::owner_all);
  setDossierTemporaire({});
  fs::remove(usual);
  fs::create_symlink(other, usual);
  EXPECT_NE(dossierTemporaire(), usual) << "a link of somebody else's making";
  setDossierTemporaire({});
  former ? ::setenv("TMPDIR", kept.c_str(), 1) : ::unsetenv("TMPDIR");
}

TEST(Chemins, EveryNameSurvivesAsText) {
  for (const std::string name :
       {"plan.dxf", "St. Étienne", "\xC9tage\xE9", "a\xE2\x82", "\xFF\xFE", "€😀\x80"}) {
    const fs::path path(name);
    EXPECT_EQ(cheminDuTexte(texteDuChemin(path)).native(), name);
  }
  EXPECT_EQ(texteDuChemin("\xC9t\u00E9"), L"\xDCC9t\u00E9");
  EXPECT_EQ(terminaison("Relevé St. ÉTIENNE"), L" étienne");
  EXPECT_EQ(terminaison("/a.b/PLAN.DWG"), L"dwg");
  EXPECT_EQ(terminaison("/a.b/plan"), L"");
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
