#include "arx/lisp/lispconvert.h"

#include "arx/lisp/lispprinter.h"

#include <algorithm>
#include <limits>

namespace aclisp {

namespace {

constexpr int kExtendedData = -3;
constexpr int kFirstExtended = 1000;

/// Appends items to a chain that is released when the building fails.
class ChainBuilder {
public:
  resbuf& add(int type) {
    resbuf* const item = acutNewRb(type);
    if (m_last)
      m_last->rbnext = item;
    else
      m_chain.reset(item);
    m_last = item;
    return *item;
  }
  resbuf* take() { return m_chain.release(); }

private:
  ChainHolder m_chain;
  resbuf* m_last = nullptr;
};

template <class Integer>
bool fits(std::int32_t value) {
  return value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
}

/// A proper list of two or three reals; one that holds integers stays a list, which keeps them.
std::size_t pointSize(const Value& list, ads_point point) {
  const std::size_t count = readPoint(list, point);
  for (const Value& v : Elements(list))
    if (!count || !v.is(Kind::kReal)) return 0;
  return count;
}

void addAtom(Interpreter& in, const Value& value, ChainBuilder& chain) {
  switch (value.kind()) {
    case Kind::kNil:
      chain.add(RTNIL);
      return;
    case Kind::kInteger:
      if (fits<short>(value.asInteger()))
        chain.add(RTSHORT).resval.rint = static_cast<short>(value.asInteger());
      else
        chain.add(RTLONG).resval.rlong = value.asInteger();
      return;
    case Kind::kReal:
      chain.add(RTREAL).resval.rreal = value.asReal();
      return;
    case Kind::kString:
      acutNewString(value.asText(), chain.add(RTSTR).resval.rstring);
      return;
    case Kind::kEntity:
    case Kind::kSelection: {
      const ads_name& name = static_cast<const Name*>(value.object())->name;
      std::copy(name, name + 2, chain.add(value.is(Kind::kEntity) ? RTENAME : RTPICKS).resval.rlname);
      return;
    }
    default:
      break;
  }
  if (in.isNothing(value))
    chain.add(RTVOID);
  else if (value.sameAs(in.truth(true)))
    chain.add(RTT);
  else
    in.fail(L"argument incorrect pour une fonction externe : " + printed(value, true, 80));
}

/// Takes a list apart without recursion.
void addValue(Interpreter& in, const Value& value, ChainBuilder& chain) {
  std::vector<const Value*> rests;
  const Value* next = &value;
  for (;;) {
    ads_point point;
    const std::size_t dimension = next && next->is(Kind::kCons) ? pointSize(*next, point) : 0;
    if (dimension) {
      std::copy(point, point + 3, chain.add(dimension == 2 ? RTPOINT : RT3DPOINT).resval.rpoint);
    } else if (next && next->is(Kind::kCons)) {
      chain.add(RTLB);
      rests.push_back(&next->cdr());
      next = &next->car();
      continue;
    } else if (next) {
      addAtom(in, *next, chain);
    }
    next = nullptr;
    if (rests.empty()) return;
    const Value* const rest = rests.back();
    if (rest->is(Kind::kCons)) {
      next = &rest->car();
      rests.back() = &rest->cdr();
      continue;
    }
    if (!rest->isNil()) {
      chain.add(RTDOTE);
      addAtom(in, *rest, chain);
    }
    chain.add(RTLE);
    rests.pop_back();
  }
}

Value binaryText(const ads_binary& binary) {
  static constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
  std::wstring text;
  for (short i = 0; i < binary.clen && binary.buf; ++i) {
    const auto byte = static_cast<unsigned char>(binary.buf[i]);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return Value::text(text);
}

Value wideInteger(Adesk::Int64 value) {
  using Int = std::numeric_limits<std::int32_t>;
  if (value >= Int::min() && value <= Int::max()) return Value::integer(static_cast<std::int32_t>(value));
  return Value::real(static_cast<double>(value));
}

Value itemValue(const resbuf& item, bool planar) {
  switch (acutRbKind(item.restype)) {
    case RbKind::kReal:
      return Value::real(item.resval.rreal);
    case RbKind::kPoint:
      return pointValue(item.resval.rpoint, planar);
    case RbKind::kShort:
      return Value::integer(item.resval.rint);
    case RbKind::kLong:
      return Value::integer(item.resval.rlong);
    case RbKind::kInt64:
      return wideInteger(item.resval.mnInt64);
    case RbKind::kText:
      return Value::text(item.resval.rstring ? item.resval.rstring : L"");
    case RbKind::kName:
      return item.restype == RTPICKS ? selectionValue(item.resval.rlname) : entityValue(item.resval.rlname);
    case RbKind::kBinary:
      return binaryText(item.resval.rbinary);
    case RbKind::kNone:
      break;
  }
  return {};
}

Value markerOrItem(Interpreter& in, const resbuf& item) {
  if (item.restype == RTNIL || item.restype == RTNONE) return {};
  if (item.restype == RTT) return in.truth(true);
  if (item.restype == RTVOID) return in.nothing();
  Value value = itemValue(item, item.restype == RTPOINT);
  if (item.restype >= RTNONE) return value;
  return Value::cons(Value::integer(item.restype), std::move(value));  // a group code
}

}  // namespace

std::size_t readPoint(const Value& value, ads_point point) {
  std::size_t count = 0;
  std::fill(point, point + 3, 0.0);
  const Value* at = &value;
  for (; at->is(Kind::kCons); at = &at->cdr()) {
    if (count == 3 || !at->car().isNumber()) return 0;
    point[count++] = at->car().number();
  }
  return at->isNil() && count >= 2 ? count : 0;
}

Value pointValue(const ads_real* point, bool plane) {
  Value tail = plane ? Value() : Value::cons(Value::real(point[2]), {});
  return Value::cons(Value::real(point[0]), Value::cons(Value::real(point[1]), std::move(tail)));
}

Value entityValue(const ads_name name) {
  if (name[0] == 0 && name[1] == 0) return {};
  return Value::adopt(new Name(Kind::kEntity, name));
}

Value selectionValue(const ads_name name) {
  if (name[0] == 0 && name[1] == 0) return {};
  return Value::adopt(new Name(Kind::kSelection, name));
}

resbuf* argumentChain(Interpreter& in, std::span<Value> arguments) {
  ChainBuilder chain;
  for (const Value& argument : arguments) addValue(in, argument, chain);
  return chain.take();
}

namespace {

/// Lists under construction, one within the other; the first holds the values of the chain itself.
class OpenLists {
public:
  void open() { m_levels.emplace_back(); }
  void dot() { m_levels.back().dotted = true; }
  void add(Value value) {
    Level& level = m_levels.back();
    if (level.dotted && !level.list.empty())
      level.list.dot(std::move(value));
    else
      level.list.add(std::move(value));
    level.dotted = false;
    if (m_levels.size() == 1) ++m_count;
  }
  /// A bracket without its opening one is passed over.
  void close() {
    if (m_levels.size() == 1) return;
    Value value = m_levels.back().list.take();
    m_levels.pop_back();
    add(std::move(value));
  }
  /// Brackets that never close are closed here.
  Value take() {
    while (m_levels.size() > 1) close();
    Value all = m_levels.front().list.take();
    return m_count == 1 ? all.car() : all;
  }

private:
  struct Level {
    ListBuilder list;
    bool dotted = false;
  };
  std::vector<Level> m_levels = std::vector<Level>(1);
  std::size_t m_count = 0;
};

}  // namespace

Value valueOfChain(Interpreter& in, const resbuf* chain) {
  OpenLists lists;
  for (const resbuf* item = chain; item; item = item->rbnext) {
    if (item->restype == RTLB)
      lists.open();
    else if (item->restype == RTLE)
      lists.close();
    else if (item->restype == RTDOTE)
      lists.dot();
    else
      lists.add(markerOrItem(in, *item));
  }
  return lists.take();
}

Value groupList(const resbuf* chain, bool planar) {
  ListBuilder groups;
  ListBuilder applications;
  ListBuilder data;
  bool extended = false;
  for (const resbuf* item = chain; item; item = item->rbnext) {
    if (item->restype == kExtendedData) {
      extended = true;
      continue;
    }
    Value value = itemValue(*item, planar && item->restype == 10);
    const bool application = extended && item->restype == 1001;
    if (application && !data.empty()) applications.add(data.take());
    if (application)
      data.add(std::move(value));
    else if (extended && item->restype >= kFirstExtended && !data.empty())
      data.add(Value::cons(Value::integer(item->restype), std::move(value)));
    else
      groups.add(Value::cons(Value::integer(item->restype), std::move(value)));
  }
  if (!data.empty()) applications.add(data.take());
  if (extended) groups.add(Value::cons(Value::integer(kExtendedData), applications.take()));
  return groups.take();
}

namespace {

[[noreturn]] void failPair(Interpreter& in, const Value& pair) {
  in.fail(L"paire incorrecte : " + printed(pair, true, 80));
}

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return c >= L'a' && c <= L'f' ? c - L'a' + 10 : -1;
}

bool setBinary(resbuf& item, const Value& value) {
  if (!value.is(Kind::kString)) return false;
  const std::wstring& text = value.asText();
  if (text.size() % 2 != 0 || text.size() / 2 > 127) return false;
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 2) {
    const int high = hexDigit(text[i]);
    const int low = hexDigit(text[i + 1]);
    if (high < 0 || low < 0) return false;
    bytes += static_cast<char>(high * 16 + low);
  }
  item.resval.rbinary.buf = new char[bytes.size() + 1];
  item.resval.rbinary.clen = static_cast<short>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), item.resval.rbinary.buf);
  return true;
}

