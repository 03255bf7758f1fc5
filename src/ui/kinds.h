#pragma once

#include "ui/control.h"

#include <utility>

namespace veltora::ui {

/// The functions as one overloaded function.
template <class... Function>
struct OneForEach : Function... {
  using Function::operator()...;
};
template <class... Function>
OneForEach(Function...) -> OneForEach<Function...>;

/// Calls the function for the control's kind, of one for each kind, which takes a pointer to it; a kind
/// without one does not compile. That for `TextField` serves a `NumberField` which has none of its own.
template <class... Function>
decltype(auto) visit(Control& control, Function&&... functions) {
  return std::visit(OneForEach{std::forward<Function>(functions)...}, control.kind());
}

/// The same with functions that take pointers to what does not change.
template <class... Function>
decltype(auto) visit(const Control& control, Function&&... functions) {
  return std::visit(OneForEach{std::forward<Function>(functions)...}, const_cast<Control&>(control).kind());
}

}  // namespace veltora::ui
