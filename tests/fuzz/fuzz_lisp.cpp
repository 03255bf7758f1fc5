// Reads and evaluates any bytes without a drawing: no text may crash the evaluator, hang it or leave values
// behind.
#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispprinter.h"
#include "base/text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace aclisp;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::size_t before = Object::alive;
  {
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
