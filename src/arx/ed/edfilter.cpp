#include "arx/ed/edfilter.h"

#include "arx/db/dbentitykinds.h"
#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edgroups.h"
#include "arx/ed/edselect.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace base = veltora::base;

namespace {

/// Two numbers of a filter and an entity closer than this are equal (drawing units, radians).
constexpr double kSameNumber = 1e-8;

bool isComparison(const std::wstring& sign) {
  static const wchar_t* const known[] = {L"*",  L"=", L"!=", L"/=", L"<>", L"<",
                                         L"<=", L">", L">=", L"&",  L"&="};
  return std::any_of(std::begin(known), std::end(known), [&](const wchar_t* k) { return sign == k; });
}

std::vector<std::wstring> signsOf(const std::wstring& comparison) {
  std::vector<std::wstring> signs(1);
  for (const wchar_t c : comparison) {
    if (c == L',')
      signs.emplace_back();
    else if (c != L' ')
      signs.back() += c;
  }
  return signs;
}

bool areComparisons(const std::wstring& text) {
  const std::vector<std::wstring> signs = signsOf(text);
  return signs.size() <= 3 && std::all_of(signs.begin(), signs.end(), isComparison);
}

bool compare(double value, const std::wstring& sign, double limit) {
  const bool same = std::abs(value - limit) <= kSameNumber;
  if (sign == L"*") return true;
  if (sign.empty() || sign == L"=") return same;
  if (sign == L"!=" || sign == L"/=" || sign == L"<>") return !same;
  if (sign == L"<") return value < limit && !same;
  if (sign == L"<=") return value < limit || same;
  if (sign == L">") return value > limit && !same;
  if (sign == L">=") return value > limit || same;
  const bool bits = std::abs(value) < 9e15 && std::abs(limit) < 9e15;
  const auto mask = bits ? static_cast<Adesk::Int64>(limit) : 0;
  const auto set = bits ? static_cast<Adesk::Int64>(value) & mask : 0;
  return sign == L"&" ? set != 0 : bits && set == mask;
}

/// Names of records, types and classes compare ignoring case, texts do not.
bool ignoresCase(int code) {
  return code == 0 || code == 2 || code == 3 || (code >= 6 && code <= 8) || code == 100 || code == 410;
}

bool matches(const std::wstring& text, const std::wstring& pattern, bool anyCase) {
  if (!anyCase) return acutWcMatch(text.c_str(), pattern.c_str()) == RTNORM;
  return acutWcMatch(base::toUpper(text).c_str(), base::toUpper(pattern).c_str()) == RTNORM;
}

}  // namespace

/// Groups of one entity, read from it when they are first asked for.
class AcEdFilter::Groups {
public:
  explicit Groups(const AcDbEntity& entity) : m_entity(entity) {}
  [[nodiscard]] const AcDbEntity& entity() const { return m_entity; }

  [[nodiscard]] std::vector<std::wstring> texts(int code) {
    switch (code) {
      case 0:
        return {base::fromUtf8(m_entity.dxfName())};
      case 5:
        return {base::fromUtf8(acedHandleText(m_entity.handle()))};
      case 6:
        return {linetype()};
      case 8:
        return {m_entity.layer()};
      case 100:
        return classes();
      case 410:
        return {m_entity.inPaperSpace() ? L"Layout" : L"Model"};
      default:
        return storedTexts(code);
    }
  }

  [[nodiscard]] std::vector<AcGePoint3d> numbers(int code) {
    if (code == 62) return {{static_cast<double>(m_entity.colorIndex()), 0, 0}};
    if (code == 67) return {{m_entity.inPaperSpace() ? 1.0 : 0.0, 0, 0}};
    if (code == 60) return {{m_entity.visibility() == AcDb::kInvisible ? 1.0 : 0.0, 0, 0}};
    std::vector<AcGePoint3d> values;
    for (const AcEdGroup& group : groups()) {
      if (group.code == code && group.kind != RbKind::kText) values.push_back(group.point);
    }
    return values;
  }

private:
  [[nodiscard]] std::wstring linetype() const {
    if (m_entity.linetypeId().isNull()) return L"ByLayer";
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(m_entity.linetypeId());
    return record ? record->name() : L"ByLayer";
  }

  [[nodiscard]] std::vector<std::wstring> classes() const {
    std::vector<std::wstring> names;
    for (const AcRxClass* c = m_entity.isA(); c; c = c->myParent()) names.emplace_back(c->name());
    return names;
  }