bool setInteger(resbuf& item, const Value& value, RbKind kind) {
  if (!value.is(Kind::kInteger)) return false;
  if (kind == RbKind::kShort && !fits<short>(value.asInteger())) return false;
  if (kind == RbKind::kShort)
    item.resval.rint = static_cast<short>(value.asInteger());
  else if (kind == RbKind::kLong)
    item.resval.rlong = value.asInteger();
  else
    item.resval.mnInt64 = value.asInteger();
  return true;
}

bool setName(resbuf& item, const Value& value) {
  if (value.isNil()) return true;
  if (!value.is(Kind::kEntity)) return false;
  const ads_name& name = static_cast<const Name*>(value.object())->name;
  std::copy(name, name + 2, item.resval.rlname);
  return true;
}

bool setItem(resbuf& item, const Value& value) {
  const RbKind kind = acutRbKind(item.restype);
  switch (kind) {
    case RbKind::kReal:
      if (!value.isNumber()) return false;
      item.resval.rreal = value.number();
      return true;
    case RbKind::kPoint:
      return readPoint(value, item.resval.rpoint) != 0;
    case RbKind::kShort:
    case RbKind::kLong:
    case RbKind::kInt64:
      return setInteger(item, value, kind);
    case RbKind::kText:
      if (!value.is(Kind::kString)) return false;
      acutNewString(value.asText(), item.resval.rstring);
      return true;
    case RbKind::kName:
      return setName(item, value);
    case RbKind::kBinary:
      return setBinary(item, value);
    case RbKind::kNone:
      break;
  }
  return false;
}

