// Any lines at all, given to a dialog with every kind of control: each is obeyed or refused with a message.
#include "fuzz/fuzz.h"

#include "support/dialog_script.h"
#include "ui/sample_dialog.h"

void fuzz(std::string_view bytes) {
  std::vector<std::string> lines(1);
  for (const char c : bytes) {
    if (c == '\n')
      lines.emplace_back();
    else
      lines.back() += c;
  }
  SampleDialog dialog;
  DialogScript script(lines, true);  // a terminal goes on after a refusal
  dialog.doModal();
}