  [[nodiscard]] std::vector<std::wstring> storedTexts(int code) {
    std::vector<std::wstring> values;
    for (const AcEdGroup& group : groups()) {
      if (group.code == code && group.kind == RbKind::kText) values.push_back(group.text);
    }
    return values;
  }

  const std::vector<AcEdGroup>& groups() {
    if (!m_groups) m_groups = acedGroupsOf(m_entity);
    return *m_groups;
  }

  const AcDbEntity& m_entity;
  std::optional<std::vector<AcEdGroup>> m_groups;
};

/// Turns the chain into a tree; brackets nest to any depth that the chain has, kept on a stack of our own.
class AcEdFilter::Parser {
public:
  explicit Parser(Node& root) { m_open.push_back(&root); }

  bool parse(const resbuf* chain) {
    for (const resbuf* item = chain; item; item = item->rbnext) {
      if (!take(*item)) return false;
    }
    return m_open.size() == 1 && m_comparison.empty();
  }

private:
  bool take(const resbuf& item) {
    const bool isText = acutRbKind(item.restype) == RbKind::kText;
    const std::wstring text = isText && item.resval.rstring ? item.resval.rstring : L"";
    if (item.restype == -4) return takeOperator(text);
    if (item.restype == -3 || item.restype == RTLB || item.restype == RTLE) {
      if (item.restype == -3) m_inXData = true;
      if (item.restype == RTLE && m_inXData && --m_depth <= 0) m_inXData = false;
      if (item.restype == RTLB) ++m_depth;
      return true;
    }
    // Without a bracket behind the names, the next group of the entity itself ends them.
    if (item.restype == 1001 || (m_inXData && isText && item.restype >= 1000)) return takeApplication(text);
    m_inXData = false;
    return takeTest(item, text);
  }

  bool takeOperator(const std::wstring& sign) {
    struct Bracket {
      const wchar_t* opening;
      const wchar_t* closing;
      Node::Kind kind;
    };
    static constexpr Bracket brackets[] = {{L"<AND", L"AND>", Node::kAnd},
                                           {L"<OR", L"OR>", Node::kOr},
                                           {L"<NOT", L"NOT>", Node::kNot},
                                           {L"<XOR", L"XOR>", Node::kXor}};
    for (const Bracket& bracket : brackets) {
      if (base::compareNoCase(sign, bracket.opening) == 0) return open(bracket.kind);
      if (base::compareNoCase(sign, bracket.closing) == 0) return close(bracket.kind);
    }
    m_comparison = sign;
    return !sign.empty() && areComparisons(sign);
  }

  bool open(Node::Kind kind) {
    if (m_open.size() >= kMostNested || !m_comparison.empty()) return false;
    m_open.push_back(&add(kind));
    return true;
  }

  bool close(Node::Kind kind) {
    const Node& node = *m_open.back();
    if (m_open.size() == 1 || node.kind != kind || !m_comparison.empty()) return false;
    if (kind == Node::kNot && node.children.size() != 1) return false;
    if (kind == Node::kXor && node.children.size() != 2) return false;
    m_open.pop_back();
    return !node.children.empty();
  }

  bool takeApplication(const std::wstring& name) {
    if (!m_comparison.empty()) return false;
    add(Node::kXData).text = name;
    return true;
  }

  bool takeTest(const resbuf& item, const std::wstring& text) {
    Node& node = add(Node::kTest);
    node.code = item.restype;
    node.comparison.swap(m_comparison);
    node.text = text;
    node.valueKind = acutRbKind(item.restype);
    const auto& value = item.resval;
    switch (node.valueKind) {
      case RbKind::kText:
        return node.comparison.empty() || node.comparison == L"=" || node.comparison == L"*";
      case RbKind::kReal:
        node.number[0] = value.rreal;
        return true;
      case RbKind::kShort:
        node.number[0] = value.rint;
        return true;
      case RbKind::kLong:
        node.number[0] = value.rlong;
        return true;
      case RbKind::kInt64:
        node.number[0] = static_cast<double>(value.mnInt64);
        return true;
      case RbKind::kPoint:
        std::copy(value.rpoint, value.rpoint + 3, node.number);
        return true;
      default:
        return false;
    }
  }

  Node& add(Node::Kind kind) {
    Node& node = m_open.back()->children.emplace_back();
    node.kind = kind;
    return node;
  }

