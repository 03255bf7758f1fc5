#include "arx/ed/accmd.h"

#include "arx/rx/rxdict.h"
#include "base/text.h"

#include <algorithm>

using veltora::base::compareNoCase;

ACRX_DEFINE_MEMBERS(AcEdCommand, AcRxObject, nullptr, nullptr)
ACRX_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject, nullptr, nullptr)

AcEdCommand::AcEdCommand(std::wstring group, std::wstring global, std::wstring local, Adesk::Int32 flags,
                         AcRxFunctionPtr function)
    : m_group(std::move(group)),
      m_global(std::move(global)),
      m_local(std::move(local)),
      m_flags(flags),
      m_function(function) {}

namespace {
bool isEmpty(const ACHAR* text) { return !text || !*text; }
bool isGlobal(const AcEdCommand& command, const ACHAR* name) {
  return compareNoCase(command.globalName(), name) == 0;
}
bool isLocal(const AcEdCommand& command, const ACHAR* name) {
  return compareNoCase(command.localName(), name) == 0;
}
}  // namespace

AcEdCommandStack::Group* AcEdCommandStack::find(const ACHAR* group) {
  for (Group& candidate : m_groups) {
    if (group && compareNoCase(candidate.name, group) == 0) return &candidate;
  }
  return nullptr;
}

Acad::ErrorStatus AcEdCommandStack::addCommand(const ACHAR* group, const ACHAR* globalName,
                                               const ACHAR* localName, Adesk::Int32 flags,
                                               AcRxFunctionPtr function) {
  if (isEmpty(group) || isEmpty(globalName) || !function) return Acad::eInvalidInput;
  const ACHAR* const local = isEmpty(localName) ? globalName : localName;
  Group* owner = find(group);
  if (!owner) owner = &m_groups.emplace_back(Group{group, {}});
  for (const auto& command : owner->commands) {
    if (isGlobal(*command, globalName) || isLocal(*command, local)) return Acad::eDuplicateKey;
  }
  owner->commands.push_back(std::make_unique<AcEdCommand>(owner->name, globalName, local, flags, function));
  return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const ACHAR* group, const ACHAR* globalName) {
  Group* owner = find(group);
  if (!owner || isEmpty(globalName)) return Acad::eKeyNotFound;
  const auto removed =
      std::erase_if(owner->commands, [&](const auto& command) { return isGlobal(*command, globalName); });
  return removed ? Acad::eOk : Acad::eKeyNotFound;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const ACHAR* group) {
  const Group* owner = find(group);
  if (!owner) return Acad::eKeyNotFound;
  m_groups.erase(m_groups.begin() + (owner - m_groups.data()));
  return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::popGroupToTop(const ACHAR* group) {
  Group* owner = find(group);
  if (!owner) return Acad::eKeyNotFound;
  std::rotate(m_groups.begin(), m_groups.begin() + (owner - m_groups.data()),
              m_groups.begin() + (owner - m_groups.data()) + 1);
  return Acad::eOk;
}

const AcEdCommand* AcEdCommandStack::lookupCmd(const ACHAR* name) const {
  if (const AcEdCommand* command = lookupGlobalCmd(name)) return command;
  return lookupLocalCmd(name);
}

const AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const ACHAR* name) const {
  for (const AcEdCommand* command : commands()) {
    if (name && isGlobal(*command, name)) return command;
  }
  return nullptr;
}

const AcEdCommand* AcEdCommandStack::lookupLocalCmd(const ACHAR* name) const {
  for (const AcEdCommand* command : commands()) {
    if (name && isLocal(*command, name)) return command;
  }
  return nullptr;
}

std::vector<const AcEdCommand*> AcEdCommandStack::commands() const {
  std::vector<const AcEdCommand*> all;
  for (const Group& group : m_groups) {
    for (const auto& command : group.commands) all.push_back(command.get());
  }
  return all;
}

AcEdCommandStack* acedCommandStack() {
  static AcEdCommandStack* const stack = [] {
    auto* made = new AcEdCommandStack;
    acrxSysRegistry()->atPut(ACAD_REGISTERED_COMMANDS, made);
    return made;
  }();
  return stack;
}

namespace {
// Modules look the stack up by its name in the registry, so it stands there before any of them is loaded.
[[maybe_unused]] const bool g_registered = acedCommandStack() != nullptr;
}  // namespace
