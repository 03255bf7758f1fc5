#include "arx/lisp/lispunits.h"

#include "arx/ed/edvars.h"
#include "arx/ge/geangle.h"
#include "arx/lisp/lispinterp.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace base = veltora::base;

namespace aclisp {

double systemNumber(const wchar_t* name, double fallback) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM) return fallback;
  switch (acutRbKind(value.restype)) {
    case RbKind::kReal:
      return value.resval.rreal;
    case RbKind::kShort:
      return value.resval.rint;
    case RbKind::kLong:
      return value.resval.rlong;
    case RbKind::kText:
      acutDelString(value.resval.rstring);
      return fallback;
    default:
      return fallback;
  }
}

namespace {

constexpr int kMostDecimals = 15;

/// Of a variable that a file may give any value.
int systemInteger(const wchar_t* name, int fallback) {
  return static_cast<int>(std::clamp(systemNumber(name, fallback), -1e9, 1e9));
}

std::wstring decimal(double value, int precision) {
  return base::formater(std::wstring(L"%.*f"), precision, value);
}

/// DIMZIN 8 drops zeros at the end, 4 the zero in front.
std::wstring withoutZeros(std::wstring text, int zeros) {
  if ((zeros & 8) && text.find(L'.') != std::wstring::npos) {
    text.erase(text.find_last_not_of(L'0') + 1);
    if (text.back() == L'.') text.pop_back();
  }
  const std::size_t sign = text.starts_with(L'-') ? 1 : 0;
  if ((zeros & 4) && text.substr(sign).starts_with(L"0.")) text.erase(sign, 1);
  return text;
}

/// A number with a fraction of a power of two: 17 1/2.
std::wstring fraction(double value, int precision) {
  const double parts = std::ldexp(1.0, std::min(precision, 8));
  const double whole = std::floor(value);
  double numerator = std::round((value - whole) * parts);
  double denominator = parts;
  if (numerator == 0.0) return decimal(whole, 0);
  if (numerator == parts) return decimal(whole + 1.0, 0);
  while (std::fmod(numerator, 2.0) == 0.0) numerator /= 2.0, denominator /= 2.0;
  const std::wstring part = decimal(numerator, 0) + L"/" + decimal(denominator, 0);
  return whole == 0.0 ? part : decimal(whole, 0) + L" " + part;
}

/// Feet and inches; a unit of the drawing is an inch.
std::wstring feet(double value, int precision, bool fractional) {
  constexpr double kInches = 12.0;
  const double step = fractional ? std::ldexp(1.0, -std::min(precision, 8)) : std::pow(10.0, -precision);
  const double rounded = std::round(value / step) * step;
  const double whole = std::floor(rounded / kInches);
  const double inches = rounded - whole * kInches;
  const std::wstring rest = (fractional ? fraction(inches, precision) : decimal(inches, precision)) + L"\"";
  return whole == 0.0 ? rest : decimal(whole, 0) + L"'-" + rest;
}

std::wstring distanceText(double value, int mode, int precision, int zeros) {
  const std::wstring sign = value < 0.0 ? L"-" : L"";
  switch (mode) {
    case 1:
      return base::formater(std::wstring(L"%.*E"), precision, value);
    case 3:
      return sign + feet(std::fabs(value), precision, false);
    case 4:
      return sign + feet(std::fabs(value), precision, true);
    case 5:
      return sign + fraction(std::fabs(value), precision);
    default:
      return withoutZeros(decimal(value, precision), zeros);
  }
}

Value rtosFunction(Args& a) {
  const double value = a.number(0);
  const int mode = a.has(1) ? a.integer(1) : systemInteger(L"LUNITS", 2);
  const int precision = a.has(2) ? a.integer(2) : systemInteger(L"LUPREC", 4);
  if (mode < 1 || mode > 5) a.in.fail(L"mode d'unités incorrect : de 1 à 5");
  const int zeros = systemInteger(L"DIMZIN", 0);
  return Value::text(distanceText(value, mode, std::clamp(precision, 0, kMostDecimals), zeros));
}

/// Degrees, minutes and seconds as far as the precision asks: 0 degrees, 1-2 minutes, 3-4 seconds, then
/// decimals.
std::wstring sexagesimal(double radians, int precision) {
  double degrees = radians * 180.0 / std::numbers::pi;
  if (precision == 0) return decimal(degrees, 0) + L"d";
  const bool seconds = precision > 2;
  const int decimals = std::max(precision - 4, 0);
  const double unit = seconds ? 3600.0 : 60.0;
  const double step = std::pow(10.0, -decimals);
  double count = std::round(degrees * unit / step) * step;  // seconds or minutes, rounded once
  const double whole = std::floor(count / unit + 1e-12);
  count = std::max(count - whole * unit, 0.0);
  if (!seconds) return decimal(whole, 0) + L"d" + decimal(count, 0) + L"'";
  const double minutes = std::floor(count / 60.0 + 1e-12);
  const std::wstring rest = decimal(std::max(count - minutes * 60.0, 0.0), decimals);
  return decimal(whole, 0) + L"d" + decimal(minutes, 0) + L"'" + rest + L"\"";
}

/// Quadrant form from north or south: N 45d0'0" E.
std::wstring bearing(double angle, int precision) {
  const double quarter = std::numbers::pi / 2.0;
  const bool north = angle <= std::numbers::pi;
  const bool east = angle <= quarter || angle >= 3.0 * quarter;
  const double fromMeridian = std::fabs((north ? quarter : 3.0 * quarter) - angle);
  return std::wstring(north ? L"N " : L"S ") + sexagesimal(fromMeridian, precision) + (east ? L" E" : L" W");
}

std::wstring angleText(double angle, int unit, int precision, int zeros) {
  switch (unit) {
    case 1:
      return sexagesimal(angle, precision);
    case 2:
      return withoutZeros(decimal(angle * 200.0 / std::numbers::pi, precision), zeros) + L"g";
    case 3:
      return withoutZeros(decimal(angle, precision), zeros) + L"r";
    case 4:
      return bearing(angle, precision);
    default:
      return withoutZeros(decimal(angle * 180.0 / std::numbers::pi, precision), zeros);
  }
}

/// From the drawing's own zero direction and sense, 0 to one turn.
Value angtosFunction(Args& a) {
  const int unit = a.has(1) ? a.integer(1) : systemInteger(L"AUNITS", 0);
  const int precision = a.has(2) ? a.integer(2) : systemInteger(L"AUPREC", 0);
  if (unit < 0 || unit > 4) a.in.fail(L"unité d'angle incorrecte : de 0 à 4");
  double angle = a.number(0);
  if (!std::isfinite(angle)) a.in.fail(L"angle incorrect");
  if (unit != 4) angle -= systemNumber(L"ANGBASE", 0.0);
  if (unit != 4 && systemNumber(L"ANGDIR", 0.0) == 1.0) angle = -angle;
  angle = std::fmod(angle, kTurn);
  if (angle < 0.0) angle += kTurn;
  const int zeros = systemInteger(L"DIMZIN", 0) & 8;
  return Value::text(angleText(angle, unit, std::clamp(precision, 0, kMostDecimals), zeros));
}

/// A cursor over a text that reads one number after the other.
struct Scan {
  std::wstring text;
  std::size_t at = 0;

