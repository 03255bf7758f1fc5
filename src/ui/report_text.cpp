#include "ui/report_text.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <vector>

namespace veltora::ui {
namespace {

constexpr std::size_t npos = std::wstring_view::npos;
constexpr std::size_t kMostColumns = 1000;  // a span beyond counts as so many

struct Cell {
  std::wstring text;
  std::size_t span = 1;
  std::wstring attributes;
};
using Row = std::vector<Cell>;

/// An HTML text taken apart from the body on.
class Reader {
public:
  explicit Reader(std::wstring_view html) : m_html(html) {}
  std::wstring run();

private:
  void takeTag();
  void takeText(std::wstring_view text);
  void endParagraph();
  void endTable();
  [[nodiscard]] std::vector<std::size_t> widths() const;

  std::wstring_view m_html;
  std::size_t m_at = 0;
  std::wstring m_out;
  std::wstring m_paragraph;
  std::vector<Row> m_rows;
  bool m_inTable = false;
};

std::wstring Reader::run() {
  const std::size_t body = base::toLower(m_html).find(L"<body");
  m_at = body == npos ? 0 : body;
  while (m_at < m_html.size()) {
    if (m_html[m_at] == L'<') {
      takeTag();
      continue;
    }
    const std::size_t end = std::min(m_html.find(L'<', m_at), m_html.size());
    takeText(m_html.substr(m_at, end - m_at));
    m_at = end;
  }
  endTable();
  endParagraph();
  return m_out;
}

void Reader::takeTag() {
  const bool comment = m_html.substr(m_at).starts_with(L"<!--");
  const std::size_t end = m_html.find(comment ? L"-->" : L">", m_at);
  const std::wstring_view tag = m_html.substr(m_at + 1, (end == npos ? m_html.size() : end) - m_at - 1);
  m_at = end == npos ? m_html.size() : end + (comment ? 3 : 1);
  if (comment) return;
  const std::wstring name = base::toLower(tag.substr(0, tag.find_first_of(L" \t\r\n")));
  if (name == L"p" || name == L"/p" || name == L"li" || name == L"/li" || name == L"br") endParagraph();
  if (name == L"table") {
    endParagraph();
    m_inTable = true;
  }
  if (name == L"/table") endTable();
  if (name == L"tr" && m_inTable) m_rows.emplace_back();
  if ((name == L"td" || name == L"th") && m_inTable) {
    if (m_rows.empty()) m_rows.emplace_back();
    Cell cell;
    cell.attributes = base::toLower(tag);
    if (const std::size_t span = cell.attributes.find(L"colspan="); span != npos) {
      const int columns = base::lireEntier(std::wstring_view(cell.attributes).substr(span + 8));
      cell.span =
          std::clamp<std::size_t>(columns > 0 ? static_cast<std::size_t>(columns) : 1, 1, kMostColumns);
    }
    m_rows.back().push_back(cell);
  }
}

/// Runs of white space count as one blank; the few entities that reports hold are resolved.
void Reader::takeText(std::wstring_view text) {
  static constexpr std::pair<std::wstring_view, wchar_t> kEntities[] = {{L"&nbsp;", L' '}, {L"&nbsp", L' '},
                                                                        {L"&lt;", L'<'},   {L"&gt;", L'>'},
                                                                        {L"&quot;", L'"'}, {L"&amp;", L'&'}};
  const bool inCell = m_inTable && !m_rows.empty() && !m_rows.back().empty();
  if (m_inTable && !inCell) return;
  std::wstring& target = inCell ? m_rows.back().back().text : m_paragraph;
  for (std::size_t i = 0; i < text.size(); ++i) {
    wchar_t c = text[i];
    for (const auto& [entity, sign] : kEntities) {
      if (!text.substr(i).starts_with(entity)) continue;
      c = sign;
      i += entity.size() - 1;
      break;
    }
    const bool blank = c == L' ' || c == L'\t' || c == L'\r' || c == L'\n';
    if (!blank)
      target += c;
    else if (!target.empty() && target.back() != L' ')
      target += L' ';
  }
}

void Reader::endParagraph() {
  const std::wstring line = base::trim(m_paragraph);
  if (!line.empty()) m_out += line + L"\n";
  m_paragraph.clear();
}

/// A cell that spans columns widens the last of them where it needs more than they have.
std::vector<std::size_t> Reader::widths() const {
  std::vector<std::size_t> found;
  for (const bool spanning : {false, true}) {
    for (const Row& row : m_rows) {
      std::size_t column = 0;
      for (const Cell& cell : row) {
        found.resize(std::max(found.size(), column + cell.span), 0);
        column += cell.span;
        if ((cell.span > 1) != spanning) continue;
        std::size_t has = 2 * (cell.span - 1);
        for (std::size_t i = column - cell.span; i < column; ++i) has += found[i];
        if (const std::size_t needs = base::trim(cell.text).size(); needs > has)
          found[column - 1] += needs - has;
      }
    }
  }
  return found;
}

void Reader::endTable() {
  const std::vector<std::size_t> columns = widths();
  for (const Row& row : m_rows) {
    std::wstring line = L"  ";
    std::size_t column = 0;
    for (const Cell& cell : row) {
      std::size_t width = 2 * (cell.span - 1);
      for (std::size_t i = 0; i < cell.span; ++i) width += columns[column++];
      const std::wstring text = base::trim(cell.text);
      const std::size_t blanks = width - text.size();
      const bool right = cell.attributes.find(L"align=right") != npos;
      const bool center = cell.attributes.find(L"center") != npos;
      const std::size_t before = right ? blanks : center ? blanks / 2 : 0;
      line += std::wstring(before, L' ') + text + std::wstring(blanks - before + 2, L' ');
    }
    m_out += base::trimRight(line) + L"\n";
  }
  if (!m_rows.empty()) m_out += L"\n";
  m_rows.clear();
  m_inTable = false;
}

}  // namespace

std::wstring reportText(std::string_view html) { return Reader(base::widen(std::string(html))).run(); }

}  // namespace veltora::ui
