// "config.ini" and the variables that live in it.
#include "core/config_store.h"
#include "core/config_systeme.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {
using namespace veltora;
namespace fs = std::filesystem;

class ConfigVariables : public ::testing::Test {
protected:
  void SetUp() override { ConfigStore::instance().recharger(); }
  /// The file as another run would find it.
  void fichier(const std::string& contenu) {
    dossier.ecrire("config.ini", contenu);
    ConfigStore::instance().recharger();
  }
  static int entier(const char* cle, int defaut) { return Static_ConfigVariable<int>(cle, defaut).valeur; }

  DossierEssai dossier;
};

TEST_F(ConfigVariables, AProgramsStartFillsTheFileWithItsEightVariables) {
  // This very program links them: it is started again in a fresh installation directory.
  const std::string commande = "VELTORA_INSTALLATION='" + dossier.chemin.string() + "' '" +
                               fs::read_symlink("/proc/self/exe").string() +
                               "' --gtest_list_tests > /dev/null";
  ASSERT_EQ(std::system(commande.c_str()), 0);
  EXPECT_EQ(dossier.lire("config.ini"),
            "[VARN]\nUserPaperScale0=1000.0 1000.0\nUserPaperScale1=1000.0 1000.0\n"
            "UserPaperScale2=1000.0 1000.0\nUserPaperScale3=1000.0 1000.0\nUserPaperScale4=1000.0 1000.0\n"
            "UserPaperScale5=1000.0 1000.0\ngPrecisionCoordonneesX=3\ngPrecisionCoordonneesY=3\n");
  EXPECT_EQ(UserPaperScale[5].cle, "VARN.UserPaperScale5");
  EXPECT_EQ(gPrecisionCoordonneesY.cle, "VARN.gPrecisionCoordonneesY");
}

TEST_F(ConfigVariables, AMissingVariableIsWrittenAtOnceAndTheRestKept) {
  fichier("; un commentaire\r\n[AUTRE]\r\ncle = a.b c\r\n[VARN]\r\nfaux=trois\r\nx=7\r\n");
  EXPECT_EQ(entier("VARN.x", 3), 7) << "the user's value";
  EXPECT_EQ(entier("VARN.faux", 3), 3) << "does not convert";
  EXPECT_EQ(entier("VARN.neuf", -4), -4);
  EXPECT_EQ(entier("SUITE.a.b", 5), 5) << "split at the first point";
  EXPECT_EQ(dossier.lire("config.ini"), "[AUTRE]\ncle=a.b c\n[VARN]\nfaux=3\nx=7\nneuf=-4\n[SUITE]\na.b=5\n");
}

TEST_F(ConfigVariables, NothingIsWrittenWhenEveryVariableIsThere) {
  const std::string contenu = "\xEF\xBB\xBF[VARN]\n  x = 7  \n";
  fichier(contenu);
  Static_ConfigVariable<int> x("VARN.x", 3);
  x.valeur = 9;  // for this run only
  ConfigStore::instance().sauver();
  EXPECT_EQ(dossier.lire("config.ini"), contenu);
  EXPECT_EQ(entier("VARN.x", 3), 7);
}

TEST_F(ConfigVariables, IntegersAreWholeOrTheDefault) {
  for (const char* texte : {"3.5", "", "12x", "0x10", "99999999999", "1 2"}) {
    fichier(std::string("[VARN]\nx=") + texte + "\n");
    EXPECT_EQ(entier("VARN.x", 42), 42) << texte;
  }
}

TEST_F(ConfigVariables, PointsKeepBothDoublesExactly) {
  const AcGePoint2d point(650000.1234567891, -1.0 / 3.0);
  Static_ConfigVariable<AcGePoint2d>("VARN.p", point);
  ConfigStore::instance().recharger();
  EXPECT_EQ(Static_ConfigVariable<AcGePoint2d>("VARN.p", {1, 2}).valeur, point);
  for (const char* texte : {"1", "1 ", "1 x", "1,5 2", "1 2 3", "nan 1"}) {
    fichier(std::string("[VARN]\np=") + texte + "\n");
    EXPECT_EQ(Static_ConfigVariable<AcGePoint2d>("VARN.p", {5, 6}).valeur, AcGePoint2d(5, 6)) << texte;
  }
}

TEST_F(ConfigVariables, AnUnreadableFileGivesTheDefaultsAndIsWrittenAnew) {
  for (const char* contenu :
       {"[VARN\nx=1\n", "ni cle ni section\n", "[VARN]\nx=1\nx=2\n", "=5\n", "[]\n\0\1"}) {
    fichier(contenu);
    EXPECT_EQ(entier("VARN.y", 3), 3);
    EXPECT_NE(dossier.lire("config.ini").find("[VARN]\ny=3\n"), std::string::npos) << contenu;
  }
  fichier("VARN=3\n");  // a key without section where a section belongs
  EXPECT_EQ(entier("VARN.y", 4), 4);
  EXPECT_EQ(dossier.lire("config.ini"), "[VARN]\ny=4\n");
}

TEST_F(ConfigVariables, FailingToWriteIsNoError) {
  fs::remove_all(dossier.chemin);
  EXPECT_EQ(entier("VARN.x", 3), 3);
  EXPECT_FALSE(fs::exists(dossier.chemin));
}

}  // namespace
