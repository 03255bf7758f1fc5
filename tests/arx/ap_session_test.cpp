#include "ap_support.h"
#include "base/files.h"

#include <stdexcept>

namespace {

using veltora::base::ScriptError;

/// Commands of the tests, in a group of their own.
void addPoint() {
  ads_point at;
  if (acedGetPoint(nullptr, L"\nPoint : ", at) == RTNORM)
    append(*curDoc()->database(), new AcDbPoint({at[0], at[1], at[2]}));
}
void addAndThrow() {
  curDoc()->startUndoMark();
  append(*curDoc()->database(), new AcDbPoint({0, 0, 0}));
  throw std::runtime_error("panne");
}
void addAndThrowOddly() {
  append(*curDoc()->database(), new AcDbPoint({0, 0, 0}));
  throw 7;
}
void leaveGroupOpen() {
  curDoc()->startUndoMark();
  append(*curDoc()->database(), new AcDbPoint({0, 0, 0}));
}
void removeItself() { acedRegCmds->removeGroup(L"ESSAI"); }
void addTwice() {
  AcApSession::current()->runCommand(L"AJOUTER");
  AcApSession::current()->runCommand(L"AJOUTER");
}

class Chooser : public veltora::base::FileChooser {
public:
  std::vector<std::wstring> paths;  // an empty one cancels
  std::vector<veltora::base::FileRequest> requests;
  std::optional<veltora::base::FileAnswer> chooseFile(const veltora::base::FileRequest& request) override {
    requests.push_back(request);
    if (paths.empty() || paths.front().empty()) return std::nullopt;
    const std::wstring path = paths.front();
    paths.erase(paths.begin());
    return veltora::base::FileAnswer{path, 1};
  }
};

class SessionTest : public HostTest {
protected:
  SessionTest() {
    acedRegCmds->addCommand(L"ESSAI", L"AJOUTER", L"AJOUTER", 0, addPoint);
    acedRegCmds->addCommand(L"ESSAI", L"PANNE", L"PANNE", 0, addAndThrow);
    acedRegCmds->addCommand(L"ESSAI", L"PANNE2", L"PANNE2", 0, addAndThrowOddly);
    acedRegCmds->addCommand(L"ESSAI", L"OUVERT", L"OUVERT", 0, leaveGroupOpen);
    acedRegCmds->addCommand(L"ESSAI", L"RETIRER", L"RETIRER", 0, removeItself);
    acedRegCmds->addCommand(L"ESSAI", L"DEUX", L"DEUX", 0, addTwice);
    acDocManager->appContextNewDocument();
  }
  ~SessionTest() override { acedRegCmds->removeGroup(L"ESSAI"); }

