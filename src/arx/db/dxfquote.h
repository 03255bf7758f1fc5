#pragma once

#include <string>
#include <string_view>

/// A value of a file for a message: UTF-8, at most 80 characters of it.
[[nodiscard]] std::string dxfQuote(std::string_view value);
