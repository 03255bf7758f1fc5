#include "arx/db/dbtextsize.h"

#include "arx/db/dbsymrecords.h"

#include <cmath>
#include <cwctype>

namespace {

constexpr double kAdvance = 0.9;  // of the height: from one character to the next
constexpr double kGap = 0.2;      // of the height: what the last character does not need of it
constexpr double kDescent = 0.3;  // of the height: what letters reach below the base line

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Length of a control sequence "%%x" at `at` and how many characters it shows; length 0 when there is none.
struct Control {
  std::size_t length = 0;
  std::size_t shown = 0;
};

Control controlAt(std::wstring_view text, std::size_t at) {
  if (at + 2 >= text.size() || text[at] != L'%' || text[at + 1] != L'%') return {};
  const wchar_t kind = text[at + 2];
  switch (kind) {
    case L'u':
    case L'U':
    case L'o':
    case L'O':
    case L'k':
    case L'K':
      return {3, 0};
    case L'd':
    case L'D':
    case L'p':
    case L'P':
    case L'c':
    case L'C':
    case L'%':
      return {3, 1};
    default:
      break;
  }
  std::size_t digits = 0;
  while (digits < 3 && at + 2 + digits < text.size() && isDigit(text[at + 2 + digits])) ++digits;
  return digits > 0 ? Control{2 + digits, 1} : Control{};
}

bool descends(wchar_t c) { return std::wstring_view(L"gjpqyQ,;ç").find(c) != std::wstring_view::npos; }

}  // namespace

AcDbTextSize acdbTextExtents(std::wstring_view text, double height, double widthFactor) {
  AcDbTextSize size;
  if (!(height > 0) || !std::isfinite(height)) return size;
  std::size_t shown = 0;
  bool low = false;
  for (std::size_t at = 0; at < text.size();) {
    const Control control = controlAt(text, at);
    shown += control.length ? control.shown : 1;
    low = low || (!control.length && descends(text[at]));
    at += control.length ? control.length : 1;
  }
  if (shown == 0) return size;
  const double factor = std::isfinite(widthFactor) && widthFactor != 0 ? std::fabs(widthFactor) : 1.0;
  size.width = (static_cast<double>(shown) * kAdvance - kGap) * height * factor;
  size.height = height;
  size.descent = low ? kDescent * height : 0.0;
  return size;
}

AcDbTextSize acdbTextExtents(std::wstring_view text, AcDbObjectId style, double height, double widthFactor) {
  const AcDbTextStyleTableRecord* record =
      style.isValid() ? AcDbTextStyleTableRecord::cast(style.stub()->object) : nullptr;
  if (record && height == 0) height = record->textSize();
  if (record && widthFactor == 0) widthFactor = record->xScale();
  return acdbTextExtents(text, height, widthFactor);
}
