#pragma once

#include "base/export.h"
#include "base/uncopyable.h"

#include <string>
#include <string_view>

namespace veltora::base {

/// Text without the byte-order marks of UTF-8 at its beginning.
VELTORA_API std::string_view withoutMark(std::string_view bytes);

/// The text of a file, whatever wrote it: a byte-order mark of UTF-8 or UTF-16 (either order) is
/// dropped; behind the latter the text is UTF-16, and without it when its first two characters are ASCII in
/// that form. Anything else is UTF-8 when it is well formed as a whole, and Windows-1252 when it is not. So
/// neither a mark nor the encoding changes what is read. What no UTF-16 is becomes U+FFFD.
class VELTORA_API DecodedText : private Uncopyable {
public:
  /// @param bytes  outlive this
  explicit DecodedText(std::string_view bytes);
  /// The text without mark, in UTF-8 or Windows-1252.
  [[nodiscard]] std::string_view bytes() const { return m_bytes; }
  [[nodiscard]] bool isUtf8() const { return m_utf8; }
  [[nodiscard]] std::wstring wide() const { return wide(m_bytes); }
  /// Some of these bytes, whole characters, as wide text.
  [[nodiscard]] std::wstring wide(std::string_view piece) const;

private:
  std::string m_converted;  ///< UTF-8 made of UTF-16
  std::string_view m_bytes;
  bool m_utf8 = false;
};

}  // namespace veltora::base
