// Any lines at all, given to a dialog with every kind of control: each is obeyed or refused with a message.
#include "support/dialog_script.h"
#include "ui/sample_dialog.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n')
      lines.emplace_back();
    else
      lines.back() += static_cast<char>(data[i]);
  }
  SampleDialog dialog;
  DialogScript script(lines, true);  // a terminal goes on after a refusal
  dialog.doModal();
  return 0;
}
