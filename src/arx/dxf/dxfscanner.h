#pragma once

#include "arx/dxf/dxfsource.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

/// Cuts the text of a drawing into items: a group of code 0 and the groups behind it up to the next one.
/// Reads in pieces, converts old code pages, and holds only what the present item needs.
///
/// Raises DxfError for what is no drawing text: binary content, a group code that is no number, a missing
/// value.
class DxfScanner {
public:
  explicit DxfScanner(DxfSource& source);
  DxfScanner(const DxfScanner&) = delete;
  DxfScanner& operator=(const DxfScanner&) = delete;

  /// Moves to the next item; views of the former one die. @return false at the end of the file
  bool next();
  [[nodiscard]] std::string_view type() const { return m_type.value; }  ///< without outer blanks
  [[nodiscard]] Adesk::UInt32 line() const { return m_type.line; }
  /// Groups behind the type.
  [[nodiscard]] std::span<const DxfTag> tags() const { return m_tags; }
  /// Behind EOF: whether something other than blanks, line ends and an end mark (Ctrl-Z) stands there.
  [[nodiscard]] bool hasTail() const;
  /// Back to the start of the file, as if nothing had been read.
  void rewind();
  /// Takes comments (999) out of the present item.
  void dropComments();
  /// Comments in front of the first item.
  [[nodiscard]] const DxfTagText& comments() const { return m_comments; }
  [[nodiscard]] Adesk::UInt32 lastLine() const { return m_line; }

  /// "AC1032"; empty when the file names none.
  [[nodiscard]] const std::string& version() const { return m_version; }
  [[nodiscard]] const std::string& codePage() const { return m_codePage; }
  /// Some text was not in the encoding that the file announces.
  [[nodiscard]] bool repaired() const { return m_repaired; }

private:
  enum class Status { kGroup, kMore, kEnd };
  Status group(DxfTag& tag);
  Status readItem();
  void fill();
  void start();
  void inspectHead();
  void refuseZero(std::string_view part) const;
  void decode(std::size_t from, std::size_t to);
  [[nodiscard]] std::string converted(std::string_view bytes) const;

  DxfSource& m_source;
  std::unique_ptr<char[]> m_buffer;
  std::size_t m_capacity = 0;
  std::size_t m_item = 0;   // start of the present item
  std::size_t m_at = 0;     // next line
  std::size_t m_limit = 0;  // end of the lines that are complete and decoded
  std::size_t m_fill = 0;   // end of the bytes read
  bool m_atEnd = false;
  bool m_started = false;
  bool m_legacy = false;  // not UTF-8
  bool m_repaired = false;
  bool m_returnsEnd = false;  // lines end in carriage returns alone
  bool m_commented = false;   // the present item holds comments
  Adesk::UInt32 m_itemLine = 0;
  Adesk::UInt32 m_line = 0;
  DxfTag m_type;
  std::vector<DxfTag> m_tags;
  DxfTagText m_comments;
  std::string m_version;
  std::string m_codePage;
};

/// Highest handle that the file gives or refers to; what lies beyond a sensible range is passed over.
Adesk::UInt64 dxfHighestHandle(DxfSource& source);
/// Handles from here on are not accepted from files: room must remain for new ones.
inline constexpr Adesk::UInt64 kDxfHandleLimit = Adesk::UInt64{1} << 62U;
/// A hexadecimal handle; 0 when the text is none.
Adesk::UInt64 dxfHandleOf(std::string_view text);
/// Value of the first group of this code, empty when there is none.
std::string_view dxfFirst(std::span<const DxfTag> tags, int code);
