#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace aclisp {

/// A text file opened by a routine. Reading: the whole content at once. Writing: gathered and put in place by
/// `flush`, so that the old file stays whole until then. Texts are in Windows-1252; UTF-8 is recognised when
/// reading and kept when appending.
class OpenFile {
public:
  enum class Mode { kRead, kWrite, kAppend };
  enum class Encoding { kAnsi, kUtf8, kUtf8WithMark };
  /// Nothing when the file cannot be opened that way.
  static std::optional<OpenFile> open(const std::filesystem::path& path, Mode mode, Encoding encoding);
  OpenFile(OpenFile&& other) noexcept;
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  OpenFile& operator=(OpenFile&&) = delete;
  ~OpenFile();

  [[nodiscard]] bool reading() const { return m_mode == Mode::kRead; }
  [[nodiscard]] bool closed() const { return m_closed; }
  /// The next line without its end, nothing at the end of the file.
  std::optional<std::wstring> readLine();
  /// The next character; a line end is one "\n".
  std::optional<wchar_t> readCharacter();
  /// @return false when the file would pass 1 GB
  [[nodiscard]] bool write(const std::wstring& text);
  /// @return false, the text kept, when the disk does not take it
  bool flush();
  bool close();

private:
  OpenFile(std::filesystem::path path, Mode mode, Encoding encoding)
      : m_path(std::move(path)), m_mode(mode), m_encoding(encoding) {}
  std::filesystem::path m_path;
  Mode m_mode;
  Encoding m_encoding;
  std::wstring m_text;
  std::string m_bytes;
  std::size_t m_at = 0;
  bool m_changed = false;
  bool m_closed = false;
};

/// Bytes of a routine or a text file: UTF-8 when they are, with or without a byte order mark, else
/// Windows-1252.
std::wstring decodeText(const std::string& bytes);

}  // namespace aclisp
