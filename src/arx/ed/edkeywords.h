#pragma once

#include <optional>
#include <string>
#include <vector>

/// Keywords of one prompt, as given to `acedInitGet`.
class AcEdKeywords {
public:
  AcEdKeywords() = default;
  explicit AcEdKeywords(const std::wstring& list);
  [[nodiscard]] bool empty() const { return m_words.empty(); }
  /// The keyword that an answer means, in the spelling of the list. Behind an underscore only the global
  /// words count, when there are any.
  [[nodiscard]] std::optional<std::wstring> match(const std::wstring& answer) const;
  /// The words that a user is offered, without the global ones.
  [[nodiscard]] std::vector<std::wstring> words() const;
  /// "Oui/Non", for messages.
  [[nodiscard]] std::wstring text() const;

private:
  struct Word {
    std::wstring word;
    std::wstring abbreviation;  // upper case
    std::size_t least = 0;      // shortest beginning of the word that counts
    std::wstring result;
  };
  static Word parse(const std::wstring& token);
  std::vector<Word> m_words;
  std::size_t m_globalFrom = 0;
};
