#include "arx/lisp/lispopenfile.h"

#include "base/files.h"
#include "base/lines/decoded_text.h"
#include "base/text.h"

#include <utility>

namespace base = veltora::base;

namespace aclisp {

namespace {
constexpr char kMark[] = "\xEF\xBB\xBF";
}

std::wstring decodeText(const std::string& bytes) { return base::DecodedText(bytes).wide(); }

std::optional<OpenFile> OpenFile::open(const std::filesystem::path& path, Mode mode, Encoding encoding) {
  OpenFile file(path, mode, encoding);
  const std::optional<std::string> content = mode == Mode::kWrite ? std::nullopt : base::lireFichier(path);
  std::error_code error;
  if (mode == Mode::kRead) {
    file.m_closed = !content;  // nothing to write in its destructor either way
    if (!content) return std::nullopt;
    file.m_text = decodeText(*content);
    return file;
  }
  // The folder must exist and the name must not be one; what else may go wrong shows when writing.
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  const bool possible = path.has_filename() && std::filesystem::is_directory(folder, error) &&
                        !std::filesystem::is_directory(path, error);
  if (!possible) return std::nullopt;
  if (content) file.m_bytes = *content;
  const bool foreign = content && !content->empty() && base::isUtf8(*content) &&
                       base::narrow(base::fromUtf8(*content)) != *content;
  if (foreign) file.m_encoding = Encoding::kUtf8;
  if (file.m_bytes.empty() && encoding == Encoding::kUtf8WithMark) file.m_bytes = kMark;
  file.m_changed = mode == Mode::kWrite;
  // An empty file is made at once: a folder that forbids it shows here.
  if (mode == Mode::kWrite && !file.flush()) {
    file.m_changed = false;
    return std::nullopt;
  }
  return file;
}

OpenFile::OpenFile(OpenFile&& other) noexcept
    : m_path(std::move(other.m_path)),
      m_mode(other.m_mode),
      m_encoding(other.m_encoding),
      m_text(std::move(other.m_text)),
      m_bytes(std::move(other.m_bytes)),
      m_at(other.m_at),
      m_changed(std::exchange(other.m_changed, false)),
      m_closed(other.m_closed) {}

OpenFile::~OpenFile() { flush(); }

std::optional<std::wstring> OpenFile::readLine() {
  if (m_at >= m_text.size()) return std::nullopt;
  const std::size_t end = m_text.find(L'\n', m_at);
  std::wstring line = m_text.substr(m_at, end == std::wstring::npos ? end : end - m_at);
  m_at = end == std::wstring::npos ? m_text.size() : end + 1;
  if (line.ends_with(L'\r')) line.pop_back();
  return line;
}

std::optional<wchar_t> OpenFile::readCharacter() {
  if (m_at + 1 < m_text.size() && m_text[m_at] == L'\r' && m_text[m_at + 1] == L'\n') ++m_at;
  if (m_at >= m_text.size()) return std::nullopt;
  return m_text[m_at++];
}

bool OpenFile::write(const std::wstring& text) {
  constexpr std::size_t kMost = 1'000'000'000;
  if (m_bytes.size() + text.size() > kMost) return false;
  m_bytes += m_encoding == Encoding::kAnsi ? base::narrow(text) : base::toUtf8(text);
  m_changed = true;
  return true;
}

bool OpenFile::flush() {
  if (!m_changed) return true;
  m_changed = !base::remplacerFichier(m_path, m_bytes);
  return !m_changed;
}

bool OpenFile::close() {
  m_closed = true;
  return flush();
}

}  // namespace aclisp
