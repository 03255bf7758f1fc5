#include "base/numbers.h"

#include "base/format.h"
#include "base/text.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace veltora::base {
namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view skipSpaces(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && isSpace(text[i])) ++i;
  return text.substr(i);
}

/// ASCII image of a wide text; any other character becomes one that ends a number.
std::string asciiOf(std::wstring_view text) {
  std::string result;
  result.reserve(text.size());
  for (const wchar_t c : text) result.push_back(c > 0 && c < 0x80 ? static_cast<char>(c) : '?');
  return result;
}

/// `from_chars` reports overflow and underflow alike; the exponent's sign tells them apart.
double outOfRange(std::string_view digits) {
  const std::size_t exponent = digits.find_first_of("eE");
  if (exponent != std::string_view::npos) {
    return exponent + 1 < digits.size() && digits[exponent + 1] == '-'
               ? 0.0
               : std::numeric_limits<double>::infinity();
  }
  return digits.front() == '0' || digits.front() == '.' ? 0.0 : std::numeric_limits<double>::infinity();
}

}  // namespace

double lireReel(std::string_view text) {
  text = skipSpaces(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  const bool numeric =
      !text.empty() && (isDigit(text[0]) || (text[0] == '.' && text.size() > 1 && isDigit(text[1])));
  if (!numeric) return 0.0;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    value = outOfRange(text.substr(0, static_cast<std::size_t>(end - text.data())));
  }
  return negative ? -value : value;
}

double lireReel(std::wstring_view text) { return lireReel(asciiOf(text)); }

double lireReelC(const char* text) {
  static const locale_t c = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return ::strtod_l(text, nullptr, c);
}

int lireEntier(std::string_view text) {
  text = skipSpaces(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  long long value = 0;
  for (const char c : text) {
    if (!isDigit(c)) break;
    value = value * 10 + (c - '0');
    if (value > std::numeric_limits<int>::max()) {
      return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
  }
  return static_cast<int>(negative ? -value : value);
}

int lireEntier(std::wstring_view text) { return lireEntier(asciiOf(text)); }

bool lireReelExact(std::string_view text, double& value) {
  std::size_t digits = !text.empty() && (text.front() == '+' || text.front() == '-') ? 1 : 0;
  if (digits < text.size() && text[digits] == '.') ++digits;
  if (digits >= text.size() || !isDigit(text[digits])) return false;  // "inf", "nan", a second sign
  if (text.front() == '+') text.remove_prefix(1);
  double read = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  value = read;
  return true;
}

std::string ecrireReel(double value) {
  char buffer[40];
  const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string text(buffer, error == std::errc() ? end : buffer);
  if (std::isfinite(value) && text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

void ajouterFixe(std::string& text, double value, int decimals) {
  constexpr double kPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  // Below this the product is off by a thousandth at most: nearer to a half than that nobody can tell from it
  // which way the number is to be rounded, and printf is asked.
  constexpr double kLargest = 8e12;
  constexpr double kMargin = 0.002;
  const double scaled = value * kPowers[decimals];
  const double whole = std::floor(scaled);
  if (std::signbit(value) || !(scaled < kLargest) || std::fabs(scaled - whole - 0.5) < kMargin) {
    text += formater("%.*f", decimals, value);
    return;
  }
  const auto digits = static_cast<std::uint64_t>(whole) + (scaled - whole > 0.5 ? 1 : 0);
  char buffer[40] = {'0', '0', '0', '0', '0',
                     '0', '0', '0', '0', '0'};  // at least one digit more than decimals
  char* const start = buffer + 10;
  char* const end = std::to_chars(start, buffer + sizeof buffer, digits).ptr;
  const auto missing = decimals + 1 - (end - start);
  char* const first = missing > 0 ? start - missing : start;
  text.append(first, end - decimals);
  if (decimals > 0) text.append(1, '.').append(end - decimals, end);
}

}  // namespace veltora::base
