#include "arx/ed/edlisp.h"

#include "arx/ed/edports.h"
#include "arx/rx/rxdlinkr.h"
#include "base/text.h"

#include <utility>

namespace base = veltora::base;

namespace {

/// A call at work; calls nest when a function runs another.
struct Call {
  int code;
  const resbuf* arguments;
  AcEdRbHolder result;
};
std::vector<Call>& calls() {
  static auto* const stack = new std::vector<Call>;
  return *stack;
}

AcEdLispFunctions*& current() {
  static AcEdLispFunctions* functions = nullptr;
  return functions;
}

int setResult(resbuf* chain) {
  AcEdRbHolder holder(chain);
  if (calls().empty() || !holder) return RTERROR;
  calls().back().result = std::move(holder);
  return RTNORM;
}

}  // namespace

bool AcEdLispFunctions::define(const std::wstring& name, const std::wstring& module, int code) {
  if (name.empty()) return false;
  m_functions[base::toUpper(name)] = {name, module, code};
  return true;
}

bool AcEdLispFunctions::undefine(const std::wstring& name, const std::wstring& module, int code) {
  const auto found = m_functions.find(base::toUpper(name));
  if (found == m_functions.end() || found->second.code != code) return false;
  if (base::compareNoCase(found->second.module, module) != 0) return false;
  m_functions.erase(found);
  return true;
}

void AcEdLispFunctions::undefineAll(const std::wstring& module) {
  std::erase_if(m_functions,
                [&](const auto& entry) { return base::compareNoCase(entry.second.module, module) == 0; });
}

const AcEdLispFunctions::Function* AcEdLispFunctions::find(const std::wstring& name) const {
  const auto found = m_functions.find(base::toUpper(name));
  return found == m_functions.end() ? nullptr : &found->second;
}

std::vector<AcEdLispFunctions::Function> AcEdLispFunctions::functions() const {
  std::vector<Function> all;
  for (const auto& [key, function] : m_functions) all.push_back(function);
  return all;
}

resbuf* AcEdLispFunctions::call(const std::wstring& name, const resbuf* arguments) const {
  const Function* found = find(name);
  if (!found) return nullptr;
  // The function may redefine itself or close the document: nothing of the table is used behind this line.
  const std::wstring module = found->module;
  struct Ending {
    ~Ending() { calls().pop_back(); }
  };
  calls().push_back({found->code, arguments, AcEdRbHolder(acutNewRb(RTNIL))});
  const Ending ending;
  const AcRx::AppRetCode status = acrxDynamicLinker->send(module.c_str(), AcRx::kInvkSubrMsg);
  return status == AcRx::kRetOK ? calls().back().result.release() : nullptr;
}

AcEdLispFunctions* acedLispFunctions() { return current(); }

AcEdLispFunctions* acedSetLispFunctions(AcEdLispFunctions* functions) {
  return std::exchange(current(), functions);
}

int acedDefun(const ACHAR* name, int code) {
  const std::wstring module = acrxDynamicLinker->currentModule();
  if (!current() || module.empty() || !name) return RTERROR;
  return current()->define(name, module, code) ? RTNORM : RTERROR;
}

int acedUndef(const ACHAR* name, int code) {
  if (!current() || !name) return RTERROR;
  return current()->undefine(name, acrxDynamicLinker->currentModule(), code) ? RTNORM : RTERROR;
}

int acedGetFunCode() { return calls().empty() ? RTERROR : calls().back().code; }

resbuf* acedGetArgs() { return calls().empty() ? nullptr : acutCopyRbChain(calls().back().arguments); }

int acedRetNil() { return setResult(acutNewRb(RTNIL)); }
int acedRetT() { return setResult(acutNewRb(RTT)); }
int acedRetVoid() { return setResult(acutNewRb(RTVOID)); }
int acedRetInt(int value) { return setResult(acutBuildList(RTLONG, value)); }
int acedRetReal(ads_real value) { return setResult(acutBuildList(RTREAL, value)); }
int acedRetStr(const ACHAR* text) { return text ? setResult(acutBuildList(RTSTR, text)) : RTERROR; }
int acedRetPoint(const ads_point point) {
  return point ? setResult(acutBuildList(RT3DPOINT, point)) : RTERROR;
}

int acedRetName(const ads_name name, int type) {
  if (!name || (type != RTENAME && type != RTPICKS)) return RTERROR;
  return setResult(acutBuildList(type, name));
}

int acedRetList(const resbuf* chain) {
  if (!chain) return acedRetNil();
  resbuf* list = acutNewRb(RTLB);
  list->rbnext = acutCopyRbChain(chain);
  resbuf* last = list;
  while (last->rbnext) last = last->rbnext;
  last->rbnext = acutNewRb(RTLE);
  return setResult(list);
}

int acedRetVal(const resbuf* value) { return value ? setResult(acutCopyRbChain(value)) : RTERROR; }

int acedInvoke(const resbuf* call, resbuf** result) {
  if (!call || call->restype != RTSTR || !call->resval.rstring || !result || !current()) return RTERROR;
  *result = current()->call(call->resval.rstring, call->rbnext);
  return *result ? RTNORM : RTERROR;
}
