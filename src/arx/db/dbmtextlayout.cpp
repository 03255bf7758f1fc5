#include "arx/db/dbmtextlayout.h"

#include "arx/db/dbmtextplain.h"
#include "arx/db/dbtextsize.h"
#include "arx/db/dxftags.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <string>

namespace {

constexpr double kItalic = 15.0;       // degrees
constexpr double kSteepest = 85.0;     // degrees of a slant; beyond no program draws
constexpr double kBar = 1.15;          // above the base of what stands below
constexpr double kAbove = 1.3;         // likewise the base of what stands above
constexpr double kStack = 2.3;         // height of both
constexpr std::size_t kDeepest = 100;  // braces within braces
constexpr wchar_t kStacked = L'\uFFFC';

enum Lines : unsigned { kUnderlined = 1, kOverlined = 2, kStruck = 4 };

double slantOf(double degrees) {
  const double angle = std::clamp(degrees, -kSteepest, kSteepest);
  return std::tan(angle * std::numbers::pi / 180.0);
}

struct Look {
  double height = 0.0;
  double width = 1.0;
  double slant = 0.0;
  std::optional<AcCmColor> color;
  unsigned lines = 0;
  int alignment = 0;  // of fractions: below, middle, above
  bool operator==(const Look&) const = default;
};

struct Letter {
  wchar_t c = 0;
  std::size_t look = 0;
  std::size_t stack = 0;  // of kStacked
};

struct Stack {
  AcString above;
  AcString below;
  bool bar = false;
};

struct Paragraph {
  std::vector<Letter> letters;
  int across = 0;
};

/// The text as letters with their looks.
class Reader {
public:
  Reader(std::wstring_view source, double height, int across) : m_source(source), m_across(across) {
    m_now.height = height;
    looks.push_back(m_now);
  }
  std::vector<Look> looks;
  std::vector<Stack> stacks;
  std::vector<Paragraph> paragraphs;

  void read() {
    while (m_at < m_source.size()) {
      const wchar_t c = m_source[m_at++];
      if (c == L'\\')
        code();
      else if (c == L'{')
        open();
      else if (c == L'}')
        close();
      else if (c == L'\n')
        endParagraph();
      else if (c != L'%' || !percent())
        put(c);
    }
    endParagraph();
  }

private:
  void open() {
    if (m_outer.size() < kDeepest) m_outer.push_back(m_now);
  }
  void close() {
    if (m_outer.empty()) return;
    change([&](Look& look) { look = m_outer.back(); });
    m_outer.pop_back();
  }
  template <class Work>
  void change(Work work) {
    work(m_now);
    if (!(looks.back() == m_now)) looks.push_back(m_now);
  }
  void put(wchar_t c, std::size_t stack = 0) { m_letters.push_back({c, looks.size() - 1, stack}); }
  void endParagraph() {
    paragraphs.push_back({std::move(m_letters), m_across});
    m_letters.clear();
  }
  /// What stands up to the next semicolon, which is passed.
  std::wstring argument() {
    const std::size_t end = std::min(m_source.find(L';', m_at), m_source.size());
    const std::wstring text(m_source.substr(m_at, end - m_at));
    m_at = std::min(end + 1, m_source.size());
    return text;
  }
  /// What codes and control sequences of this length show as plain text.
  void putPlain(std::size_t length) {
    for (const wchar_t c : acdbPlainText(m_source.substr(m_at, length))) put(c);
    m_at = std::min(m_at + length, m_source.size());
  }
  bool percent() {
    --m_at;
    const AcString shown = acdbPlainText(m_source.substr(m_at, 3));
    if (shown.size() == 1 && m_source.size() - m_at >= 3) {
      putPlain(3);
      return true;
    }
    ++m_at;
    return false;
  }
  void lines(unsigned line, bool on) {
    change([&](Look& look) { look.lines = on ? look.lines | line : look.lines & ~line; });
  }
  void code() {
    if (m_at >= m_source.size()) return put(L'\\');
    const wchar_t kind = m_source[m_at++];
    switch (kind) {
      case L'P':
      case L'N':
      case L'X':
        return endParagraph();
      case L'~':
        return put(L'\u00A0');
      case L'\\':
      case L'{':
      case L'}':
        return put(kind);
      case L'L':
      case L'l':
        return lines(kUnderlined, kind == L'L');
      case L'O':
      case L'o':
        return lines(kOverlined, kind == L'O');
      case L'K':
      case L'k':
        return lines(kStruck, kind == L'K');
      case L'U':
        m_at -= 2;
        return putPlain(m_source.substr(m_at, 3) == L"\\U+" ? 7 : 2);
      case L'S':
        return stack();
      default:
        return look(kind);
    }
  }
  void look(wchar_t kind) {
    if (std::wstring_view(L"AaCcHhWwQqTtFfp").find(kind) == std::wstring_view::npos) {
      put(L'\\');
      return put(kind);
    }
    const std::wstring text = argument();
    const double value = number(text);
    const bool times = !text.empty() && (text.back() == L'x' || text.back() == L'X');
    change([&](Look& now) {
      if ((kind == L'H' || kind == L'h') && value > 0.0) now.height = times ? now.height * value : value;
      if ((kind == L'W' || kind == L'w') && value > 0.0) now.width = times ? now.width * value : value;
      if (kind == L'Q' || kind == L'q') now.slant = slantOf(value);
      if (kind == L'A' || kind == L'a') now.alignment = static_cast<int>(std::clamp(value, 0.0, 2.0));
      if (kind == L'C' || kind == L'c') now.color = colorOf(kind == L'c', value);
      if (kind == L'f' || kind == L'F')
        now.slant = text.find(L"|i1") == std::wstring::npos ? 0.0 : slantOf(kItalic);
    });
    if (kind == L'p') paragraph(text);
  }
  /// "\pxqc;": of what its code says, the alignment.
  void paragraph(const std::wstring& text) {
    const std::size_t q = text.find(L'q');
    const wchar_t way = q != std::wstring::npos && q + 1 < text.size() ? text[q + 1] : L'\0';
    if (way == L'l' || way == L'j' || way == L'd') m_across = 0;
    if (way == L'c') m_across = 1;
    if (way == L'r') m_across = 2;
  }
  /// 0 for what is no number.
  static double number(const std::wstring& text) {
    const std::string narrow(text.begin(), std::find_if(text.begin(), text.end(), [](wchar_t c) {
                               return !(c >= L'0' && c <= L'9') && c != L'.' && c != L'-' && c != L'+';
                             }));
    double value = 0.0;
    return dxfParseReal(narrow, value) && std::isfinite(value) ? value : 0.0;
  }
  static std::optional<AcCmColor> colorOf(bool mixed, double value) {
    AcCmColor color;
    const int number = static_cast<int>(std::clamp(value, 0.0, 16777215.0));
    if (mixed) color.setRGB(((number & 255) << 16) | (number & 0xFF00) | ((number >> 16) & 255));
    if (!mixed && (number < 1 || number > 255)) return std::nullopt;  // by layer and by block: the entity's
    if (!mixed) color.setColorIndex(number);
    return color;
  }
  /// "\Sabove^below;" with "/" for a bar; with "#" both stand on the line.
  void stack() {
    Stack made;
    AcString* part = &made.above;
    wchar_t between = 0;
    while (m_at < m_source.size() && m_source[m_at] != L';') {
      wchar_t c = m_source[m_at++];
      if (!between && (c == L'/' || c == L'^' || c == L'#')) {
        between = c;
        part = &made.below;
        if (c == L'^' && m_at < m_source.size() && m_source[m_at] == L' ') ++m_at;
        continue;
      }
      if (c == L'\\' && m_at < m_source.size()) c = m_source[m_at++];
      *part += c;
    }
    if (m_at < m_source.size()) ++m_at;
    made.bar = between == L'/';
    if (between == L'/' || between == L'^') {
      stacks.push_back(std::move(made));
      return put(kStacked, stacks.size() - 1);
    }
    for (const wchar_t c : made.above) put(c);
    if (between) put(L'/');
    for (const wchar_t c : made.below) put(c);
  }

