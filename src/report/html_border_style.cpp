#include "report/html_border_style.h"

#include <array>

namespace veltora {
namespace {

constexpr std::array<const char*, 10> kMots = {"none",   "none",   "dotted", "dashed", "solid",
                                               "double", "groove", "ridge",  "inset",  "outset"};

}  // namespace

std::string htmlBorderStyle::css() const { return style < kMots.size() ? kMots[style] : "none"; }

}  // namespace veltora
