// The LISP evaluator: loops, calls, lists, texts, loading, and entities of a drawing.

#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/aclisp.h"
#include "mesure.h"

#include <cstdlib>
#include <string>

namespace {

void run(const std::wstring& expression) {
  const AcEdRbHolder value(acedPorts().evaluate(expression));
  if (value) return;
  std::fprintf(stderr, "an expression failed\n");
  std::exit(1);
}

struct Row {
  const char* what;
  const wchar_t* before;  ///< run once
  const wchar_t* form;    ///< N stands for the size
};

constexpr Row kRows[] = {
    {"additions", L"(setq a 0)", L"(repeat N (setq a (+ a 1)))"},
    {"calls of a routine", L"(defun f (x / y) (setq y (* x 2)) (1+ y))", L"(repeat N (f 3))"},
    {"list of points, mapped", L"(setq l nil)",
     L"(progn (setq l nil) (repeat N (setq l (cons (list 1.0 2.0) l))) (setq l (mapcar 'car l)) (setq l "
     L"nil))"},
    {"sort with a lambda", L"(setq g 1)",
     L"(progn (setq l nil) (repeat N (setq g (rem (+ (* g 75) 74) 65537) l (cons (float g) l))) (vl-sort l "
     L"'(lambda (x y) (< x y))) (setq l nil))"},
    {"numbers as texts", L"(setq s nil)", L"(repeat N (setq s (strcat \"P\" (rtos 12.3456 2 3))))"},
    {"points made and read", L"(setq e nil)",
     L"(repeat N (setq e (entget (entmakex '((0 . \"POINT\") (8 . \"P\") (10 1.0 2.0 3.0))))))"},
};

std::wstring sized(std::wstring form, int n) {
  for (std::size_t at = form.find(L" N "); at != std::wstring::npos; at = form.find(L" N "))
    form.replace(at + 1, 1, std::to_wstring(n));
  return form;
}

}  // namespace

int main() {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  aclispInstall();
  Mesure measure;
  for (const Row& row : kRows) {
    const bool entities = std::wstring(row.form).find(L"entmakex") != std::wstring::npos;
    for (const int n : {10'000, 100'000, 1'000'000}) {
      if (entities && n > 10'000) break;
      run(row.before);
      measure(row.what, n, [&] { run(sized(row.form, n)); });
    }
  }
  acedPorts() = {};
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return 0;
}