  std::wstring_view m_source;
  std::size_t m_at = 0;
  int m_across;
  Look m_now;
  std::vector<Look> m_outer;
  std::vector<Letter> m_letters;
};

/// Breaks paragraphs into lines, and puts their letters at their places.
class Setter {
public:
  Setter(const Reader& text, const AcDbMTextFrame& frame, double height)
      : m_text(text), m_frame(frame), m_height(height) {}

  AcDbMTextLayout set() {
    for (const Paragraph& paragraph : m_text.paragraphs) breakParagraph(paragraph);
    for (const Line& line : m_lines) m_layout.width = std::max(m_layout.width, line.width);
    const double spacing = m_frame.spacing * kLinePitch;
    double base = 0.0;
    for (const Line& line : m_lines) {
      base -= m_layout.lines.empty() ? line.height : line.height * spacing;
      place(line, base);
    }
    // In one step where all lines are alike.
    const bool alike = m_text.looks.size() == 1 && m_text.stacks.empty();
    m_layout.height =
        alike ? m_height * (1 + static_cast<double>(m_lines.size() - 1) * kLinePitch * m_frame.spacing)
              : -base;
    return std::move(m_layout);
  }

private:
  using Letters = std::span<const Letter>;
  struct Line {
    Letters letters;
    double width = 0.0;
    double height = 0.0;
    int across = 0;
  };

