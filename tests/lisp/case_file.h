#pragma once

#include <string>
#include <vector>

/// One expectation of a case file: an expression, and what comes of it.
///
///   ; comment
///   (expression)          one or more lines; several expressions count as one text
///   < answer              a line that the user types; then, and with (command ...), only the last printed
///   line
///                         counts
///   => printed result     as prin1 prints it, or
///   !! part of the error
///
/// A block that begins with "@ name" groups the cases behind it; every group starts with an evaluator of its
/// own.
struct LispCase {
  std::string group;
  int line = 0;
  std::string expression;
  std::vector<std::string> answers;
  std::string expected;
  bool failure = false;
};

/// The cases of tests/lisp/cases/<name>.
std::vector<LispCase> lireCas(const std::string& name);
