#pragma once

#include "arx/adesk.h"

#include <string>
#include <string_view>

/// One group of a drawing file: its code and its text as it stands, without the line end. Leading blanks
/// belong to texts and are insignificant in numbers.
struct DxfTag {
  int code = 0;
  Adesk::UInt32 line = 0;  ///< number of the line with the value, from 1; 0 when unknown
  std::string_view value;
};

/// A sequence of groups kept as file text ("code\nvalue\n"...), for everything that the host does not model,
/// and for xdata and xrecords. Compact: no allocation a group. Values are UTF-8.
class ARX_API DxfTagText {
public:
  /// Forward walk over the groups; ends at the first thing that is no group.
  class ARX_API Cursor {
  public:
    explicit Cursor(std::string_view rest) : m_rest(rest) {}
    /// @return false at the end
    bool next(DxfTag& tag);

  private:
    std::string_view m_rest;
  };

  DxfTagText() = default;
  /// @param groups  file text that is known to be whole groups
  explicit DxfTagText(std::string_view groups) : m_text(groups) {}
  [[nodiscard]] bool empty() const { return m_text.empty(); }
  void clear() { m_text.clear(); }
  void append(int code, std::string_view value);
  void appendInteger(int code, Adesk::Int64 value);
  void appendReal(int code, double value);
  void appendHandle(int code, Adesk::UInt64 handle);
  [[nodiscard]] Cursor tags() const { return Cursor(m_text); }
  [[nodiscard]] const std::string& text() const { return m_text; }
  /// Takes over file text that is known to be whole groups.
  void assign(std::string text) { m_text = std::move(text); }
  void appendText(std::string_view text) { m_text += text; }
  void reserve(std::size_t bytes) { m_text.reserve(bytes); }
  /// Gives back spare room, but not by copying a text of megabytes: its room was never touched.
  void shrink() {
    constexpr std::size_t kLarge = 1U << 20U;
    if (m_text.size() < kLarge) m_text.shrink_to_fit();
  }
  bool operator==(const DxfTagText&) const = default;

private:
  std::string m_text;
};

/// What kind of value a group code carries.
enum class DxfKind {
  kText,
  kReal,
  kPoint,
  kInt16,
  kInt32,
  kInt64,
  kBool,
  kBinary,
  kHandle,
  kPointer,
  kName,
  kUnknown
};
/// kPointer: soft and hard references by handle (320-369, 390-399, 480-481, 1005); kHandle: 5 and 105.
/// kPoint: the first of the two or three groups of a point (10-18, 110-112, 210, 211, 1010-1013).
ARX_API DxfKind dxfKind(int code);

/// File text to wide text: UTF-8, "\U+hhhh" and caret forms ("^J", "^ ") resolved. A byte that is no UTF-8
/// becomes the lone surrogate U+DC00 + byte, which `dxfFromWide` turns back into the byte.
ARX_API std::wstring dxfToWide(std::string_view fileText);
/// Wide text as file text: UTF-8, control characters and the caret in their caret forms.
ARX_API std::string dxfFromWide(std::wstring_view text);
/// Shortest text that reads back as the same number, always with a point or an exponent; 0.0 for what is not
/// finite.
/// @param buffer at least 40 bytes  @return the number of bytes written
ARX_API std::size_t dxfFormatReal(char* buffer, double value);
/// A handle in hexadecimal digits. @param to  at least 16 bytes  @return behind what was written
ARX_API char* dxfPutHandle(char* to, Adesk::UInt64 handle);
/// Writes a group code, right-justified in three places, and its line end.
/// @param to  at least 16 bytes  @return behind what was written
ARX_API char* dxfPutCode(char* to, int code);
ARX_API void dxfAppendCode(std::string& text, int code);
/// Appends a value and its line end; a line end inside the value, which would break the sequence of groups,
/// takes its caret form.
ARX_API void dxfAppendValue(std::string& text, std::string_view value);
/// Numbers of files, blanks around them allowed. A real that is integral passes for an integer; unsigned
/// 32-bit values too. @return false, `value` unchanged, when the text is none
ARX_API bool dxfParseReal(std::string_view text, double& value);
ARX_API bool dxfParseInteger(std::string_view text, Adesk::Int64& value);
/// Hexadecimal digits, at most 16; false otherwise.
ARX_API bool dxfParseHandle(std::string_view text, Adesk::UInt64& value);

/// Raised when a drawing file cannot be read; caught by the operation that reads the file.
struct ARX_API DxfError {
  Adesk::UInt32 line = 0;
  std::string message;  ///< French, UTF-8
};
