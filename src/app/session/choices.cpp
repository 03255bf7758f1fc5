#include "app/session/choices.h"

#include "base/format.h"

#include <algorithm>
#include <charconv>

namespace veltora::app {

CLI::Validator between(int least, int largest) {
  const auto check = [=](const std::string& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size() && value >= least && value <= largest)
      return std::string();
    return base::formater("« %s » n'est pas un nombre entier de %d à %d", text, least, largest);
  };
  return {check, ""};
}

CLI::Validator oneOf(std::vector<std::string> words) {
  const auto check = [words = std::move(words)](const std::string& text) {
    if (std::find(words.begin(), words.end(), text) != words.end()) return std::string();
    return base::formater("« %s » n'est pas un choix : %s", text, CLI::detail::join(words, ", "));
  };
  return {check, ""};
}

}  // namespace veltora::app