  /// Runs a script to its end.
  void run(std::initializer_list<const char*> lines, bool person = false) {
    answer(lines, person);
    AcApSession session;
    session.run();
    quit = session.quitRequested();
  }
  void answerBoxes(AcEdAnswer reply) {
    acedPorts().messageBox = [this, reply](const std::wstring& text, const std::wstring&, AcEdButtons) {
      boxes.push_back(veltora::base::toUtf8(text));
      return reply;
    };
  }
  bool quit = false;
  std::vector<std::string> boxes;
};

TEST_F(SessionTest, WhatAnotherSessionWroteIsNotReplacedUnasked) {
  const auto content = [this] { return veltora::base::lireFichier(folder / "a.dxf").value_or(""); };
  ASSERT_EQ(acDocManager->saveDocument(curDoc(), path("a.dxf").c_str()), Acad::eOk);
  EXPECT_TRUE(std::filesystem::exists(folder / "a.dxf.ouvert"));
  run({"AJOUTER", "1,1"});
  veltora::base::remplacerFichier(folder / "a.dxf", "d'une autre session");
  answerBoxes(AcEdAnswer::kYes);
  EXPECT_THROW(run({"QSAVE"}), ScriptError) << "a script does not ask";
  EXPECT_TRUE(boxes.empty());
  EXPECT_EQ(content(), "d'une autre session");
  answerBoxes(AcEdAnswer::kNo);
  run({"QSAVE"}, true);
  EXPECT_EQ(content(), "d'une autre session");
  EXPECT_TRUE(curDoc()->isModified());
  answerBoxes(AcEdAnswer::kYes);
  boxes.clear();
  run({"QSAVE", "AJOUTER", "2,2", "QSAVE"}, true);
  ASSERT_EQ(boxes.size(), 1u) << "its own file it knows";
  EXPECT_NE(boxes[0].find("par une autre session"), std::string::npos);
  EXPECT_TRUE(content().starts_with("  0"));
  std::filesystem::remove(folder / "a.dxf");
  run({"QSAVE"});
  EXPECT_FALSE(content().empty()) << "a file that is gone is nobody's";
  acDocManager->closeDocument(curDoc());
  EXPECT_FALSE(std::filesystem::exists(folder / "a.dxf.ouvert"));
}

TEST_F(SessionTest, ADrawingThatAnotherSessionHasOpenIsSavedUnderAnotherName) {
  const std::filesystem::path file = folder / "a.dxf";
  ASSERT_EQ(acDocManager->saveDocument(curDoc(), path("a.dxf").c_str()), Acad::eOk);
  acDocManager->closeDocument(curDoc());
  veltora::base::NoteUsage other;
  ASSERT_EQ(other.poser(file), "");
  const auto before = veltora::base::lireFichier(file);
  ASSERT_EQ(acDocManager->appContextOpenDocument(path("a.dxf").c_str()), Acad::eOk);
  EXPECT_TRUE(curDoc()->isReadOnly());
  Chooser chooser;
  acedPorts().fileChooser = &chooser;
  chooser.paths = {path("a.dxf"), path("b.dxf")};
  run({"AJOUTER", "1,1", "QSAVE"}, true);
  EXPECT_TRUE(curDoc()->isReadOnly()) << "its own name is no other one";
  EXPECT_EQ(veltora::base::lireFichier(file), before);
  run({"QSAVE"}, true);
  EXPECT_FALSE(curDoc()->isReadOnly());
  EXPECT_EQ(std::wstring(curDoc()->docTitle()), L"b.dxf");
  EXPECT_TRUE(std::filesystem::exists(folder / "b.dxf.ouvert"));
  EXPECT_NE(acDocManager->saveDocument(curDoc(), path("a.dxf").c_str()), Acad::eOk)
      << "nor may it be taken over";
  EXPECT_EQ(veltora::base::lireFichier(file), before);
  ASSERT_EQ(acDocManager->appContextOpenDocument(path("a.dxf").c_str()), Acad::eOk);
  other.retirer();
  run({"AJOUTER", "2,2", "QSAVE"}, true);
  EXPECT_EQ(std::wstring(curDoc()->docTitle()), L"a.dxf") << "the other session has closed it";
  EXPECT_NE(veltora::base::lireFichier(file), before);
  EXPECT_TRUE(chooser.paths.empty());
}

class Memory : public AcApDocManagerReactor {
public:
  bool full = true;
  Memory() { acDocManager->addReactor(this); }
  ~Memory() override { acDocManager->removeReactor(this); }
  bool holdsUnsavedData(AcApDocument*) const override { return full; }
};

TEST_F(SessionTest, WhatAModuleKeepsIsAskedForToo) {
  Memory memory;
  answerBoxes(AcEdAnswer::kCancel);
  run({"CLOSE", "QUIT"});
  EXPECT_EQ(boxes.size(), 2u);
  EXPECT_FALSE(quit);
  boxes.clear();
  run({}, true);
  EXPECT_EQ(boxes.size(), 3u)
      << "the end of the input asks as QUIT does; a terminal that is gone comes to an end";
  answerBoxes(AcEdAnswer::kNo);
  run({}, true);
  EXPECT_TRUE(quit);
  memory.full = false;
  boxes.clear();
  run({"CLOSE", "QUIT"});
  EXPECT_TRUE(boxes.empty());
}

TEST_F(SessionTest, EachCommandIsOneStepOfUndo) {
  run({"AJOUTER", "1,1", "ajouter", "2,2", "deux", "3,3", "4,4"});
  EXPECT_EQ(count(), 4u);
  run({"U"});
  EXPECT_EQ(count(), 2u) << "a command that runs others is one step";
  EXPECT_TRUE(transcript.has("Annulé : DEUX"));
  run({"U", "_u"});
  EXPECT_EQ(count(), 0u);
  run({"U"});
  EXPECT_TRUE(transcript.has("Tout a été annulé."));
  run({"REDO", "REDO"});
  EXPECT_EQ(count(), 2u);
  run({"AJOUTER", "9,9", "REDO"});
  EXPECT_EQ(count(), 3u);
  EXPECT_TRUE(transcript.has("Rien à rétablir.")) << "a new change drops what could be redone";
}

TEST_F(SessionTest, WhatACommandThrowsUndoesItAndTheSessionGoesOn) {
  run({"AJOUTER", "1,1", "PANNE", "PANNE2", "AJOUTER", "2,2"});
  EXPECT_EQ(count(), 2u);
  EXPECT_TRUE(transcript.has("Erreur dans PANNE : panne"));
  EXPECT_TRUE(transcript.has("Erreur dans PANNE2"));
  EXPECT_EQ(db().undoLog().depth(), 0);
  run({"U"});
  EXPECT_EQ(count(), 1u);
  EXPECT_TRUE(transcript.has("Annulé : AJOUTER"));
  run({"OUVERT", "AJOUTER", "5,5", "U"});
  EXPECT_EQ(count(), 2u) << "a group left open ends with its command";
}

TEST_F(SessionTest, AScriptStopsAtALineThatFitsNothing) {
  EXPECT_THROW(run({"AJOUTER", "1,1", "DEUX", "2,2", "pas un point"}), ScriptError);
  EXPECT_EQ(count(), 1u) << "the command that was interrupted is undone";
  EXPECT_EQ(db().undoLog().depth(), 0);
  EXPECT_THROW(run({"N_EXISTE_PAS"}), ScriptError);
  EXPECT_THROW(run({"(+ 1 2)"}), ScriptError) << "nobody evaluates";
  run({"N_existe_pas", "(+ 1 2)", "AJOUTER", "2,2", "", "3,3"}, true);
  EXPECT_TRUE(transcript.has("Commande inconnue \"N_EXISTE_PAS\"."));
  EXPECT_TRUE(transcript.has("Les expressions ne sont pas disponibles."));
  EXPECT_EQ(count(), 3u) << "an empty line repeats the command for a person";
}

TEST_F(SessionTest, LinesOfTheCommandPrompt) {
  std::wstring seen;
  acedPorts().evaluate = [&](const std::wstring& expression) {
    seen = expression;
    return acutBuildList(RTLONG, 3);
  };
  run({"; commentaire", "", "  (+ 1 2)", "'_.AJOUTER", "1,1", "*Annuler*", "RETIRER"});
  EXPECT_EQ(seen, L"(+ 1 2)");
  EXPECT_TRUE(transcript.has("3\n")) << "the value is shown";
  EXPECT_EQ(count(), 1u);
  EXPECT_EQ(acedRegCmds->lookupCmd(L"AJOUTER"), nullptr);
}

TEST_F(SessionTest, LispFunctionsNamedForTheCommandLineAreCommands) {
  FakeModule::onMessage = [](AcRx::AppMsgCode msg, void*) {
    if (msg == AcRx::kLoadDwgMsg) acedDefun(L"C:Poser", 4);
    if (msg == AcRx::kLoadDwgMsg) acedDefun(L"poser2", 5);
    if (msg == AcRx::kInvkSubrMsg && acedGetFunCode() == 4) addPoint();
  };
  loadFake();
  run({"POSER", "1,1", "U"});
  EXPECT_EQ(count(), 0u);
  EXPECT_TRUE(transcript.has("Annulé : POSER"));
  EXPECT_THROW(run({"POSER2"}), ScriptError) << "without \"c:\" it is for expressions only";
}

TEST_F(SessionTest, SavingAndOpening) {
  Chooser chooser;
  acedPorts().fileChooser = &chooser;
  chooser.paths = {path("un.dxf")};
  run({"AJOUTER", "1,1", "QSAVE"});
  ASSERT_EQ(chooser.requests.size(), 1u) << "a drawing without a name asks for one";
  EXPECT_TRUE(chooser.requests[0].save);
  EXPECT_TRUE(chooser.requests[0].confirmOverwrite);
  EXPECT_TRUE(std::filesystem::exists(folder / "un.dxf"));
  run({"AJOUTER", "2,2", "QSAVE"});
  EXPECT_EQ(chooser.requests.size(), 1u) << "and no longer";
  EXPECT_FALSE(curDoc()->isModified());
  chooser.paths = {path("deux.dxf")};
  run({"SAVEAS", "NEW"});
  EXPECT_EQ(count(), 0u);
  chooser.paths = {path("un.dxf")};
  run({"OPEN"});
  EXPECT_EQ(count(), 2u);
  EXPECT_EQ(acDocManager->documentCount(), 3);
  chooser.paths = {L""};
  run({"OPEN", "SAVEAS"});
  EXPECT_EQ(acDocManager->documentCount(), 3) << "cancelled";
  acedPorts().fileChooser = nullptr;
  run({"SAVEAS", (folder / "trois").string().c_str()});
  EXPECT_TRUE(std::filesystem::exists(folder / "trois.dxf")) << "without a file dialog, at the prompt";
}

TEST_F(SessionTest, AFailedOpenStopsAScriptAndKeepsTheDrawing) {
  Chooser chooser;
  acedPorts().fileChooser = &chooser;
  AcApDocument* const before = curDoc();
  run({"AJOUTER", "1,1"});
  chooser.paths = {path("absent.dxf"), path("absent.dxf")};
  EXPECT_THROW(run({"OPEN", "AJOUTER", "2,2"}), ScriptError);
  run({"OPEN", "AJOUTER", "3,3"}, true);
  EXPECT_TRUE(transcript.has("Ouverture impossible"));
  EXPECT_EQ(curDoc(), before);
  EXPECT_EQ(count(), 2u);
}

TEST_F(SessionTest, QuitAsksForWhatIsNotSaved) {
  Chooser chooser;
  acedPorts().fileChooser = &chooser;
  run({"QUIT", "AJOUTER", "1,1"});
  EXPECT_TRUE(quit) << "nothing to save";
  EXPECT_EQ(count(), 0u) << "nothing is read behind it";

  struct Row {
    const char* name;
    AcEdAnswer reply;
    std::wstring file;
    bool quits;
    bool saved;
  };
  const Row rows[] = {
      {"cancelled", AcEdAnswer::kCancel, L"", false, false},
      {"yes, but no name", AcEdAnswer::kYes, L"", false, false},
      {"no", AcEdAnswer::kNo, L"", true, false},
      {"yes", AcEdAnswer::kYes, path("fin.dxf"), true, true},
  };
  run({"AJOUTER", "1,1"});
  for (const Row& row : rows) {
    boxes.clear();
    answerBoxes(row.reply);
    chooser.paths = {row.file};
    run({"QUIT"});
    EXPECT_EQ(quit, row.quits) << row.name;
    EXPECT_EQ(std::filesystem::exists(folder / "fin.dxf"), row.saved) << row.name;
    EXPECT_EQ(boxes.size(), 1u) << row.name;
  }
  boxes.clear();
  run({"QUIT"});
  EXPECT_TRUE(quit);
  EXPECT_TRUE(boxes.empty()) << "saved by now";
  acedPorts().messageBox = nullptr;
  run({"AJOUTER", "2,2", "QUIT"});
  EXPECT_FALSE(quit) << "nobody answers: nothing is lost";
}

TEST_F(SessionTest, ZoomListErase) {
  run({"ZOOM", "E"});
  EXPECT_TRUE(transcript.has("Le dessin est vide."));
  run({"AJOUTER", "650000,6860000", "AJOUTER", "650100,6860050", "ZOOM", "é"});
  EXPECT_DOUBLE_EQ(acedView().center.x, 650050);
  EXPECT_GE(acedView().height * acedView().aspect, 100.0);
  run({"ZOOM", "0,0", "30,10"});
  EXPECT_DOUBLE_EQ(acedView().center.y, 5);
  run({"ZOOM", "C", "7,8", "40"});
  EXPECT_DOUBLE_EQ(acedView().height, 40);
  run({"ZOOM", "C", "1,1", ""});
  EXPECT_DOUBLE_EQ(acedView().height, 40) << "the height stays";
  run({"LIST", "tout", ""});
  EXPECT_TRUE(transcript.has("POINT   calque : 0"));
  EXPECT_TRUE(transcript.has("X = 650100.0000  Y = 6860050.0000"));
  run({"ERASE", "DERNIER", ""});
  EXPECT_EQ(count(), 1u);
  EXPECT_TRUE(transcript.has("1 objet(s) effacé(s)"));
  run({"ERASE", "tout", "*Annuler*"});
  EXPECT_EQ(count(), 1u);
  run({"U"});
  EXPECT_EQ(count(), 2u);
}

}  // namespace