  static constexpr std::size_t kMostNested = 64;  // deeper brackets are refused
  std::vector<Node*> m_open;  // a child list grows only while its last node is closed, so these stay valid
  std::wstring m_comparison;
  bool m_inXData = false;
  int m_depth = 0;
};

AcEdFilter::AcEdFilter(const resbuf* chain) { m_valid = Parser(m_root).parse(chain); }

bool AcEdFilter::fits(const AcDbEntity& entity) const {
  if (!m_valid) return false;
  Groups groups(entity);
  return fits(m_root, groups);
}

bool AcEdFilter::fits(const Node& node, Groups& groups) {
  const auto child = [&](const Node& c) { return fits(c, groups); };
  switch (node.kind) {
    case Node::kAnd:
      return std::all_of(node.children.begin(), node.children.end(), child);
    case Node::kOr:
      return std::any_of(node.children.begin(), node.children.end(), child);
    case Node::kNot:
      return !fits(node.children[0], groups);
    case Node::kXor:
      return fits(node.children[0], groups) != fits(node.children[1], groups);
    case Node::kXData:
      return testXData(node, groups);
    case Node::kTest:
      break;
  }
  return test(node, groups);
}

bool AcEdFilter::test(const Node& node, Groups& groups) {
  if (node.comparison == L"*") return true;
  if (node.valueKind == RbKind::kText) {
    const std::vector<std::wstring> texts = groups.texts(node.code);
    return std::any_of(texts.begin(), texts.end(), [&](const std::wstring& text) {
      return matches(text, node.text, ignoresCase(node.code));
    });
  }
  const std::vector<std::wstring> signs = signsOf(node.comparison);
  const std::size_t count = node.valueKind == RbKind::kPoint ? 3 : 1;
  const std::vector<AcGePoint3d> values = groups.numbers(node.code);
  return std::any_of(values.begin(), values.end(), [&](const AcGePoint3d& value) {
    const double parts[] = {value.x, value.y, value.z};
    for (std::size_t i = 0; i < count; ++i) {
      // One sign serves all coordinates; of several, a missing one leaves its coordinate free.
      const std::wstring& sign = signs.size() == 1 ? signs[0] : i < signs.size() ? signs[i] : L"*";
      if (!compare(parts[i], sign, node.number[i])) return false;
    }
    return true;
  });
}

bool AcEdFilter::testXData(const Node& node, const Groups& groups) {
  DxfTagText::Cursor cursor = groups.entity().xDataTags().tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == 1001 && matches(base::fromUtf8(tag.value), node.text, true)) return true;
  }
  return false;
}

namespace {

std::size_t countOf(const AcDbEntityKinds::Lists& lists) {
  std::size_t count = 0;
  for (const AcDbEntityKinds::Places* places : lists) count += places->size();
  return count;
}

std::wstring layerName(AcDbObjectId layer) {
  const auto* record = layer.isValid() ? AcDbSymbolTableRecord::cast(layer.stub()->object) : nullptr;
  return record ? record->name() : std::wstring(L"0");
}

}  // namespace

std::optional<std::vector<std::size_t>> AcEdFilter::candidates(const AcDbBlockTableRecord& block) const {
  if (!m_valid || !block.database()) return std::nullopt;
  AcDbEntityKinds& kinds = block.database()->entityKinds();
  std::optional<AcDbEntityKinds::Lists> fewest;
  for (const Node& node : m_root.children) {
    const auto fitting = [&](const std::wstring& text) { return matches(text, node.text, true); };
    const auto fittingBytes = [&](std::string_view text) { return fitting(base::fromUtf8(text)); };
    AcDbEntityKinds::Lists lists;
    const bool equals =
        node.kind == Node::kTest && node.valueKind == RbKind::kText && node.comparison != L"*";
    if (equals && node.code == 0)
      lists = kinds.ofTypes(block, fittingBytes);
    else if (equals && node.code == 8)
      lists = kinds.onLayers(block, [&](AcDbObjectId layer) { return fitting(layerName(layer)); });
    else if (node.kind == Node::kXData)
      lists = kinds.ofApplications(block, fittingBytes);
    else
      continue;
    if (!fewest || countOf(lists) < countOf(*fewest)) fewest = std::move(lists);
  }
  if (!fewest) return std::nullopt;
  std::vector<std::size_t> all;
  all.reserve(countOf(*fewest));
  for (const AcDbEntityKinds::Places* places : *fewest) all.insert(all.end(), places->begin(), places->end());
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
  return all;
}
