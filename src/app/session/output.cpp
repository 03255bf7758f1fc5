#include "app/session/output.h"

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"

#include <cerrno>
#include <cstdio>

namespace veltora::app {

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

bool outputWritten() {
  const bool flushed = std::fflush(stdout) == 0;
  if (flushed && std::ferror(stdout) == 0) return true;
  const std::string reason = errno != 0 ? " : " + base::raisonSysteme(errno) : std::string();
  printError("la sortie standard n'a pas pu être écrite" + reason);
  return false;
}

void printError(const std::string& message) { std::fprintf(stderr, "veltora : %s\n", message.c_str()); }

void printError(const std::wstring& message) { printError(base::toUtf8(base::trim(message, L"\r\n \t"))); }

void printRemarks(const base::Remarques& remarks) {
  for (const std::wstring& phrase : remarks.phrases()) printError(phrase);
}

std::string padded(const std::wstring& text, std::size_t width) {
  return base::toUtf8(text.size() < width ? text + std::wstring(width - text.size(), L' ') : text);
}

std::string counted(int number, const char* word) {
  return base::formater("%d %s%s", number, word, number > 1 ? "s" : "");
}

}  // namespace veltora::app
