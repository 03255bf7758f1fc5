#include "ui/fields.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "ui/driver.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <utility>

namespace veltora::ui {
namespace {

/// Cut towards zero, kept within the range of `int`; not-a-number gives 0.
int toInt(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<int>(std::clamp(value, static_cast<double>(INT_MIN), static_cast<double>(INT_MAX)));
}

/// What was typed in place of a number.
std::wstring describe(const std::wstring& typed) {
  if (base::trim(typed).empty()) return {};
  const wchar_t* comma = typed.find(L',') == std::wstring::npos ? L"" : L", le signe décimal est le point";
  return L"« " + typed + L" » n'est pas un nombre" + comma + L". ";
}

}  // namespace

Label::Label(Container* parent, std::wstring caption, std::wstring text)
    : Control(parent, std::move(caption)), m_text(std::move(text)) {}

void Label::setText(const std::wstring& text) {
  m_text = text;
  touch();
}

TextField::TextField(Container* parent, std::wstring caption, std::wstring text)
    : Control(parent, std::move(caption)), m_text(std::move(text)) {}

void TextField::setText(const std::wstring& text) {
  m_text = text;
  touch();
}

void TextField::setReadOnly(bool readOnly) {
  m_readOnly = readOnly;
  touch();
}

void TextField::setMultiline(bool multiline) {
  m_multiline = multiline;
  touch();
}

bool TextField::userType(const std::wstring& text) {
  if (m_readOnly || !userEnter()) return false;
  setText(text);
  call(onChange);
  return true;
}

NumberField::NumberField(Container* parent, std::wstring caption, double value, std::wstring format,
                         Type type)
    : TextField(parent, std::move(caption)), m_type(type), m_format(std::move(format)) {
  setValue(value);
}

double NumberField::value() const { return base::lireReel(text()); }

int NumberField::intValue() const { return toInt(value()); }

void NumberField::setValue(double value) {
  setText(m_type == Type::Integer ? base::formater(m_format, toInt(value)) : base::formater(m_format, value));
}

void NumberField::setRange(double minimum, double maximum) {
  m_minimum = minimum;
  m_maximum = maximum;
  touch();
}

void NumberField::setStepped(bool stepped) {
  m_stepped = stepped;
  touch();
}

bool NumberField::userStep(int steps) {
  const double wanted = std::clamp(std::trunc(value()) + steps, m_minimum, m_maximum);
  return userType(m_type == Type::Integer ? base::formater(m_format, toInt(wanted))
                                          : base::formater(m_format, wanted));
}

bool NumberField::valid() const { return fault().empty(); }

std::wstring NumberField::fault() const {
  const bool integer = m_type == Type::Integer;
  const std::wstring what = integer ? L"Entrez un nombre entier" : L"Entrez un nombre";
  const std::wstring typed = base::trim(text());
  double number = 0.0;
  const bool numeric = base::lireReelExact(base::toUtf8(typed), number) && std::isfinite(number);
  if (!numeric || (integer && typed.find_first_of(L".eE") != std::wstring::npos)) return what + L".";
  const double low = integer ? std::max(m_minimum, static_cast<double>(INT_MIN)) : m_minimum;
  const double high = integer ? std::min(m_maximum, static_cast<double>(INT_MAX)) : m_maximum;
  if (number >= low && number <= high) return {};
  if (std::isinf(high)) return base::formater(what + L" supérieur ou égal à %.15g.", low);
  if (std::isinf(low)) return base::formater(what + L" inférieur ou égal à %.15g.", high);
  return base::formater(what + L" compris entre %.15g et %.15g.", low, high);
}

bool NumberField::validate() {
  const std::wstring text = fault();
  if (text.empty()) return true;
  double number = 0.0;
  const bool numeric = base::lireReelExact(base::toUtf8(base::trim(this->text())), number);
  const std::wstring name = readableText(caption()).empty() ? kindName() : readableText(caption());
  messageBox(numeric ? text : L"« " + name + L" » : " + describe(this->text()) + text,
             dialog() ? dialog()->title() : std::wstring());
  setFocus();
  return false;
}

}  // namespace veltora::ui
