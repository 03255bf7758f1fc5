#include "arx/db/dbtextsize.h"

#include "arx/db/dbsymrecords.h"
#include "base/text.h"

#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

namespace {

constexpr double kDescent = 0.3;  // of the height: what letters reach below the base line

// From one character to the next, in thousandths of the height of a capital: advance widths of DejaVu
// Sans 2.37 (the font's table hmtx) over its capital H (1493 units).
constexpr std::uint16_t kAscii[] = {  // from the space on
    436,  550,  631, 1149, 873,  1303, 1070, 377,  535,  535, 686, 1149, 436,  495,  436,  462,
    873,  873,  873, 873,  873,  873,  873,  873,  873,  873, 462, 462,  1149, 1149, 1149, 728,
    1372, 938,  941, 958,  1056, 867,  789,  1063, 1031, 405, 405, 900,  764,  1184, 1026, 1080,
    827,  1080, 953, 871,  838,  1004, 938,  1356, 940,  838, 940, 535,  462,  535,  1149, 686,
    686,  841,  871, 754,  871,  844,  483,  871,  869,  381, 381, 794,  381,  1336, 869,  839,
    871,  871,  564, 715,  538,  869,  812,  1122, 812,  812, 720, 873,  462,  873,  1149};
constexpr std::uint16_t kLatin1[] = {  // from U+00A0 on
    436,  550,  873,  873,  873,  873,  462,  686,  686,  1372, 646,  839,  1149, 495,  1372, 686,
    686,  1149, 550,  550,  686,  873,  873,  436,  686,  550,  646,  839,  1330, 1330, 1330, 728,
    938,  938,  938,  938,  938,  938,  1336, 958,  867,  867,  867,  867,  405,  405,  405,  405,
    1063, 1026, 1080, 1080, 1080, 1080, 1080, 1149, 1080, 1004, 1004, 1004, 1004, 838,  830,  864,
    841,  841,  841,  841,  841,  841,  1347, 754,  844,  844,  844,  844,  381,  381,  381,  381,
    839,  869,  839,  839,  839,  839,  839,  1149, 839,  869,  869,  869,  869,  812,  871,  812};
static_assert(std::size(kAscii) == 95 && std::size(kLatin1) == 96);
constexpr std::pair<wchar_t, std::uint16_t> kFurther[] = {
    {L'Œ', 1468}, {L'œ', 1403}, {L'Ÿ', 838}, {L'€', 873}, {L'–', 686}, {L'—', 1372},
    {L'‘', 436},  {L'’', 436},  {L'“', 711}, {L'”', 711}, {L'…', 1372}};
constexpr std::uint16_t kOther = 1000;

std::uint16_t advance(wchar_t c) {
  const auto code = static_cast<std::uint32_t>(c);
  if (code >= 0x20 && code < 0x7F) return kAscii[code - 0x20];
  if (code >= 0xA0 && code <= 0xFF) return kLatin1[code - 0xA0];
  for (const auto& [further, width] : kFurther)
    if (further == c) return width;
  return kOther;
}

// Length of a control sequence "%%x" that may begin with the % at `at`, and the character that it shows, 0
// for none; length 0 when there is no sequence.
struct Control {
  std::size_t length = 0;
  wchar_t shown = 0;
};

Control controlAt(std::wstring_view text, std::size_t at) {
  if (at + 2 >= text.size() || text[at + 1] != L'%') return {};
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
      return {3, L'°'};
    case L'p':
    case L'P':
      return {3, L'±'};
    case L'c':
    case L'C':
      return {3, L'Ø'};
    case L'%':
      return {3, L'%'};
    default:
      break;
  }
  std::size_t digits = 0;
  unsigned int code = 0;
  for (; digits < 3 && at + 2 + digits < text.size() && veltora::base::isDigit(text[at + 2 + digits]);
       ++digits)
    code = code * 10 + static_cast<unsigned int>(text[at + 2 + digits] - L'0');
  return digits > 0 ? Control{2 + digits, code ? static_cast<wchar_t>(code) : L' '} : Control{};
}

bool descends(wchar_t c) {
  switch (c) {
    case L'g':
    case L'j':
    case L'p':
    case L'q':
    case L'y':
    case L'Q':
    case L',':
    case L';':
    case L'ç':
      return true;
    default:
      return false;
  }
}

}  // namespace

AcDbTextSize acdbTextExtents(std::wstring_view text, double height, double widthFactor) {
  AcDbTextSize size;
  if (!(height > 0) || !std::isfinite(height)) return size;
  std::uint64_t thousandths = 0;
  bool low = false;
  for (std::size_t at = 0; at < text.size();) {
    const Control control = text[at] == L'%' ? controlAt(text, at) : Control{};
    const wchar_t shown = control.length ? control.shown : text[at];
    if (shown) thousandths += advance(shown);
    low = low || (!control.length && descends(text[at]));
    at += control.length ? control.length : 1;
  }
  if (thousandths == 0) return size;
  const double factor = std::isfinite(widthFactor) && widthFactor != 0 ? std::fabs(widthFactor) : 1.0;
  size.width = static_cast<double>(thousandths) / 1000.0 * height * factor;
  size.height = height;
  size.descent = low ? kDescent * height : 0.0;
  return size;
}

std::wstring acdbShownText(std::wstring_view text) {
  std::wstring shown;
  for (std::size_t at = 0; at < text.size();) {
    const Control control = text[at] == L'%' ? controlAt(text, at) : Control{};
    if (control.length == 0) shown += text[at];
    if (control.shown) shown += control.shown;
    at += control.length ? control.length : 1;
  }
  return shown;
}

std::vector<AcDbTextStroke> acdbTextStrokes(std::wstring_view text) {
  std::vector<AcDbTextStroke> strokes;
  if (text.find(L"%%") == std::wstring_view::npos) return strokes;
  struct Switch {
    wchar_t code;
    double v;
    bool on = false;
    double from = 0.0;
  };
  Switch switches[] = {{L'u', kAcDbUnderline}, {L'o', kAcDbOverline}, {L'k', kAcDbStrike}};
  std::uint64_t thousandths = 0;
  const auto toggle = [&](Switch& one) {
    const double at = static_cast<double>(thousandths) / 1000.0;
    if (one.on && at > one.from) strokes.push_back({one.from, at, one.v});
    one.on = !one.on;
    one.from = at;
  };
  for (std::size_t at = 0; at < text.size();) {
    const Control control = text[at] == L'%' ? controlAt(text, at) : Control{};
    const wchar_t shown = control.length ? control.shown : text[at];
    if (shown) thousandths += advance(shown);
    for (Switch& one : switches)
      if (control.length && !control.shown && (text[at + 2] | 0x20) == one.code) toggle(one);
    at += control.length ? control.length : 1;
  }
  for (Switch& one : switches)
    if (one.on) toggle(one);
  return strokes;
}

AcDbTextSize acdbTextExtents(std::wstring_view text, AcDbObjectId style, double height, double widthFactor) {
  const bool asked = height == 0 || widthFactor == 0;
  const AcDbTextStyleTableRecord* record =
      asked && style.isValid() ? AcDbTextStyleTableRecord::cast(style.stub()->object) : nullptr;
  if (record && height == 0) height = record->textSize();
  if (record && widthFactor == 0) widthFactor = record->xScale();
  return acdbTextExtents(text, height, widthFactor);
}
