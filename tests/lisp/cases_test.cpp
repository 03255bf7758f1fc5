// Runs the case files on evaluators without a drawing.
#include "arx/ed/edports.h"
#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispprinter.h"
#include "base/text.h"
#include "lisp/case_file.h"

#include <gtest/gtest.h>

#include <memory>

using namespace aclisp;
namespace base = veltora::base;

namespace {

/// What an expression gives, or the message of its failure behind "!! ".
std::string outcome(Interpreter& in, const std::string& expression) {
  const AccountScope work = in.atWork();
  LispError error;
  bool handled = false;
  const std::optional<Value> value =
      in.run([&] { return in.evalText(base::fromUtf8(expression), {}); }, error, handled);
  if (value) return base::toUtf8(printed(*value, true));
  return "!! " + base::toUtf8(error.message);
}

class Cases : public ::testing::TestWithParam<const char*> {};

TEST_P(Cases, evaluateAsWritten) {
  acedPorts() = {};
  Limits limits;
  limits.objects = 2'000'000;  // enough for the cases, soon reached by those without end
  std::unique_ptr<Interpreter> in;
  std::string group;
  const std::vector<LispCase> cases = lireCas(GetParam());
  ASSERT_GT(cases.size(), 5U);
  for (const LispCase& one : cases) {
    if (!in || one.group != group) in = std::make_unique<Interpreter>(Host{}, limits);
    group = one.group;
    const std::string got = outcome(*in, one.expression);
    const std::string place =
        std::string(GetParam()) + ":" + std::to_string(one.line) + ": " + one.expression;
    if (!one.failure)
      EXPECT_EQ(got, one.expected) << place;
    else
      EXPECT_TRUE(got.rfind("!! ", 0) == 0 && got.find(one.expected) != std::string::npos)
          << place << "\n  gives " << got << "\n  expected failure: " << one.expected;
  }
}

TEST(Interpreters, haveCeilingsOfTheirOwn) {
  acedPorts() = {};
  Limits limits;
  limits.objects = 1000;
  const std::string most = "(progn (setq l nil) (repeat 900 (setq l (cons 1 l))) (length l))";
  Interpreter first(Host{}, limits);
  Interpreter second(Host{}, limits);
  EXPECT_EQ(outcome(first, most), "900");
  EXPECT_EQ(outcome(second, most), "900") << "what the first holds is none of the second's";
  EXPECT_EQ(outcome(first, most.substr(0, 7) + most.substr(20)), "!! mémoire insuffisante");
  // What was let go counts no more, also where the results are.
  EXPECT_EQ(outcome(first, "(setq l nil)"), "nil");
  for (int i = 0; i < 20; ++i) EXPECT_EQ(outcome(first, "(car (reverse (list 1 2 3 4)))"), "4");
  EXPECT_EQ(outcome(first, most), "900");
}

INSTANTIATE_TEST_SUITE_P(Files, Cases,
                         ::testing::Values("reader.txt", "forms.txt", "lists.txt", "math.txt", "texts.txt",
                                           "units.txt", "geometry.txt", "errors.txt"),
                         [](const auto& one) {
                           const std::string file = one.param;
                           return file.substr(0, file.find('.'));
                         });

}  // namespace
