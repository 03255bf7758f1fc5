#pragma once

#include "base/remarque.h"

#include <string>

/// What the program tells the user who called it. French, UTF-8.
namespace veltora::app {

/// Exit statuses of the program.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1;
inline constexpr int kBadCall = 2;
inline constexpr int kDoubtful = 3;  ///< computed, but to be checked before anybody uses it

/// Writes to standard output.
void print(const std::string& text);
/// Hands what was printed over to the system. @return false with the reason on standard error when the system
/// did not take all of it
bool outputWritten();
/// Prints "veltora : <message>" on standard error.
void printError(const std::string& message);
void printError(const std::wstring& message);
/// Prints each remark of a job so.
void printRemarks(const base::Remarques& remarks);

/// A text filled with blanks up to a width, by characters, not by bytes.
std::string padded(const std::wstring& text, std::size_t width);
/// Width of a column of names: two more than the longest, at least 8.
template <class Items, class Name>
std::size_t nameWidth(const Items& items, Name name) {
  std::size_t width = 8;
  for (const auto& item : items)
    if (const std::size_t wanted = name(item).size() + 2; wanted > width) width = wanted;
  return width;
}
/// "3 angles", "1 angle".
std::string counted(int number, const char* word);

}  // namespace veltora::app
