#include "lisp/case_file.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

std::vector<LispCase> lireCas(const std::string& name) {
  const std::string path = VELTORA_SOURCE_DIR "/tests/lisp/cases/" + name;
  std::ifstream file(path);
  if (!file) throw std::runtime_error("no case file " + path);
  std::vector<LispCase> cases;
  LispCase next;
  std::string group = name;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    if (line.rfind("@ ", 0) == 0) group = line.substr(2);
    if (line.empty() || line[0] == '@' || (line[0] == ';' && next.expression.empty())) continue;
    if (line[0] == '<') {
      next.answers.push_back(line.substr(std::min<std::size_t>(line.size(), 2)));
      continue;
    }
    const bool result = line.rfind("=>", 0) == 0;
    const bool failure = line.rfind("!!", 0) == 0;
    if (!result && !failure) {
      if (next.expression.empty()) next.line = number;
      next.expression += (next.expression.empty() ? "" : "\n") + line;
      continue;
    }
    next.expected = line.size() > 3 ? line.substr(3) : std::string();
    next.failure = failure;
    next.group = group;
    cases.push_back(next);
    next = {};
  }
  if (!next.expression.empty()) throw std::runtime_error(path + ": a case without result at the end");
  return cases;
}
