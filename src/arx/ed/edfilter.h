#pragma once

#include "arx/db/dbid.h"
#include "arx/db/resbuf.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class AcDbBlockTableRecord;
class AcDbEntity;

/// A selection filter taken apart once, to be asked for many entities.
class ARX_API AcEdFilter {
public:
  /// @param chain as described at `acedSSGet`; null fits everything. Read completely: the chain is not kept.
  explicit AcEdFilter(const resbuf* chain);
  /// False for brackets that do not pair, an unknown operator, or a value that fits no test.
  [[nodiscard]] bool valid() const { return m_valid; }
  [[nodiscard]] bool fits(const AcDbEntity& entity) const;
  /// Places in a block's list of all entities that can fit, in order, by the type, layer or application that
  /// the filter demands; others may be among them. Nothing when it demands none of these.
  [[nodiscard]] std::optional<std::vector<std::size_t>> candidates(const AcDbBlockTableRecord& block) const;

private:
  struct Node {
    enum Kind { kAnd, kOr, kNot, kXor, kTest, kXData } kind = kAnd;
    std::vector<Node> children;
    int code = 0;
    std::wstring comparison;  // empty for equality
    RbKind valueKind = RbKind::kNone;
    std::wstring text;  // value, or application
    double number[3] = {0, 0, 0};
  };
  class Parser;
  class Groups;
  static bool fits(const Node& node, Groups& groups);
  static bool test(const Node& node, Groups& groups);
  static bool testXData(const Node& node, const Groups& groups);
  Node m_root;
  bool m_valid = true;
};
