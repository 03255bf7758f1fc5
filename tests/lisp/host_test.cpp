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

TEST_F(Lisp, aRoutineIsFoundBesideTheDrawing) {
  ASSERT_EQ(acDocManager->saveDocument(curDoc(), path("plan.dxf").c_str()), Acad::eOk);
  write("outil.lsp", "(setq trouve 1)");
  EXPECT_EQ(outcome("(load \"outil\")"), "1");
  EXPECT_EQ(outcome("(findfile \"outil.lsp\")"), "\"" + folder.string() + "/outil.lsp\"");
  EXPECT_EQ(outcome("(findfile \"absent.lsp\")"), "nil");
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

TEST_F(Lisp, veryDeepAndLongValuesAreHarmless) {
  EXPECT_EQ(outcome("(setq l nil) (repeat 300000 (setq l (list l))) (strlen (vl-prin1-to-string l))"),
            "600003");
  EXPECT_EQ(outcome("(equal l (list (car l)))"), "T");
  EXPECT_EQ(outcome("(setq l nil)"), "nil");
  EXPECT_EQ(outcome("(setq l nil) (repeat 500000 (setq l (cons 1 l))) (setq l (length l))"), "500000");
  EXPECT_EQ(outcome("(setq l nil) (repeat 300000 (setq l (cons l l))) (setq l (type l))"), "LIST");
  const std::string deep = "'" + std::string(100000, '(') + std::string(100000, ')');
  EXPECT_NE(outcome(deep).find("parenthèses trop profondes"), std::string::npos);
  EXPECT_NE(outcome(std::string(100000, '\'').append("a")).find("trop profondes"), std::string::npos);
}

}  // namespace
