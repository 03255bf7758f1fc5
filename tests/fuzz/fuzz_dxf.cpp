// Reads any bytes as a drawing. What is read is saved and read again: it must be accepted and give the same
// text.
#include "fuzz/fuzz.h"

#include "arx/db/dbmain.h"
#include "arx/dxf/dxfread.h"
#include "arx/dxf/dxfwrite.h"

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

void fuzz(std::string_view bytes) {
  const std::string first = copyOf(std::string(bytes));
  if (first.empty()) return;
  const std::string second = copyOf(first);
  if (second.empty() || copyOf(second) != second) std::abort();
}
