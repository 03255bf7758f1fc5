// Copies of unsaved drawings: what they hold, what they leave alone, who is offered them after a crash.

#include "app/window/recovery.h"
#include "app/window/text.h"
#include "app/window/window_trial.h"
#include "arx/ap/acdocman.h"
#include "base/files.h"
#include "points/projets_topo.h"

#include <sys/wait.h>
#include <unistd.h>
#include <array>

namespace veltora::app {
namespace {

class RecoveryTrial : public WindowTrial {
protected:
  RecoveryTrial() { qputenv("XDG_STATE_HOME", folder.chemin.c_str()); }
  ~RecoveryTrial() override { qunsetenv("XDG_STATE_HOME"); }

  Recovery& recovery() { return *session->window().recovery(); }
  std::vector<std::filesystem::path> copies() {
    std::vector<std::filesystem::path> found;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(recoveryFolder(), none))
      if (entry.path().extension() == ".dxf") found.push_back(entry.path());
    return found;
  }
  /// Lets the window's events run until the copying process has ended.
  void copy() {
    recovery().copyNow();
    paused = true;
    while (recovery().isWriting()) QCoreApplication::processEvents();
    paused = false;
  }
  /// A process that dies with a copy of a drawing of three lines.
  void crash(const RecoveredDrawing& of, const std::string& content) {
    const pid_t child = ::fork();
    if (child == 0) {
      std::string reason;
      const auto place = RecoveryCopy::make(recoveryFolder(), reason);
      ::_exit(place && place->describe(of) && base::remplacerFichier(place->copy(), content) ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
  }
  void line(std::vector<Step>& steps, const char* from, const char* to) {
    for (const char* each : {"LIGNE", from, to, ""}) steps.push_back([this, each] { type(each); });
  }
};

TEST_F(RecoveryTrial, aCopyHoldsWhatASaveWouldAndChangesNothing) {
  const std::string path = drawing();
  open({path, ""});
  const std::optional<std::string> before = base::lireFichier(path);
  std::vector<Step> steps = {[&] { session->window().startRecovery(); },
                             [&] {
                               copy();
                               EXPECT_TRUE(copies().empty()) << "nothing is unsaved";
                             },
                             [&] { acDocManager->appContextOpenDocument(base::fromUtf8(path).c_str()); }};
  line(steps, "650000,6860000", "650001,6860001");
  steps.insert(steps.end(),
               {[&] {
                  tablesPoints->currTable()->CreerPoint({kX, kY, 100.0}, 1, L"S1");
                  const Adesk::UInt64 handles = database().handseed();
                  copy();
                  ASSERT_EQ(copies().size(), 1U);
                  EXPECT_EQ(database().handseed(), handles);
                  EXPECT_TRUE(acDocManager->isModified(curDoc()));
                  EXPECT_EQ(base::lireFichier(path), before);
                  AcDbDatabase read(false);
                  ASSERT_EQ(read.readDwgFile(copies()[0].wstring().c_str()), Acad::eOk);
                  EXPECT_EQ(linesOf(read).size(), 4U);
                  AcApDocument* const worked = curDoc();
                  const std::wstring copied = copies()[0].wstring();
                  ASSERT_EQ(acDocManager->appContextRecoverDocument(copied.c_str(), L"", {}), Acad::eOk);
                  EXPECT_EQ(tablesPoints->currTable()->nbPoint(), 1) << "the points of the module";
                  acDocManager->closeDocument(curDoc());
                  acDocManager->activateDocument(worked);
                  const auto time = std::filesystem::last_write_time(copies()[0]);
                  copy();
                  EXPECT_EQ(std::filesystem::last_write_time(copies()[0]), time) << "nothing happened since";
                  type("U");
                },
                [&] {
                  EXPECT_EQ(linesOf(database()).size(), 3U) << "the line is the latest step";
                  type("RETABLIR");
                },
                [&] {
                  copy();
                  EXPECT_EQ(copies().size(), 1U) << "one for a drawing";
                },
                [&] { type("QSAVE"); }, [&] { EXPECT_TRUE(copies().empty()) << "saved"; }});
  work(steps);
}

TEST_F(RecoveryTrial, theClockKeepsCopiesUntilItIsStopped) {
  open({""});
  std::vector<Step> steps = {[&] { session->window().startRecovery(); }};
  line(steps, "0,0", "5,5");
  steps.push_back([&] {
    paused = true;
    recovery().setInterval(std::chrono::hours(1));
    QTest::qWait(100);
    EXPECT_EQ(copies().size(), 0U) << "it is not yet time";
    recovery().setInterval(std::chrono::milliseconds(20));
    EXPECT_TRUE(QTest::qWaitFor([&] { return copies().size() == 1 && !recovery().isWriting(); }, 10000));
    paused = false;
  });
  work(steps);
}

TEST_F(RecoveryTrial, whatACrashLeftIsOfferedAndKeptUntilItIsSaved) {
  const std::string path = drawing();
  const std::string content = *base::lireFichier(drawing("copie.dxf"));
  crash({base::fromUtf8(path), L"dessin.dxf", base::etatFichier(path)}, content);
  crash({L"", L"Dessin7", {}}, content);
  crash({base::fromUtf8(path) + L"x", L"dessin.dxfx", {}}, content);
  EXPECT_EQ(copies().size(), 3U);
  open({path});
  session->window().startRecovery();
  const auto asked = [&] { return question() ? utf8(question()->text()) : std::string(); };
  work({[&] {
          EXPECT_NE(asked().find(path), std::string::npos) << asked();
          EXPECT_EQ(asked().find("depuis par une autre"), std::string::npos);
          press("Oui");
        },
        [&] {
          EXPECT_NE(asked().find("Dessin7"), std::string::npos) << asked();
          press("Non");
        },
        [&] {
          EXPECT_NE(asked().find("n'est plus là"), std::string::npos) << asked();
          press("Annuler");
        },
        [&] {
          EXPECT_EQ(acDocManager->documentCount(), 1) << "in place of the drawing as it was";
          EXPECT_EQ(base::toUtf8(curDoc()->fileName()), path);
          EXPECT_TRUE(curDoc()->isModified());
          EXPECT_FALSE(curDoc()->isReadOnly());
          EXPECT_EQ(linesOf(database()).size(), 3U);
          EXPECT_EQ(copies().size(), 2U) << "of the drawing that is open, and the one kept for later";
          EXPECT_EQ(RecoveryCopy::abandoned(recoveryFolder()).size(), 1U)
              << "what is open is not offered again";
          type("QSAVE");
        },
        [&] { EXPECT_EQ(copies().size(), 1U); }});
}

TEST_F(RecoveryTrial, aCopyThatCannotBeWrittenIsToldOnceAndTheSessionEndsClean) {
  open({drawing()});
  const auto told = [&] {
    return session->window().commandLine().printed().count("Pas de copie de secours");
  };
  std::vector<Step> steps = {[&] { session->window().startRecovery(); }};
  line(steps, "650000,6860000", "650001,6860001");
  steps.insert(steps.end(), {[&] {
                               copy();
                               // A folder stands where the copy belongs, as a disk that is full would refuse
                               // it.
                               const std::filesystem::path place = copies().at(0);
                               std::filesystem::remove(place);
                               std::filesystem::create_directory(place);
                               type("REGEN");
                             },
                             [&] {
                               copy(), copy();
                               session->window().commandLine().flush();
                               EXPECT_EQ(told(), 1);
                               EXPECT_EQ(linesOf(database()).size(), 4U);
                               std::filesystem::remove(copies().at(0));
                               copy();
                               EXPECT_TRUE(std::filesystem::is_regular_file(copies().at(0)))
                                   << "it is tried again";
                             }});
  work(steps);
  session->window().endRecovery();
  EXPECT_TRUE(std::filesystem::is_empty(recoveryFolder()));
}

TEST_F(RecoveryTrial, copiesOfLivingSessionsAndOtherMachinesAreLeftAlone) {
  std::string reason;
  const auto living = RecoveryCopy::make(recoveryFolder(), reason);
  ASSERT_TRUE(living && living->describe({L"", L"vivant", {}})) << reason;
  ASSERT_TRUE(base::remplacerFichier(living->copy(), "x"));
  ASSERT_TRUE(base::remplacerFichier(recoveryFolder() / "abcdef.note", "Copie\nposte : ailleurs\n"));
  ASSERT_TRUE(base::remplacerFichier(recoveryFolder() / "abcdef.dxf", "x"));
  ASSERT_TRUE(base::remplacerFichier(recoveryFolder() / "ghijkl.note", "jamais copié"));
  EXPECT_TRUE(RecoveryCopy::abandoned(recoveryFolder()).empty());
  EXPECT_EQ(copies().size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(recoveryFolder() / "ghijkl.note"));
  ASSERT_TRUE(base::remplacerFichier(folder.chemin / "fichier", ""));
  EXPECT_EQ(RecoveryCopy::make(folder.chemin / "fichier" / "sous", reason), nullptr);
  EXPECT_NE(reason.find("n'est pas un dossier"), std::string::npos) << reason;
}

}  // namespace
}  // namespace veltora::app
