// Where the installation directory is, what it receives, and how paths are written.
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <utility>

namespace {
using namespace veltora;
namespace fs = std::filesystem;

/// An environment variable for a scope; null takes it away.
class Variable {
public:
  Variable(const char* nom, const char* valeur) : m_nom(nom) {
    if (const char* avant = std::getenv(nom)) m_avant = avant;
    poser(valeur);
  }
  ~Variable() { poser(m_avant ? m_avant->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

private:
  void poser(const char* valeur) { valeur ? ::setenv(m_nom, valeur, 1) : ::unsetenv(m_nom); }
  const char* m_nom;
  std::optional<std::string> m_avant;
};

class Installation : public ::testing::Test {
protected:
  void SetUp() override {
    fs::create_directories(donnees / "biblio" / "sous");
    fs::create_directories(donnees / "Cartouches");
    dossier.ecrire("donnees/biblio/varnblk1.dxf", "bloc 1");
    dossier.ecrire("donnees/biblio/sous/a.dxf", "a");
    dossier.ecrire("donnees/lisezmoi.txt", "pas un dossier");
    setDossierInstallation({});  // the rule
    setDossierDonnees(donnees);
  }
  void TearDown() override { setDossierDonnees({}); }
  DossierEssai dossier;
  fs::path donnees = dossier.chemin / "donnees";
};

TEST_F(Installation, TheEnvironmentVariableComesFirstAndIsMade) {
  const fs::path choisi = dossier.chemin / "site" / "veltora";
  const Variable installation("VELTORA_INSTALLATION", choisi.c_str());
  EXPECT_EQ(dossierInstallation(), choisi);
  EXPECT_EQ(dossier.lire("site/veltora/biblio/sous/a.dxf"), "a");
  EXPECT_TRUE(fs::is_directory(choisi / "Cartouches"));
  EXPECT_FALSE(fs::exists(choisi / "lisezmoi.txt"));
}

TEST_F(Installation, ThePerUserFolderIsFilledOnceAndKeepsWhatTheUserChanged) {
  const Variable sansChoix("VELTORA_INSTALLATION", nullptr);
  const Variable xdg("XDG_DATA_HOME", dossier.chemin.c_str());
  EXPECT_EQ(dossierInstallation(), dossier.chemin / "veltora");
  dossier.ecrire("veltora/biblio/varnblk1.dxf", "le mien");
  fs::remove_all(dossier.chemin / "veltora" / "Cartouches");
  setDossierInstallation({});
  dossierInstallation();
  EXPECT_EQ(dossier.lire("veltora/biblio/varnblk1.dxf"), "le mien");
  EXPECT_TRUE(fs::is_directory(dossier.chemin / "veltora" / "Cartouches"));
  for (const auto& element : fs::directory_iterator(dossier.chemin / "veltora"))
    EXPECT_EQ(element.path().filename().string().find(".tmp"), std::string::npos) << element.path();
}

TEST_F(Installation, DataToldLateStillArrive) {
  setDossierDonnees(dossier.chemin / "absent");
  const Variable installation("VELTORA_INSTALLATION", (dossier.chemin / "tard").c_str());
  dossierInstallation();
  EXPECT_FALSE(fs::exists(dossier.chemin / "tard" / "biblio"));
  setDossierDonnees(donnees);
  EXPECT_EQ(dossier.lire("tard/biblio/varnblk1.dxf"), "bloc 1");
}

TEST_F(Installation, WithoutAWritablePlaceItIsEmpty) {
  dossier.ecrire("fichier", "");
  const std::string impossible = (dossier.chemin / "fichier" / "x").string();
  const Variable installation("VELTORA_INSTALLATION", impossible.c_str());
  const Variable xdg("XDG_DATA_HOME", impossible.c_str());
  EXPECT_TRUE(dossierInstallation().empty());
  EXPECT_EQ(cheminInstallation(L"defcodif"), L"\\defcodif");
}

TEST_F(Installation, PathsAreWrittenWithBackslashesAndOpenedWithTheirOwn) {
  setDossierInstallation("/opt/veltora//");
  EXPECT_EQ(cheminInstallation(L"biblio\\varnblk1.dwg"), L"/opt/veltora\\biblio\\varnblk1.dwg");
  EXPECT_EQ(cheminInstallation(L"a.dwg", L"Cartouches"), L"/opt/veltora\\Cartouches\\a.dwg");
  EXPECT_EQ(cheminPlateforme(L"/opt/é\\biblio\\a.dwg"), fs::path("/opt/é/biblio/a.dwg"));
}

TEST_F(Installation, ANameIsCompletedUnlessItIsADriveOrARoot) {
  setDossierInstallation("/opt/veltora");
  const std::pair<const wchar_t*, const wchar_t*> cas[] = {
      {L"C:\\blocs\\a.dwg", L"C:\\blocs\\a.dwg"},
      {L"/blocs/a.dwg", L"/blocs/a.dwg"},
      {L"biblio\\a.dwg", L"/opt/veltora\\biblio\\a.dwg"},
      {L"blocs/a.dwg", L"/opt/veltora\\blocs/a.dwg"},
  };
  for (const auto& [nom, complet] : cas) EXPECT_EQ(completerChemin(nom), complet);
}

}  // namespace
