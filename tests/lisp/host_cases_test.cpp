// Runs the case files that need a drawing: each group on a new one.
#include "lisp/case_file.h"
#include "lisp/host_support.h"

namespace {

class HostCases : public LispHost {};

TEST_F(HostCases, evaluateAsWritten) {
  write("ansi.lsp", "(setq ville \"Orl\xE9\x61ns\")\r\n(defun c:aide () \"\x80\")\r\n");
  write("utf8.lsp", "\xEF\xBB\xBF(setq ville \"Orléans\") 'chargé\n");
  write("faux.lsp", "(setq a 1)\n\n(defun f (x)\n  (+ x\n     (car 5)))\n(f 1)\n");
  write("ouvert.lsp", "(setq a 1)\n(defun g ()\n  (list 1\n");
  write("boucle.lsp", "(load \"" + folder.string() + "/boucle\")");
  std::string group;
  for (const char* file : {"entities.txt", "selection.txt", "tables.txt", "prompts.txt", "commands.txt"}) {
    const std::vector<LispCase> cases = lireCas(file);
    ASSERT_GT(cases.size(), 5U);
    for (const LispCase& one : cases) {
      if (one.group != group) {
        acDocManager->appContextNewDocument();
        aclispInstall();
        outcome("(setq dossier \"" + folder.string() + "\")");
      }
      group = one.group;
      source.lines.assign(one.answers.begin(), one.answers.end());
      std::string got = outcome(one.expression);
      const bool asks = !one.answers.empty() || one.expression.find("(command ") != std::string::npos;
      if (asks && !one.failure) got.erase(0, got.rfind('\n') + 1);
      EXPECT_TRUE(source.lines.empty()) << one.expression;
      const std::string place = std::string(file) + ":" + std::to_string(one.line) + ": " + one.expression;
      if (!one.failure)
        EXPECT_EQ(got, one.expected) << place;
      else
        EXPECT_TRUE(got.rfind("!! ", 0) == 0 && got.find(one.expected) != std::string::npos)
            << place << "\n  gives " << got << "\n  expected failure: " << one.expected;
    }
  }
}

}  // namespace
