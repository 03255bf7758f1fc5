#pragma once

#include "arx/ed/edports.h"
#include "arx/lisp/lispinterp.h"

/// Conversions between LISP values and chains of typed items.
namespace aclisp {

using ChainHolder = AcEdRbHolder;

/// Arguments for a function of a module: integers of 16 bits as RTSHORT, larger ones as RTLONG; lists of two
/// or three numbers, one of them real, as RTPOINT or RT3DPOINT; other lists between RTLB and RTLE, a pair's
/// dot as RTDOTE. Fails for what no module understands (symbols but T, functions, files).
resbuf* argumentChain(Interpreter& in, std::span<Value> arguments);
/// The value of a chain: one item or a list; several items without brackets make a list. RTVOID prints as
/// nothing.
Value valueOfChain(Interpreter& in, const resbuf* chain);

/// Groups of an entity or a record as (code . value) pairs, extended data as (-3 ("APP" (1000 . "x")...)...).
/// @param planar points of group 10 lose their z, as vertices of a plane polyline have none
Value groupList(const resbuf* chain, bool planar = false);
/// Such pairs as a chain; fails with a French message where a pair does not fit its code.
resbuf* groupChain(Interpreter& in, const Value& list);

Value entityValue(const ads_name name);
Value selectionValue(const ads_name name);
/// (x y z)
Value pointValue(const ads_real* point, bool plane = false);
/// A list of two or three numbers. @return how many, 0 for anything else
std::size_t readPoint(const Value& value, ads_point point);

}  // namespace aclisp
