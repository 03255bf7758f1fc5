#pragma once

#include "arx/db/dbfiler.h"
#include "arx/ge/gepoint.h"

#include <map>
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
  /// All groups, as numbers where they are some.
  [[nodiscard]] const std::vector<std::pair<int, double>>& inOrder() const { return m_order; }

private:
  void take(const DxfTag& tag) {
    double value = 0.0;
    if (tag.code < 10 || !dxfParseReal(tag.value, value)) return;
    m_order.emplace_back(tag.code, value);
    const bool point = (tag.code >= 10 && tag.code <= 18) || tag.code == 210;
    const bool further = (tag.code >= 20 && tag.code <= 38) || tag.code == 220 || tag.code == 230;
    if (point) m_points[tag.code].emplace_back(value, 0.0, 0.0);
    if (!point && !further) m_reals[tag.code].push_back(value);
    if (!further) return;
    const bool z = tag.code >= 30 && tag.code != 220;
    const auto found = m_points.find(tag.code >= 210 ? 210 : tag.code - (z ? 20 : 10));
    if (found != m_points.end()) (z ? found->second.back().z : found->second.back().y) = value;
  }
  std::map<int, std::vector<AcGePoint3d>> m_points;
  std::map<int, std::vector<double>> m_reals;
  std::vector<std::pair<int, double>> m_order;
};
