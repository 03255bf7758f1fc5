#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Checks of option values whose messages are French, begin with "« " and are shown behind the option's name.
namespace veltora::app {

/// A whole number from `least` to `largest`.
CLI::Validator between(int least, int largest);

/// A number from `least` to `largest`.
CLI::Validator between(double least, double largest);

/// A point of the plan, "X,Y".
CLI::Validator planPoint();
/// The two numbers of what `planPoint` took; nothing for any other text.
std::optional<std::pair<double, double>> readPlanPoint(const std::string& text);

/// One of these words. @param shown the words as the message tells them, where they are not told as they are
CLI::Validator oneOf(std::vector<std::string> words, std::string shown = {});

/// The words of a table from words to what they mean.
template <class Table>
std::vector<std::string> wordsOf(const Table& table) {
  std::vector<std::string> words;
  for (const auto& [word, meaning] : table) words.push_back(word);
  return words;
}

}  // namespace veltora::app
