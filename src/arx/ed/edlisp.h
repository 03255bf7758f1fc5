#pragma once

#include "arx/db/resbuf.h"

#include <map>
#include <string>
#include <vector>

// Functions that modules offer to LISP. A module defines them while it works on a message (`kLoadDwgMsg`); a
// call reaches its entry as `kInvkSubrMsg`, which asks for code and arguments and hands a result back.

/// The functions of one document: name -> module and code. Names compare ignoring case.
class ARX_API AcEdLispFunctions {
public:
  struct Function {
    std::wstring name;  ///< as defined
    std::wstring module;
    int code = 0;
  };
  /// A later definition replaces an earlier one. @return false for an empty name
  bool define(const std::wstring& name, const std::wstring& module, int code);
  /// @return false unless the module defined the name under this code
  bool undefine(const std::wstring& name, const std::wstring& module, int code);
  void undefineAll(const std::wstring& module);
  [[nodiscard]] const Function* find(const std::wstring& name) const;
  /// In order of names (upper case).
  [[nodiscard]] std::vector<Function> functions() const;

  /// Calls a function. @param arguments chain in the form of `acedGetArgs`, null for none; stays with the
  /// caller
  /// @return the result, released by the caller: one item, a list between RTLB and RTLE, RTNIL, RTT or
  /// RTVOID; null
  ///         when there is no such function or its module fails. What the module throws passes through.
  resbuf* call(const std::wstring& name, const resbuf* arguments) const;

private:
  std::map<std::wstring, Function> m_functions;  // by the name in upper case
};

/// The table of the current document; null between documents.
ARX_API AcEdLispFunctions* acedLispFunctions();
/// @return the former one
ARX_API AcEdLispFunctions* acedSetLispFunctions(AcEdLispFunctions* functions);

/// RTERROR outside a message to a module, or without a document.
ARX_API int acedDefun(const ACHAR* name, int code);
ARX_API int acedUndef(const ACHAR* name, int code);
/// Code of the function called now; RTERROR outside a call.
ARX_API int acedGetFunCode();
/// A copy of the arguments, released by the caller; null for none. Lists stand between RTLB and RTLE.
ARX_API resbuf* acedGetArgs();

// Set the result of the function called now; the latest counts, without any it is nil. RTERROR outside a
// call.
ARX_API int acedRetNil();
ARX_API int acedRetT();
ARX_API int acedRetVoid();
ARX_API int acedRetInt(int value);
ARX_API int acedRetReal(ads_real value);
ARX_API int acedRetStr(const ACHAR* text);
ARX_API int acedRetPoint(const ads_point point);
/// @param type RTENAME or RTPICKS
ARX_API int acedRetName(const ads_name name, int type);
/// A list of the items of the chain, which stays with the caller; sub-lists between RTLB and RTLE, pairs as
/// RTLB a RTDOTE b RTLE (LISP's form). A null chain is nil.
ARX_API int acedRetList(const resbuf* chain);
/// The one value of the chain.
ARX_API int acedRetVal(const resbuf* value);

/// Calls a function by name from a module: RTSTR with the name, then the arguments. RTERROR when it is
/// unknown or fails; the result is released by the caller.
ARX_API int acedInvoke(const resbuf* call, resbuf** result);
