#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace veltora::base {

/// The element in the middle of the ordered values, the upper one of two. @param values at least one, no NaN
inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace veltora::base