  [[nodiscard]] double widthOf(std::wstring_view text, const Look& look) const {
    return acdbTextExtents(text, m_frame.style, look.height, 0.0).width * look.width;
  }
  [[nodiscard]] double widthOf(const Stack& stack, const Look& look) const {
    return std::max(widthOf(stack.above, look), widthOf(stack.below, look));
  }
  /// Hands over stretches of one look, and fractions: `work(text, look, stack)`.
  template <class Work>
  void forRuns(Letters letters, Work work) const {
    for (std::size_t at = 0; at < letters.size();) {
      const Letter& first = letters[at];
      std::wstring text;
      const bool stacked = first.c == kStacked && first.stack < m_text.stacks.size();
      if (stacked) ++at;
      for (; !stacked && at < letters.size() && letters[at].look == first.look && letters[at].c != kStacked;
           ++at)
        text += letters[at].c;
      if (!stacked && text.empty()) ++at;
      work(text, m_text.looks[first.look], stacked ? &m_text.stacks[first.stack] : nullptr);
    }
  }
  [[nodiscard]] double widthOf(Letters letters) const {
    double width = 0.0;
    forRuns(letters, [&](const std::wstring& text, const Look& look, const Stack* stack) {
      width += stack ? widthOf(*stack, look) : widthOf(text, look);
    });
    return width;
  }
  void addLine(Letters letters, double width, int across) {
    Line line{letters, width, 0.0, across};
    for (const Letter& letter : letters) {
      const Look& look = m_text.looks[letter.look];
      const double height = letter.c == kStacked ? lowOf(look) + kStack * look.height : look.height;
      line.height = std::max(line.height, height);
    }
    if (letters.empty()) line.height = m_height;
    m_lines.push_back(line);
  }
  /// Lines are broken at the last blank that lets them fit.
  void breakParagraph(const Paragraph& paragraph) {
    Letters rest = paragraph.letters;
    const double column = m_frame.column;
    const double slack = 1e-9 * column;  // sums of words differ from the width of a line by less
    while (column > 0) {
      std::size_t end = 0;    // of what fits
      double estimate = 0.0;  // up to there, word by word: a line is measured as a whole where this is close
      for (std::size_t next = blank(rest, 0); true; next = blank(rest, next + 1)) {
        const double further = estimate + widthOf(rest.subspan(end, next - end));
        const bool close = std::fabs(further - column) <= slack;
        const bool over = close ? widthOf(rest.first(next)) > column : further > column;
        if (end > 0 && over) break;
        end = next;
        estimate = further;
        if (next == rest.size()) break;
      }
      addLine(rest.first(end), widthOf(rest.first(end)), paragraph.across);
      if (end == rest.size()) return;
      rest = rest.subspan(end + 1);
    }
    addLine(rest, widthOf(rest), paragraph.across);
  }
  static std::size_t blank(Letters letters, std::size_t from) {
    while (from < letters.size() && letters[from].c != L' ') ++from;
    return std::min(from, letters.size());
  }
  void stroke(double x, double y, double width, double v, const Look& look) {
    const double shift = v * look.height * look.slant;
    m_layout.strokes.push_back(
        {{x + shift, y + v * look.height}, {x + width + shift, y + v * look.height}, look.color});
  }
  void run(const std::wstring& text, double x, double y, const Look& look) {
    m_layout.runs.push_back({text, {x, y}, look.height, look.width, look.slant, look.color});
  }
  /// The base line of what stands below in a fraction, above that of the line.
  [[nodiscard]] double lowOf(const Look& look) const {
    return (m_height - kStack * look.height) * look.alignment / 2;
  }
  void fraction(const Stack& stack, double x, double y, double width, const Look& look) {
    const double low = y + lowOf(look);
    run(stack.below, x + (width - widthOf(stack.below, look)) / 2, low, look);
    run(stack.above, x + (width - widthOf(stack.above, look)) / 2, low + kAbove * look.height, look);
    if (stack.bar) stroke(x, low, width, kBar, look);
  }
  void place(const Line& line, double y) {
    const double column = m_frame.column > 0 ? m_frame.column : m_layout.width;
    const double left = -(column - m_layout.width) * m_frame.across / 2;  // of the column
    double x = line.across == m_frame.across ? (m_layout.width - line.width) * line.across / 2
                                             : left + (column - line.width) * line.across / 2;
    AcString read;
    forRuns(line.letters, [&](const std::wstring& text, const Look& look, const Stack* stack) {
      const double width = stack ? widthOf(*stack, look) : widthOf(text, look);
      read += stack ? stack->above + L"/" + stack->below : text;
      if (stack)
        fraction(*stack, x, y, width, look);
      else if (width > 0.0)
        run(text, x, y, look);
      for (const auto& [which, v] :
           {std::pair(kUnderlined, kAcDbUnderline), {kOverlined, kAcDbOverline}, {kStruck, kAcDbStrike}})
        if ((look.lines & which) != 0) stroke(x, y, width, v, look);
      x += width;
    });
    std::replace(read.begin(), read.end(), L'\u00A0', L' ');
    m_layout.lines.push_back(std::move(read));
  }

  const Reader& m_text;
  const AcDbMTextFrame& m_frame;
  double m_height;
  std::vector<Line> m_lines;
  AcDbMTextLayout m_layout;
};

}  // namespace

AcDbMTextLayout acdbLayOutText(std::wstring_view contents, const AcDbMTextFrame& frame) {
  if (contents.empty()) return {};
  const double height = acdbTextExtents(L"X", frame.style, frame.height, 0.0).height;
  Reader reader(contents, height, frame.across);
  reader.read();
  if (reader.paragraphs.size() == 1 && reader.paragraphs.front().letters.empty()) return {};
  return Setter(reader, frame, height).set();
}
