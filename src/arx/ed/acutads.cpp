#include "arx/ed/acutads.h"

#include "arx/ed/edports.h"
#include "base/text.h"

#include <string_view>
#include <vector>

int acedPrompt(const std::wstring& text) {
  if (acedPorts().sink) acedPorts().sink->print(veltora::base::toUtf8(text));
  return RTNORM;
}

int acedPrompt(const ACHAR* text) { return text ? acedPrompt(std::wstring(text)) : RTERROR; }

int acedAlert(const ACHAR* text) {
  acedMessageBox(text ? text : L"", L"", AcEdButtons::kOk);
  return RTNORM;
}

// ---- Patterns

namespace {

using View = std::wstring_view;

bool isLetter(wchar_t c) { return veltora::base::toLower(c) != c || veltora::base::toUpper(c) != c; }

/// One element of a pattern: a run, or a test of one character.
struct Element {
  enum Kind { kRun, kAny, kDigit, kLetter, kOther, kSet, kNotSet, kExact } kind = kExact;
  wchar_t exact = 0;
  View set = {};

  [[nodiscard]] bool fits(wchar_t c) const {
    switch (kind) {
      case kRun:
      case kAny:
        return true;
      case kDigit:
        return veltora::base::isDigit(c);
      case kLetter:
        return isLetter(c);
      case kOther:
        return !veltora::base::isDigit(c) && !isLetter(c);
      case kSet:
        return inSet(c);
      case kNotSet:
        return !inSet(c);
      case kExact:
        break;
    }
    return c == exact;
  }

private:
  [[nodiscard]] bool inSet(wchar_t c) const {
    for (std::size_t i = 0; i < set.size(); ++i) {
      if (i + 2 < set.size() && set[i + 1] == L'-') {
        if (c >= set[i] && c <= set[i + 2]) return true;
        i += 2;
      } else if (c == set[i]) {
        return true;
      }
    }
    return false;
  }
};

/// Takes the bracketed set that begins at `at`; an open bracket without an end stands for itself.
bool takeSet(View pattern, std::size_t& at, Element& element) {
  const std::size_t end = pattern.find(L']', at + 2);
  if (end == View::npos) return false;
  const bool negated = pattern[at + 1] == L'~' && end > at + 2;
  const std::size_t begin = at + (negated ? 2 : 1);
  element.kind = negated ? Element::kNotSet : Element::kSet;
  element.set = pattern.substr(begin, end - begin);
  at = end;
  return true;
}

std::vector<Element> elementsOf(View pattern) {
  static constexpr View signs = L"*?#@.";
  static constexpr Element::Kind kinds[] = {Element::kRun, Element::kAny, Element::kDigit, Element::kLetter,
                                            Element::kOther};
  std::vector<Element> elements;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    Element element;
    const std::size_t sign = signs.find(pattern[i]);
    if (sign != View::npos) {
      element.kind = kinds[sign];
    } else if (pattern[i] == L'[' && takeSet(pattern, i, element)) {
    } else {
      if (pattern[i] == L'`' && i + 1 < pattern.size()) ++i;
      element.exact = pattern[i];
    }
    elements.push_back(element);
  }
  return elements;
}

/// Greedy with one fallback point: linear for each run, however many runs there are.
bool matchOne(View text, View pattern) {
  const bool negated = !pattern.empty() && pattern[0] == L'~';
  const std::vector<Element> elements = elementsOf(negated ? pattern.substr(1) : pattern);
  std::size_t t = 0;
  std::size_t e = 0;
  std::size_t runAt = elements.size();
  std::size_t resume = 0;
  while (t < text.size()) {
    if (e < elements.size() && elements[e].kind == Element::kRun) {
      runAt = e++;
      resume = t;
    } else if (e < elements.size() && elements[e].fits(text[t])) {
      ++e, ++t;
    } else if (runAt < elements.size()) {
      e = runAt + 1;
      t = ++resume;
    } else {
      return negated;
    }
  }
  while (e < elements.size() && elements[e].kind == Element::kRun) ++e;
  return (e == elements.size()) != negated;
}

/// End of the alternative that begins at `at`: the next comma that is neither escaped nor in brackets.
std::size_t alternativeEnd(View pattern, std::size_t at) {
  for (; at < pattern.size(); ++at) {
    if (pattern[at] == L'`') {
      ++at;
    } else if (pattern[at] == L'[') {
      const std::size_t end = pattern.find(L']', at + 2);
      if (end != View::npos) at = end;
    } else if (pattern[at] == L',') {
      return at;
    }
  }
  return pattern.size();
}

}  // namespace

int acutWcMatch(const ACHAR* text, const ACHAR* pattern) {
  if (!text || !pattern) return RTERROR;
  const View whole = pattern;
  for (std::size_t at = 0; at <= whole.size();) {
    const std::size_t end = alternativeEnd(whole, at);
    if (matchOne(text, whole.substr(at, end - at))) return RTNORM;
    at = end + 1;
  }
  return RTERROR;
}
