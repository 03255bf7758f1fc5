#pragma once

#include "base/lines/decoded_text.h"
#include "base/remarque.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace veltora::base {

/// Reads the text of a file line by line: the one reader of all line-oriented formats.
///
///     base::LineReader lines(bytes, 1024);
///     while (lines.next()) {
///       if (const auto cut = lines.cut()) remarks.ajouter(*cut);
///       parse(lines.wide());
///     }
///
/// A line ends with LF, CR LF or a lone CR; the last one needs no end. A mark at its beginning, as joined
/// files have it, is dropped. Behind a zero byte, or more characters than the limit, it is cut.
class VELTORA_API LineReader : private Uncopyable {
public:
  static constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

  /// @param bytes  of the whole file, outlive this  @param limit  characters that a line may hold
  explicit LineReader(std::string_view bytes, std::size_t limit = kNoLimit);
  /// Goes to the next line. @return false behind the last one
  bool next();
  /// Of the line, from 1.
  [[nodiscard]] int number() const { return m_number; }
  /// The line in UTF-8 or Windows-1252: pieces of it that are parted by ASCII characters go through `wide`.
  [[nodiscard]] std::string_view line() const { return m_line; }
  /// Whether the lines are in UTF-8; in Windows-1252 otherwise, or where both are the same.
  [[nodiscard]] bool isUtf8() const { return m_text.isUtf8(); }
  [[nodiscard]] std::wstring wide() const { return m_text.wide(m_line); }
  [[nodiscard]] std::wstring wide(std::string_view piece) const { return m_text.wide(piece); }
  /// What was cut off the line; nothing when it is whole.
  [[nodiscard]] std::optional<Remarque> cut() const;
  /// How much has been read, of `size()`.
  [[nodiscard]] std::size_t position() const { return m_position; }
  [[nodiscard]] std::size_t size() const { return m_text.bytes().size(); }

private:
  enum class Cut { kNone, kZero, kLimit };
  /// Position of the next one of these bytes, found once for all lines in front of it.
  struct Mark {
    char byte;
    std::size_t at = 0;
    bool sought = false;
    std::size_t find(std::string_view bytes, std::size_t from);
  };
  void applyLimit();

  const DecodedText m_text;
  std::size_t m_limit;
  std::size_t m_position = 0;
  int m_number = 0;
  std::string_view m_line;
  Cut m_cut = Cut::kNone;
  Mark m_return{'\r'};
  Mark m_zero{'\0'};
};

}  // namespace veltora::base
