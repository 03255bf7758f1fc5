// Reads any bytes as a drawing. What is read is saved and read again: it must be accepted and give the same
// text.
#include "arx/db/dbmain.h"
#include "arx/dxf/dxfread.h"
#include "arx/dxf/dxfwrite.h"

#include <cstdint>
#include <cstdlib>

namespace {

/// Text of a drawing after loading and saving; empty when it is refused.
std::string copyOf(const std::string& text) {
  AcDbDatabase database(false, true);
  std::wstring message;
  if (dxfReadText(database, text, "fuzz", &message) == Acad::eOk) return dxfWriteText(database);
  if (message.empty() || !database.tables().empty() || !database.allObjects().empty()) std::abort();
  return {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string first = copyOf(std::string(reinterpret_cast<const char*>(data), size));
  if (first.empty()) return 0;
  const std::string second = copyOf(first);
  if (second.empty() || copyOf(second) != second) std::abort();
  return 0;
}