void addPair(Interpreter& in, const Value& pair, ChainBuilder& chain) {
  if (!pair.is(Kind::kCons) || !pair.car().is(Kind::kInteger) || !fits<short>(pair.car().asInteger()))
    failPair(in, pair);
  const std::int32_t code = pair.car().asInteger();
  if (code >= RTNONE || acutRbKind(code) == RbKind::kNone)
    in.fail(L"code de groupe inconnu : " + std::to_wstring(code));
  if (!setItem(chain.add(code), pair.cdr())) failPair(in, pair);
}

void addExtended(Interpreter& in, const Value& pair, ChainBuilder& chain) {
  chain.add(kExtendedData);
  for (const Value& application : Elements(pair.cdr())) {
    if (!application.car().is(Kind::kString)) failPair(in, pair);
    acutNewString(application.car().asText(), chain.add(1001).resval.rstring);
    for (const Value& item : Elements(application.cdr())) addPair(in, item, chain);
  }
}

}  // namespace

resbuf* groupChain(Interpreter& in, const Value& list) {
  ChainBuilder chain;
  for (const Value& pair : Elements(list)) {
    if (pair.car().is(Kind::kInteger) && pair.car().asInteger() == kExtendedData)
      addExtended(in, pair, chain);
    else
      addPair(in, pair, chain);
  }
  return chain.take();
}

}  // namespace aclisp
