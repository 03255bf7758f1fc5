#pragma once

#include "base/export.h"
#include "base/uncopyable.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace veltora::base {

/// A box with sides along the axes, given by two opposite corners in any order.
struct PlaneBox {
  double x0 = 0.0;
  double y0 = 0.0;
  double x1 = 0.0;
  double y1 = 0.0;
};

struct NumberedBox {
  std::size_t number = 0;
  PlaneBox box;
};

/// Numbered boxes, found by place: an R-tree. The numbers are the caller's; no two boxes bear the same.
///
/// A box with a corner that is no number, or farther out than 1e100, has no place: it is found everywhere,
/// and a question about such a place finds every box.
class VELTORA_API BoxIndex : private Uncopyable {
public:
  BoxIndex();
  /// The boxes of an array, numbered by their places in it; faster than adding them one by one.
  explicit BoxIndex(const std::vector<PlaneBox>& boxes);
  ~BoxIndex();
  void add(std::size_t number, const PlaneBox& box);
  /// Adds many; to an empty index faster than one by one.
  void addAll(const std::vector<NumberedBox>& boxes);
  /// @param box  as it was when added; nothing happens for another
  void remove(std::size_t number, const PlaneBox& box);
  [[nodiscard]] std::size_t size() const;
  /// The numbers of all boxes that have a point in common with this one, sides included, ascending. Valid
  /// until the next call.
  const std::vector<std::size_t>& touching(const PlaneBox& box);

private:
  struct Tree;
  std::unique_ptr<Tree> m_tree;
  std::vector<std::size_t> m_endless;  ///< boxes without a place
  std::vector<std::size_t> m_found;
};

}  // namespace veltora::base
