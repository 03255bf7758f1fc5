#include "arx/ed/edkeywords.h"

#include "base/text.h"

#include <sstream>

namespace base = veltora::base;

namespace {
bool isCapital(wchar_t c) { return base::toLower(c) != c || (c >= L'0' && c <= L'9'); }

std::vector<std::wstring> tokensOf(const std::wstring& list) {
  std::vector<std::wstring> tokens;
  std::wistringstream stream(list);
  for (std::wstring token; stream >> token;) tokens.push_back(token);
  return tokens;
}
}  // namespace

AcEdKeywords::Word AcEdKeywords::parse(const std::wstring& token) {
  Word word;
  const std::size_t comma = token.find(L',');
  word.word = token.substr(0, comma);
  word.result = word.word;
  word.least = word.word.size();
  if (comma != std::wstring::npos) {
    word.abbreviation = base::toUpper(token.substr(comma + 1));
    return word;
  }
  for (std::size_t i = 0; i < word.word.size(); ++i) {
    if (!isCapital(word.word[i])) continue;
    word.abbreviation += word.word[i];
    word.least = i + 1;
  }
  return word;
}

/// "Oui Non _Yes No": the words behind the underscore are what the program gets for those in front, and are
/// understood too.
AcEdKeywords::AcEdKeywords(const std::wstring& list) {
  std::vector<Word> local;
  std::vector<Word> global;
  bool isGlobal = false;
  for (std::wstring token : tokensOf(list)) {
    if (token[0] == L'_') {
      isGlobal = true;
      token.erase(0, 1);
    }
    if (!token.empty()) (isGlobal ? global : local).push_back(parse(token));
  }
  for (std::size_t i = 0; i < local.size() && i < global.size(); ++i) local[i].result = global[i].word;
  m_globalFrom = global.empty() ? 0 : local.size();
  m_words = std::move(local);
  m_words.insert(m_words.end(), global.begin(), global.end());
}

std::optional<std::wstring> AcEdKeywords::match(const std::wstring& answer) const {
  const std::wstring typed = base::toUpper(base::trimLeft(answer, L"_"));
  if (typed.empty()) return std::nullopt;
  const std::size_t first = answer.starts_with(L'_') ? m_globalFrom : 0;
  for (std::size_t i = first; i < m_words.size(); ++i) {
    const Word& word = m_words[i];
    const bool beginning = typed.size() >= word.least && base::toUpper(word.word).starts_with(typed);
    if (beginning || typed == word.abbreviation) return word.result;
  }
  return std::nullopt;
}

std::vector<std::wstring> AcEdKeywords::words() const {
  std::vector<std::wstring> words;
  for (const Word& word : m_words) words.push_back(word.word);
  if (m_globalFrom > 0) words.resize(m_globalFrom);
  return words;
}

std::wstring AcEdKeywords::text() const {
  std::wstring text;
  for (const Word& word : m_words) text += (text.empty() ? L"" : L"/") + word.word;
  return text;
}
