#include "arx/ed/edprompt.h"

#include "arx/ed/edports.h"
#include "arx/ed/edvalue.h"
#include "base/numbers.h"
#include "base/text.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace base = veltora::base;

namespace {

constexpr const wchar_t* kCancel = L"*Annuler*";

std::vector<std::wstring> split(const std::wstring& text, wchar_t separator) {
  std::vector<std::wstring> parts(1);
  for (const wchar_t c : text) {
    if (c == separator)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

std::optional<AcGeVector3d> readPolar(const std::wstring& text) {
  const std::vector<std::wstring> parts = split(text, L'<');
  if (parts.size() != 2) return std::nullopt;
  const std::optional<double> distance = acedReadNumber(parts[0]);
  const std::optional<double> angle = acedReadAngle(parts[1]);
  if (!distance || !angle) return std::nullopt;
  return AcGeVector3d{*distance * std::cos(*angle), *distance * std::sin(*angle), 0.0};
}

std::optional<AcGeVector3d> readCoordinates(const std::wstring& text) {
  const std::vector<std::wstring> parts = split(text, L',');
  if (parts.size() != 2 && parts.size() != 3) return std::nullopt;
  double values[3] = {0, 0, 0};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<double> value = acedReadNumber(parts[i]);
    if (!value) return std::nullopt;
    values[i] = *value;
  }
  return AcGeVector3d{values[0], values[1], values[2]};
}

}  // namespace

AcEdPromptState& acedPromptState() {
  static auto* const only = new AcEdPromptState;
  return *only;
}

std::optional<double> acedReadNumber(const std::wstring& text) {
  double value = 0.0;
  const std::wstring bare = base::trim(text);
  const std::size_t sign = bare.starts_with(L'+') ? 1 : 0;
  if (!base::lireReelExact(base::toUtf8(bare.substr(sign)), value) || !std::isfinite(value))
    return std::nullopt;
  if (sign && bare.size() > 1 && bare[1] == L'-') return std::nullopt;
  return value;
}

std::optional<double> acedReadAngle(const std::wstring& text) {
  std::wstring number = base::trim(text);
  double unit = std::numbers::pi / 180.0;
  const wchar_t mark = number.empty() ? L'\0' : base::toLower(number.back());
  if (mark == L'g') unit = std::numbers::pi / 200.0;
  if (mark == L'r') unit = 1.0;
  if (mark == L'g' || mark == L'r' || mark == L'd' || mark == L'°') number.pop_back();
  const std::optional<double> value = acedReadNumber(number);
  if (!value) return std::nullopt;
  return *value * unit;
}

std::optional<AcGePoint3d> acedReadPoint(const std::wstring& text, const AcGePoint3d& reference) {
  const std::wstring bare = base::trim(text);
  if (bare == L"@") return reference;
  const bool relative = bare.starts_with(L'@');
  const std::wstring rest = relative ? bare.substr(1) : bare;
  const auto vector = rest.find(L'<') != std::wstring::npos ? readPolar(rest) : readCoordinates(rest);
  if (!vector) return std::nullopt;
  return (relative ? reference : AcGePoint3d::kOrigin) + *vector;
}

AcGePoint3d acedLastPoint() { return acedPromptState().lastPoint; }

void acedForgetInitGet() { acedInitGet(0, nullptr); }

AcEdPrompt::AcEdPrompt(Kind kind, const ACHAR* prompt, const ads_point from)
    : m_text(prompt ? prompt : L""), m_bits(acedPromptState().bits), m_keywords(acedPromptState().keywords) {
  acedForgetInitGet();
  m_request.kind = kind;
  m_request.drag = std::exchange(acedPromptState().drag, nullptr);
  for (const std::wstring& word : m_keywords.words()) m_request.keywords.push_back(base::toUtf8(word));
  if (from) m_request.from = {from[0], from[1], from[2]};
}

std::wstring AcEdPrompt::objection(double value) const {
  if ((m_bits & RSG_NOZERO) && value == 0.0) return L"La valeur ne peut pas être nulle.";
  if ((m_bits & RSG_NONEG) && value < 0.0) return L"La valeur ne peut pas être négative.";
  return {};
}

int AcEdPrompt::ask(const TextReader& reader) {
  for (;;) {
    const std::optional<std::wstring> line = acedReadLine(m_text, m_request);
    if (!line || base::compareNoCase(*line, kCancel) == 0) return RTCAN;
    if (const std::optional<int> result = consider(*line, reader)) return *result;
  }
}

std::optional<int> AcEdPrompt::empty() const {
  if ((m_bits & RSG_OTHER) && (m_bits & RSG_NONULL)) {
    acedPromptState().input = L"";
    return RTKWORD;
  }
  if (!(m_bits & RSG_NONULL)) return RTNONE;
  acedRefuse(L"Une réponse est attendue.");
  return std::nullopt;
}

std::optional<int> AcEdPrompt::consider(const std::wstring& line, const TextReader& reader) {
  if (line.starts_with(L'(')) return considerExpression(line, reader);
  return considerText(line, reader);
}

std::optional<int> AcEdPrompt::considerText(const std::wstring& line, const TextReader& reader) {
  if (line.empty()) return empty();
  if (const std::optional<std::wstring> keyword = m_keywords.match(line)) {
    acedPromptState().input = keyword;
    return RTKWORD;
  }
  const Verdict verdict = reader(line);
  if (verdict.taken) return verdict.code;
  if (m_bits & RSG_OTHER) {
    acedPromptState().input = line;
    return RTKWORD;
  }
  if (!verdict.refusal.empty()) acedRefuse(verdict.refusal);
  return std::nullopt;
}

std::optional<int> AcEdPrompt::considerExpression(const std::wstring& line, const TextReader& reader) {
  if (!acedPorts().evaluate) {
    acedRefuse(L"Les expressions ne sont pas disponibles.");
    return std::nullopt;
  }
  // The expression may ask questions of its own, with bits of their own.
  const AcEdRbHolder value(acedPorts().evaluate(line));
  acedForgetInitGet();
  if (!value) return std::nullopt;
  if (m_value) {
    if (const std::optional<Verdict> verdict = m_value(value.get())) {
      if (verdict->taken) return verdict->code;
      acedRefuse(verdict->refusal);
      return std::nullopt;
    }
  }
  if (const std::optional<std::wstring> text = acedAnswerText(value.get(), m_radians))
    return considerText(*text, reader);
  acedRefuse(L"La valeur de l'expression ne convient pas.");
  return std::nullopt;
}
