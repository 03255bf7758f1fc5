// The evaluator at the command line: prompts, commands, undo, files, functions of modules.
#include "lisp/host_support.h"
#include "support/arret_compte.h"

namespace base = veltora::base;

namespace {

class Lisp : public LispHost {};

TEST_F(Lisp, cancellingAPromptEndsTheExpressionAndCallsTheHandler) {
  EXPECT_EQ(script({"(setq vu nil)", "(defun *error* (m) (setq vu m))", "(progn (getpoint) (setq vu 1))",
                    "*Annuler*", "(princ (strcat \"vu=\" vu))"}),
            "");
  EXPECT_TRUE(transcript.has("vu=Fonction annulée"));
}

TEST_F(Lisp, commandTakesEachArgumentAsOneAnswer) {
  EXPECT_EQ(outcome("(command \"TRAIT\" \"0,0\" '(10 0) (list 10.0 5.5 2.0) \"\")").find("!!"),
            std::string::npos);
  EXPECT_EQ(count(), 2U);
  EXPECT_EQ(outcome("(cdr (assoc 11 (entget (entlast))))"), "(10.0 5.5 2.0)");
  // Two commands in one call, a number for a number.
  EXPECT_EQ(outcome("(command \"_.rond\" '(0 0) 2.5 \"ROND\" '(5 5) 3)").find("!!"), std::string::npos);
  EXPECT_EQ(count(), 4U);
  EXPECT_EQ(outcome("(cdr (assoc 40 (entget (entlast))))"), "3.0");
  // Names and sets reach the prompts for entities.
  outcome("(command \"ERASE\" (entlast) (ssget \"X\" '((0 . \"LINE\"))) \"\")");
  EXPECT_EQ(count(), 1U);
}

TEST_F(Lisp, aCommandGoesOnOverSeveralCalls) {
  outcome("(progn (command \"TRAIT\") (foreach p '((0 0) (1 0) (2 0) (3 1)) (command p)) (command \"\"))");
  EXPECT_EQ(count(), 3U);
  EXPECT_EQ(
      outcome("(progn (command \"TRAIT\" '(0 0)) (setq a (getvar \"CMDACTIVE\")) (command) (list a (getvar "
              "\"CMDACTIVE\")))"),
      "(1 0)");
  EXPECT_EQ(count(), 3U);
}

TEST_F(Lisp, theUserGivesWhatPauseAsksForAndWhatIsMissing) {
  EXPECT_EQ(script({"(command \"ROND\" PAUSE 2)", "7,8"}), "");
  EXPECT_EQ(outcome("(cdr (assoc 10 (entget (entlast))))"), "(7.0 8.0 0.0)");
  EXPECT_EQ(script({"(command \"TRAIT\" '(0 0))", "1,1", "2,2", "", "(setq fini T)"}), "");
  EXPECT_EQ(count(), 3U);
  EXPECT_EQ(outcome("fini"), "T");
}

TEST_F(Lisp, aWrongAnswerInCommandIsAnErrorAndLeavesNothing) {
  EXPECT_NE(outcome("(command \"ROND\" '(0 0) \"abc\")").find("COMMAND : "), std::string::npos);
  EXPECT_NE(outcome("(command \"NEXISTEPAS\")").find("Commande inconnue"), std::string::npos);
  EXPECT_EQ(count(), 0U);
  EXPECT_EQ(outcome("(getvar \"CMDACTIVE\")"), "0");
}

TEST_F(Lisp, aFunctionNamedCIsACommandAndOneStepOfUndo) {
  EXPECT_EQ(script({"(defun c:deux (/ p) (setq p (getpoint)) (entmake (list '(0 . \"POINT\") (cons 10 p))) "
                    "(entmake (list '(0 . "
                    "\"POINT\") (cons 10 p))) (princ))",
                    "deux", "1,1"}),
            "");
  EXPECT_EQ(count(), 2U);
  EXPECT_EQ(script({"DEUX", "5,5", "U"}), "");
  EXPECT_EQ(count(), 2U);
  // Through COMMAND, with its answers.
  outcome("(command \"deux\" '(3 3))");
  EXPECT_EQ(count(), 4U);
}

TEST_F(Lisp, aFaultStopsAScriptButNotAPerson) {
  EXPECT_NE(script({"(/ 1 0)", "(setq apres 1)"}).find("division par zéro"), std::string::npos);
  EXPECT_EQ(outcome("apres"), "nil");
  type({"(/ 1 0)", "(setq apres 1)"});
  EXPECT_TRUE(transcript.has("; erreur : division par zéro"));
  EXPECT_TRUE(transcript.has("(/ 1 0)"));
  EXPECT_EQ(outcome("apres"), "1");
  // Leaving is no fault.
  EXPECT_EQ(script({"(exit)", "(setq apres 2)"}), "");
  EXPECT_EQ(outcome("apres"), "2");
}

TEST_F(Lisp, anOpenExpressionReadsFurtherLines) {
  EXPECT_EQ(script({"(setq a (list 1", "2 \"x", "y\"", "))", "(princ a)"}), "");
  EXPECT_TRUE(transcript.has("(1 2 x\ny)"));
  EXPECT_NE(script({"(setq a (list 1"}).find("il manque 2 parenthèses"), std::string::npos);
}

TEST_F(Lisp, filesAreLoadedInBothEncodings) {
  const std::string path = folder.string();
  write("ansi.lsp", "(setq ville \"Orl\xE9\x61ns\")\r\n(defun c:aide () \"\x80\")\r\n");
  write("utf8.lsp", "\xEF\xBB\xBF(setq ville \"Orléans\") 'chargé\n");
  EXPECT_EQ(outcome("(load \"" + path + "/ansi\")"), "C:AIDE");
  EXPECT_EQ(outcome("ville"), "\"Orléans\"");
  EXPECT_EQ(outcome("(c:aide)"), "\"€\"");
  EXPECT_EQ(outcome("(setq ville nil) (load \"" + path + "/utf8.lsp\") ville"), "\"Orléans\"");
  EXPECT_NE(outcome("(load \"absent\")").find("échec de LOAD"), std::string::npos);
  EXPECT_EQ(outcome("(load \"absent\" \"non\")"), "\"non\"");
}

TEST_F(Lisp, aRoutineIsFoundBesideTheDrawing) {
  ASSERT_EQ(acDocManager->saveDocument(curDoc(), path("plan.dxf").c_str()), Acad::eOk);
  write("outil.lsp", "(setq trouve 1)");
  EXPECT_EQ(outcome("(load \"outil\")"), "1");
  EXPECT_EQ(outcome("(findfile \"outil.lsp\")"), "\"" + folder.string() + "/outil.lsp\"");
  EXPECT_EQ(outcome("(findfile \"absent.lsp\")"), "nil");
}

TEST_F(Lisp, aFaultInAFileNamesItsLine) {
  write("faux.lsp", "(setq a 1)\n\n(defun f (x)\n  (+ x\n     (car 5)))\n(f 1)\n");
  write("ouvert.lsp", "(setq a 1)\n(defun g ()\n  (list 1\n");
  const std::string load = "(load \"" + folder.string() + "/";
  EXPECT_NE(outcome(load + "faux\")").find("(CAR 5) (faux.lsp:5)"), std::string::npos)
      << outcome(load + "faux\")");
  // The place is known also when the function is called later.
  EXPECT_NE(outcome("(f 2)").find("faux.lsp:5"), std::string::npos);
  const std::string open = outcome(load + "ouvert\")");
  EXPECT_NE(open.find("il manque 2 parenthèses, la première est ouverte ligne 2"), std::string::npos) << open;
  write("boucle.lsp", "(load \"" + folder.string() + "/boucle\")");
  EXPECT_NE(outcome(load + "boucle\")").find("sans fin"), std::string::npos);
}

TEST_F(Lisp, filesAreWrittenAndRead) {
  const std::string name = "\"" + (folder / "points.txt").string() + "\"";
  EXPECT_EQ(
      outcome("(setq f (open " + name + " \"w\")) (write-line \"é 1\" f) (princ '(1 \"a\") f) (close f)"),
      "nil");
  EXPECT_EQ(*base::lireFichier(folder / "points.txt"), "\xE9 1\n(1 a)");
  EXPECT_EQ(outcome("(setq f (open " + name + " \"a\")) (write-char 10 f) (prin1 \"b\" f) (close f)"), "nil");
  EXPECT_EQ(outcome("(setq f (open " + name +
                    " \"r\") l nil) (while (setq x (read-line f)) (setq l (cons x l))) (close f) l"),
            "(\"\\\"b\\\"\" \"(1 a)\" \"é 1\")");
  EXPECT_NE(outcome("(read-line f)").find("fichier fermé"), std::string::npos);
  EXPECT_EQ(outcome("(open \"" + folder.string() + "/absent/x.txt\" \"w\")"), "nil");
  EXPECT_EQ(outcome("(open \"" + folder.string() + "/absent.txt\" \"r\")"), "nil");
  // Left open: what was written is on the disk when the expression ends.
  outcome("(setq f (open " + name + " \"w\")) (write-line \"reste\" f)");
  EXPECT_EQ(*base::lireFichier(folder / "points.txt"), "reste\n");
  outcome("(setq f (open " + name + " \"w\" \"utf8\")) (write-line \"é→\" f) (close f)");
  EXPECT_EQ(*base::lireFichier(folder / "points.txt"), "é→\n");
  // Appending to UTF-8 stays UTF-8.
  outcome("(setq f (open " + name + " \"a\")) (write-line \"à\" f) (close f)");
  EXPECT_EQ(*base::lireFichier(folder / "points.txt"), "é→\nà\n");
}

TEST_F(Lisp, functionsOfModulesGetAndGiveValues) {
  static std::string got;
  FakeModule::onMessage = [](AcRx::AppMsgCode msg, void*) {
    if (msg == AcRx::kLoadDwgMsg) {
      acedDefun(L"echo", 1);
      acedDefun(L"c:faire", 2);
    }
    if (msg != AcRx::kInvkSubrMsg) return;
    const AcEdRbHolder arguments(acedGetArgs());
    got.clear();
    for (const resbuf* item = arguments.get(); item; item = item->rbnext)
      got += std::to_string(item->restype) + " ";
    if (acedGetFunCode() == 1)
      acedRetList(arguments.get());
    else
      acedRetT();
  };
  ASSERT_TRUE(loadFake());
  EXPECT_EQ(outcome("(echo 5 70000 2.5 \"é\" '(1.0 2.0) '(1.0 2.0 3.0) '(1 2 3) '(8 . \"A\") T nil)"),
            "(5 70000 2.5 \"é\" (1.0 2.0) (1.0 2.0 3.0) (1 2 3) (8 . \"A\") T nil)");
  EXPECT_EQ(got,
            "5003 5010 5001 5005 5002 5009 5016 5003 5003 5003 5017 5016 5003 5018 5005 5017 5021 5019 ");
  EXPECT_EQ(outcome("(c:faire)"), "T");
  EXPECT_EQ(outcome("(mapcar 'echo '(1 2))"), "((1) (2))");
  EXPECT_NE(outcome("(echo 'abc)").find("argument incorrect pour une fonction externe : ABC"),
            std::string::npos);
  // A routine may take the name over.
  EXPECT_EQ(outcome("(defun echo (x) 'a-moi) (echo 1)"), "A-MOI");
}

TEST_F(Lisp, anEndlessLoopIsInterrupted) {
  ArretCompte user(3);
  source.person = true;
  for (const char* loop :
       {"(while T)", "(repeat 2000000000 1)", "(while T (vl-catch-all-apply 'car '(5)))"}) {
    user.recommencer();
    transcript.text.clear();
    EXPECT_EQ(outcome(loop), "Fonction annulée") << loop;
  }
}

TEST_F(Lisp, anAnswerMayRunItsOwnCommands) {
  // The expression that answers a prompt of COMMAND draws itself; the answers of the outer command stay in
  // order.
  EXPECT_EQ(script({"(defun centre () (command \"TRAIT\" '(0 0) '(1 0) \"\") '(4 4 0))",
                    "(command \"ROND\" PAUSE 2)", "(centre)"}),
            "");
  EXPECT_EQ(outcome("(cdr (assoc 10 (entget (entlast))))"), "(4.0 4.0 0.0)");
  EXPECT_EQ(count(), 2U);
}

TEST_F(Lisp, veryDeepAndLongValuesAreHarmless) {
  EXPECT_EQ(outcome("(setq l nil) (repeat 300000 (setq l (list l))) (strlen (vl-prin1-to-string l))"),
            "600003");
  EXPECT_EQ(outcome("(equal l (list (car l)))"), "T");
  EXPECT_EQ(outcome("(setq l nil)"), "nil");
  EXPECT_EQ(outcome("(setq l nil) (repeat 500000 (setq l (cons 1 l))) (setq l (length l))"), "500000");
  const std::string deep = "'" + std::string(100000, '(') + std::string(100000, ')');
  EXPECT_NE(outcome(deep).find("parenthèses trop profondes"), std::string::npos);
  EXPECT_NE(outcome(std::string(100000, '\'') + "a").find("trop profondes"), std::string::npos);
}

}  // namespace
