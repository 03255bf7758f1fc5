#include "arx/ed/edhelp.h"

#include <algorithm>

namespace {

std::vector<AcEdCommandHelp>& described() {
  static auto* const only = new std::vector<AcEdCommandHelp>;
  return *only;
}

}  // namespace

void acedDescribeCommand(const AcEdCommandHelp& help) {
  const auto same = [&](const AcEdCommandHelp& other) {
    return other.group == help.group && other.names == help.names;
  };
  const auto found = std::find_if(described().begin(), described().end(), same);
  if (found == described().end())
    described().push_back(help);
  else
    *found = help;
}

void acedForgetDescriptions(const ACHAR* group) {
  std::erase_if(described(), [&](const AcEdCommandHelp& help) { return group && help.group == group; });
}

const std::vector<AcEdCommandHelp>& acedDescriptions() { return described(); }

std::wstring acedHelpText() {
  std::size_t width = 0;
  std::vector<std::wstring> subjects;
  for (const AcEdCommandHelp& help : described()) {
    width = std::max(width, help.names.size());
    if (std::find(subjects.begin(), subjects.end(), help.subject) == subjects.end())
      subjects.push_back(help.subject);
  }
  std::wstring text;
  for (const std::wstring& subject : subjects) {
    text += L"\n" + subject + L"\n";
    for (const AcEdCommandHelp& help : described()) {
      if (help.subject != subject) continue;
      text += L"  " + help.names + std::wstring(width + 2 - help.names.size(), L' ') + help.line + L"\n";
    }
  }
  return text;
}
