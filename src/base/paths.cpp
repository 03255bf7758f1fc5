#include "base/paths.h"

#include "base/text.h"

#include <algorithm>
#include <system_error>

namespace veltora::base {
namespace fs = std::filesystem;
namespace {

// A byte that is no UTF-8, 0x80 to 0xFF, is kept as one of the code points that no text has.
constexpr wchar_t kFirstLoneByte = 0xDC80;
constexpr wchar_t kLastLoneByte = 0xDCFF;
constexpr wchar_t kByteOffset = 0xDC00;

}  // namespace

std::wstring texteDuChemin(const fs::path& path) {
  std::string_view bytes = path.native();
  std::wstring text;
  while (!bytes.empty()) {
    // The longest beginning that is one character: sequences have up to four bytes.
    std::size_t length = 1;
    while (length < 5 && !isUtf8(bytes.substr(0, length))) ++length;
    if (length == 5) {
      text += static_cast<wchar_t>(kByteOffset + static_cast<unsigned char>(bytes[0]));
      length = 1;
    } else {
      length = std::min(length, bytes.size());
      text += fromUtf8(bytes.substr(0, length));
    }
    bytes.remove_prefix(length);
  }
  return text;
}

fs::path cheminDuTexte(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) {
    if (c >= kFirstLoneByte && c <= kLastLoneByte)
      bytes += static_cast<char>(c - kByteOffset);
    else
      bytes += toUtf8(std::wstring_view(&c, 1));
  }
  return fs::path(bytes);
}

std::wstring terminaison(const fs::path& path) {
  const std::wstring text = toLower(texteDuChemin(path.extension()));
  return text.empty() ? text : text.substr(1);
}

fs::path cheminComplet(const fs::path& path) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  const fs::path full = fs::weakly_canonical(error ? path : absolute, error);
  return error ? absolute : full;
}

bool memeFichier(const fs::path& a, const fs::path& b) {
  std::error_code error;
  return fs::equivalent(a, b, error) || cheminComplet(a) == cheminComplet(b);
}

}  // namespace veltora::base
