#pragma once

#include "arx/db/dbfiler.h"
#include "arx/ge/gepoint.h"

#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

/// Points and numbers of the kept sections of one entity, by group code, in order.
class AcDbKeptGroups {
public:
  explicit AcDbKeptGroups(const std::vector<DxfExtra>& sections) {
    for (const DxfExtra& section : sections) {
      DxfTagText::Cursor cursor = section.tags.tags();
      for (DxfTag tag; cursor.next(tag);) take(tag);
    }
  }
  [[nodiscard]] const std::vector<AcGePoint3d>& points(int code) { return m_points[code]; }
  [[nodiscard]] double real(int code, double fallback = 0.0) const {
    const auto found = m_reals.find(code);
    return found == m_reals.end() ? fallback : found->second.front();
  }
  [[nodiscard]] bool has(int code) const { return m_reals.count(code) != 0; }
  [[nodiscard]] AcGeVector3d normal() {
    const auto& given = points(210);
    return given.empty() ? AcGeVector3d::kZAxis : given.front().asVector();
  }
  /// The first group of this code as file text, valid as long as the sections; nothing without one.
  [[nodiscard]] static std::optional<std::string_view> textOf(const std::vector<DxfExtra>& sections,
                                                              int code) {
    for (const DxfExtra& section : sections) {
      DxfTagText::Cursor cursor = section.tags.tags();
      for (DxfTag tag; cursor.next(tag);)
        if (tag.code == code) return tag.value;
    }
    return std::nullopt;
  }
  /// All groups, as numbers where they are some.
  [[nodiscard]] const std::vector<std::pair<int, double>>& inOrder() const { return m_order; }

private:
  void take(const DxfTag& tag) {
    double value = 0.0;
    if (tag.code < 10 || !dxfParseReal(tag.value, value)) return;
    m_order.emplace_back(tag.code, value);
    const int place = tag.code < 210 ? tag.code : tag.code - 200;  // points: 10 to 18, directions: 210 to 213
    const int last = tag.code < 210 ? 18 : 13;
    const bool point = place >= 10 && place <= last;
    const bool y = place >= 20 && place <= last + 10;
    const bool z = place >= 30 && place <= last + 20;
    if (point) m_points[tag.code].emplace_back(value, 0.0, 0.0);
    if (!point && !y && !z) m_reals[tag.code].push_back(value);
    if (!y && !z) return;
    const auto found = m_points.find(tag.code - (z ? 20 : 10));
    if (found != m_points.end()) (z ? found->second.back().z : found->second.back().y) = value;
  }
  std::map<int, std::vector<AcGePoint3d>> m_points;
  std::map<int, std::vector<double>> m_reals;
  std::vector<std::pair<int, double>> m_order;
};
