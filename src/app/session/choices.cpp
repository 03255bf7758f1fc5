#include "app/session/choices.h"

#include "base/format.h"
#include "base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

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

CLI::Validator between(double least, double largest) {
  const auto check = [=](const std::string& text) {
    double value = 0.0;
    if (base::lireReelExact(text, value) && value >= least && value <= largest) return std::string();
    return base::formater("« %s » n'est pas un nombre de %g à %g", text, least, largest);
  };
  return {check, ""};
}

std::optional<std::pair<double, double>> readPlanPoint(const std::string& text) {
  const std::size_t comma = text.find(',');
  double x = 0.0;
  double y = 0.0;
  if (comma == std::string::npos || !base::lireReelExact(text.substr(0, comma), x) ||
      !base::lireReelExact(text.substr(comma + 1), y) || !std::isfinite(x) || !std::isfinite(y))
    return std::nullopt;
  return std::pair(x, y);
}

CLI::Validator planPoint() {
  const auto check = [](const std::string& text) {
    return readPlanPoint(text)
               ? std::string()
               : base::formater("« %s » n'est pas un point : X,Y avec un point décimal", text);
  };
  return {check, ""};
}

CLI::Validator oneOf(std::vector<std::string> words, std::string shown) {
  if (shown.empty()) shown = CLI::detail::join(words, ", ");
  const auto check = [words = std::move(words), shown = std::move(shown)](const std::string& text) {
    if (std::find(words.begin(), words.end(), text) != words.end()) return std::string();
    return base::formater("« %s » n'est pas un choix : %s", text, shown);
  };
  return {check, ""};
}

}  // namespace veltora::app
