// Reads and evaluates any bytes: no text may crash the evaluator, hang it or leave values behind. A text that
// begins with "*" works on an empty drawing, with the host's functions.
#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "arx/ed/edselect.h"
#include "arx/lisp/host/aclisp.h"
#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispprinter.h"
#include "base/text.h"
#include "support/arret_compte.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::size_t before = Object::alive;
  if (size > 0 && data[0] == '*') {
    onDrawing(veltora::base::fromUtf8({reinterpret_cast<const char*>(data) + 1, size - 1}));
  } else {
    int asked = 0;
    Host host;
    host.userBreak = [&asked] { return ++asked > 20; };
    Limits limits;
    limits.depth = 400;
    limits.objects = 200'000;
    limits.textLength = 100'000;
    Interpreter in(host, limits);
    // Nothing that leaves the process.
    for (const wchar_t* name : {L"OPEN", L"LOAD", L"VL-FILE-DELETE", L"GETENV", L"VL-FILE-SIZE"})
      in.intern(name)->value = {};
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::wstring text = veltora::base::fromUtf8(bytes);
    LispError error;
    bool handled = false;
    const std::optional<Value> value =
        in.run([&] { return in.evalText(text, L"essai.lsp"); }, error, handled);
    if (!value && error.message.empty()) std::abort();
    if (value) printed(*value, true, 10'000);
    if (in.mark() != 0 || in.depth() != 0) std::abort();
  }
  if (Object::alive != before) std::abort();
  return 0;
}
