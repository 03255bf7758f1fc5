// Reads and evaluates any bytes: no text may crash the evaluator, hang it or leave values behind. A text that
// begins with "*" works on an empty drawing, with the host's functions.
#include "fuzz/fuzz.h"

#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "arx/ed/edselect.h"
#include "arx/lisp/host/aclisp.h"
#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispprinter.h"
#include "base/text.h"
#include "support/arret_compte.h"

using namespace aclisp;

namespace {

void onDrawing(const std::wstring& text) {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  const ArretCompte user(10);
  aclispInstall();
  // Nothing that leaves the process.
  acutRelRb(acedPorts().evaluate(L"(setq open nil load nil vl-file-delete nil getenv nil vl-file-size nil)"));
  acutRelRb(acedPorts().evaluate(text));
  acedPorts() = {};
  acedForgetDatabase(&drawing);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace

void fuzz(std::string_view bytes) {
  const std::ptrdiff_t before = outsideAccount.alive;
  if (bytes.starts_with('*')) {
    onDrawing(veltora::base::fromUtf8(bytes.substr(1)));
  } else {
    int asked = 0;
    Host host;
    host.userBreak = [&asked] { return ++asked > 20; };
    Limits limits;
    limits.depth = 400;
    limits.objects = 200'000;
    limits.textLength = 100'000;
    Interpreter in(host, limits);
    const AccountScope work = in.atWork();
    // Nothing that leaves the process.
    for (const wchar_t* name : {L"OPEN", L"LOAD", L"VL-FILE-DELETE", L"GETENV", L"VL-FILE-SIZE"})
      in.intern(name)->value = {};
    const std::wstring text = veltora::base::fromUtf8(bytes);
    LispError error;
    bool handled = false;
    const std::optional<Value> value =
        in.run([&] { return in.evalText(text, L"essai.lsp"); }, error, handled);
    if (!value && error.message.empty()) std::abort();
    if (value) printed(*value, true, 10'000);
    if (in.mark() != 0 || in.depth() != 0) std::abort();
  }
  if (outsideAccount.alive != before) std::abort();
}
