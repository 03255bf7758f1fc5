#include "base/box_index.h"

// The library's own headers still include one of its deprecated ones, which says so.
#define BOOST_ALLOW_DEPRECATED_HEADERS

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/filter_iterator.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <boost/iterator/transform_iterator.hpp>
#include <cmath>
#include <iterator>
#include <utility>

namespace veltora::base {
namespace {

namespace bg = boost::geometry;
using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Entry = std::pair<Box, std::size_t>;
/// Entries a node; with 8 and with 32 moving boxes took longer.
constexpr std::size_t kNode = 16;

/// Corners farther out count as none, so that areas within the tree stay finite.
constexpr double kFarthest = 1e100;

bool hasPlace(const PlaneBox& b) {
  const auto near = [](double coordinate) { return std::fabs(coordinate) <= kFarthest; };
  return near(b.x0) && near(b.y0) && near(b.x1) && near(b.y1);
}

Box boxOf(const PlaneBox& b) {
  return {Point(std::min(b.x0, b.x1), std::min(b.y0, b.y1)),
          Point(std::max(b.x0, b.x1), std::max(b.y0, b.y1))};
}

std::vector<NumberedBox> numbered(const std::vector<PlaneBox>& boxes) {
  std::vector<NumberedBox> all;
  all.reserve(boxes.size());
  for (const PlaneBox& box : boxes) all.push_back({all.size(), box});
  return all;
}

}  // namespace

struct BoxIndex::Tree {
  using Entries = bg::index::rtree<Entry, bg::index::quadratic<kNode>>;
  Entries entries;
};

BoxIndex::BoxIndex() : m_tree(std::make_unique<Tree>()) {}

BoxIndex::BoxIndex(const std::vector<PlaneBox>& boxes) : BoxIndex() { addAll(numbered(boxes)); }

void BoxIndex::addAll(const std::vector<NumberedBox>& boxes) {
  const bool empty = m_tree->entries.empty();
  const auto placed = [](const NumberedBox& item) { return hasPlace(item.box); };
  const auto entry = [](const NumberedBox& item) { return Entry(boxOf(item.box), item.number); };
  for (const NumberedBox& item : boxes)
    if (!empty || !placed(item)) add(item.number, item.box);
  if (!empty) return;
  const auto first = boost::make_filter_iterator(placed, boxes.begin(), boxes.end());
  const auto last = boost::make_filter_iterator(placed, boxes.end(), boxes.end());
  m_tree->entries = Tree::Entries(boost::make_transform_iterator(first, entry),
                                  boost::make_transform_iterator(last, entry));
}

BoxIndex::~BoxIndex() = default;

void BoxIndex::add(std::size_t number, const PlaneBox& box) {
  if (hasPlace(box))
    m_tree->entries.insert(Entry(boxOf(box), number));
  else
    m_endless.push_back(number);
}

void BoxIndex::remove(std::size_t number, const PlaneBox& box) {
  if (hasPlace(box))
    m_tree->entries.remove(Entry(boxOf(box), number));
  else
    std::erase(m_endless, number);
}

std::size_t BoxIndex::size() const { return m_tree->entries.size() + m_endless.size(); }

const std::vector<std::size_t>& BoxIndex::touching(const PlaneBox& box) {
  m_found = m_endless;
  const auto take = [this](const Entry& entry) { m_found.push_back(entry.second); };
  if (hasPlace(box))
    m_tree->entries.query(bg::index::intersects(boxOf(box)), boost::make_function_output_iterator(take));
  else
    std::for_each(m_tree->entries.begin(), m_tree->entries.end(), take);
  std::sort(m_found.begin(), m_found.end());
  return m_found;
}

}  // namespace veltora::base