  bool number(double& value) {
    const std::size_t end = std::min(text.find_first_not_of(L"0123456789.eE", at), text.size());
    std::size_t last = end;
    // "1E-3" and "1E+3": the sign belongs to the exponent.
    if (last < text.size() && last > at && (text[last - 1] == L'e' || text[last - 1] == L'E'))
      last = std::min(text.find_first_not_of(L"0123456789", last + 1), text.size());
    std::wstring digits = text.substr(at, last - at);
    if (digits.ends_with(L'.')) digits += L'0';
    if (!base::lireReelExact(base::toUtf8(digits), value) || !std::isfinite(value)) return false;
    at = last;
    return true;
  }
  bool take(wchar_t c) {
    if (at >= text.size() || base::toLower(text[at]) != c) return false;
    ++at;
    return true;
  }
  [[nodiscard]] bool done() const { return at >= text.size(); }
};

bool readSign(Scan& scan) {
  const bool negative = scan.take(L'-');
  if (!negative) scan.take(L'+');
  return negative;
}

/// 17.5, 17 1/2, 1'-5.5", 1'5 1/2"
std::optional<double> distanceOf(const std::wstring& text) {
  Scan scan{base::trim(text)};
  const bool negative = readSign(scan);
  double total = 0.0;
  double value = 0.0;
  if (!scan.number(value)) return std::nullopt;
  if (scan.take(L'\'')) {
    total = 12.0 * value;
    value = 0.0;
    scan.take(L'-');
    if (!scan.done() && !scan.number(value)) return std::nullopt;
  }
  double denominator = 0.0;
  if (scan.take(L' ') || scan.take(L'-')) {
    double numerator = 0.0;
    if (!scan.number(numerator) || !scan.take(L'/') || !scan.number(denominator)) return std::nullopt;
    if (denominator == 0.0) return std::nullopt;
    value += numerator / denominator;
  } else if (scan.take(L'/')) {
    if (!scan.number(denominator) || denominator == 0.0) return std::nullopt;
    value /= denominator;
  }
  scan.take(L'"');
  total += value;
  if (!scan.done()) return std::nullopt;
  return negative ? -total : total;
}

Value distofFunction(Args& a) {
  if (a.has(1)) static_cast<void>(a.integer(1));
  const std::optional<double> value = distanceOf(a.text(0));
  return value ? Value::real(*value) : Value();
}

/// 45, 45d30'15", 50g, 0.78r; without a mark in the unit of the mode. In radians.
std::optional<double> angleOf(const std::wstring& text, int unit) {
  Scan scan{base::trim(text)};
  const bool negative = readSign(scan);
  double value = 0.0;
  double part = 0.0;
  if (!scan.number(value)) return std::nullopt;
  double size = unit == 2 ? std::numbers::pi / 200.0 : unit == 3 ? 1.0 : std::numbers::pi / 180.0;
  if (scan.take(L'g')) {
    size = std::numbers::pi / 200.0;
  } else if (scan.take(L'r')) {
    size = 1.0;
  } else if (scan.take(L'd') || scan.take(L'°')) {
    size = std::numbers::pi / 180.0;
    if (!scan.done()) {
      if (!scan.number(part) || !scan.take(L'\'')) return std::nullopt;
      value += part / 60.0;
    }
    if (!scan.done()) {
      if (!scan.number(part) || !scan.take(L'"')) return std::nullopt;
      value += part / 3600.0;
    }
  }
  if (!scan.done()) return std::nullopt;
  return (negative ? -value : value) * size;
}

Value angtofFunction(Args& a) {
  const int unit = a.has(1) ? a.integer(1) : systemInteger(L"AUNITS", 0);
  const std::optional<double> value = angleOf(a.text(0), unit);
  if (!value) return {};
  double angle = systemNumber(L"ANGDIR", 0.0) == 1.0 ? -*value : *value;
  angle = std::fmod(angle + systemNumber(L"ANGBASE", 0.0), kTurn);
  return Value::real(angle < 0.0 ? angle + kTurn : angle);
}

/// (cvunit value from to) for the units of lengths and angles that surveyors meet.
Value cvunitFunction(Args& a) {
  struct Unit {
    const wchar_t* names;
    int dimension;
    double size;
  };
  static constexpr Unit kUnits[] = {
      {L"millimeter,millimeters,mm", 1, 0.001},
      {L"centimeter,centimeters,cm", 1, 0.01},
      {L"meter,meters,m,metre,metres", 1, 1.0},
      {L"kilometer,kilometers,km", 1, 1000.0},
      {L"inch,inches,in", 1, 0.0254},
      {L"foot,feet,ft", 1, 0.3048},
      {L"mile,miles,mi", 1, 1609.344},
      {L"degree,degrees", 2, std::numbers::pi / 180.0},
      {L"grad,grads,grade,grades,gon", 2, std::numbers::pi / 200.0},
      {L"radian,radians", 2, 1.0},
  };
  const auto find = [](const std::wstring& name) -> const Unit* {
    const std::wstring wanted = L"," + base::toLower(name) + L",";
    for (const Unit& unit : kUnits)
      if ((L"," + std::wstring(unit.names) + L",").find(wanted) != std::wstring::npos) return &unit;
    return nullptr;
  };
  const Unit* const from = find(a.text(1));
  const Unit* const to = find(a.text(2));
  if (!from || !to || from->dimension != to->dimension) return {};
  const double factor = from->size / to->size;
  if (a[0].isNumber()) return Value::real(a.number(0) * factor);
  ListBuilder list;
  for (const Value& v : Elements(a.list(0))) {
    if (!v.isNumber()) a.in.failType(L"numberp:", v);
    list.add(Value::real(v.number() * factor));
  }
  return list.take();
}

constexpr Subr kUnitFunctions[] = {
    function(L"RTOS", rtosFunction, 1, 3),     function(L"ANGTOS", angtosFunction, 1, 3),
    function(L"DISTOF", distofFunction, 1, 2), function(L"ANGTOF", angtofFunction, 1, 2),
    function(L"CVUNIT", cvunitFunction, 3, 3),
};

}  // namespace

std::span<const Subr> unitFunctions() { return kUnitFunctions; }

}  // namespace aclisp
