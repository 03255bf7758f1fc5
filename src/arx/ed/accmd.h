#pragma once

#include "arx/rx/rxclass.h"

#include <memory>
#include <string>
#include <vector>

using AcRxFunctionPtr = void (*)();

inline constexpr Adesk::Int32 ACRX_CMD_MODAL = 0x0;
inline constexpr Adesk::Int32 ACRX_CMD_TRANSPARENT = 0x1;
inline constexpr Adesk::Int32 ACRX_CMD_USEPICKSET = 0x2;
/// Runs outside of any document: it may open and close documents, and is no undo step.
inline constexpr Adesk::Int32 ACRX_CMD_SESSION = 0x00200000;
/// Is no undo step.
inline constexpr Adesk::Int32 ACRX_CMD_NO_UNDO_MARKER = 0x01000000;

/// A registered command.
class ARX_API AcEdCommand : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcEdCommand)
public:
  AcEdCommand(std::wstring group, std::wstring global, std::wstring local, Adesk::Int32 flags,
              AcRxFunctionPtr function);
  [[nodiscard]] const ACHAR* groupName() const { return m_group.c_str(); }
  [[nodiscard]] const ACHAR* globalName() const { return m_global.c_str(); }
  [[nodiscard]] const ACHAR* localName() const { return m_local.c_str(); }
  [[nodiscard]] Adesk::Int32 commandFlags() const { return m_flags; }
  [[nodiscard]] AcRxFunctionPtr functionAddr() const { return m_function; }

private:
  std::wstring m_group, m_global, m_local;
  Adesk::Int32 m_flags;
  AcRxFunctionPtr m_function;
};

/// All registered commands, group by group in order of registration. Names compare ignoring case.
class ARX_API AcEdCommandStack : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcEdCommandStack)
public:
  /// `eInvalidInput` without group, name or function, `eDuplicateKey` when the group has the name already.
  Acad::ErrorStatus addCommand(const ACHAR* group, const ACHAR* globalName, const ACHAR* localName,
                               Adesk::Int32 flags, AcRxFunctionPtr function);
  /// `eKeyNotFound` when there is no such group or command.
  Acad::ErrorStatus removeCmd(const ACHAR* group, const ACHAR* globalName);
  Acad::ErrorStatus removeGroup(const ACHAR* group);
  /// The group is searched first from then on.
  Acad::ErrorStatus popGroupToTop(const ACHAR* group);
  /// The first command of this global or local name; null when there is none.
  [[nodiscard]] const AcEdCommand* lookupCmd(const ACHAR* name) const;
  [[nodiscard]] const AcEdCommand* lookupGlobalCmd(const ACHAR* name) const;
  [[nodiscard]] const AcEdCommand* lookupLocalCmd(const ACHAR* name) const;
  /// In order of registration within their groups; a group that was popped to the top comes first.
  [[nodiscard]] std::vector<const AcEdCommand*> commands() const;

private:
  struct Group {
    std::wstring name;
    std::vector<std::unique_ptr<AcEdCommand>> commands;
  };
  [[nodiscard]] Group* find(const ACHAR* group);
  std::vector<Group> m_groups;
};

inline constexpr const ACHAR* ACAD_REGISTERED_COMMANDS = L"ACAD_REGISTERED_COMMANDS";
/// The stack that stands in the registry as "ACAD_REGISTERED_COMMANDS".
ARX_API AcEdCommandStack* acedCommandStack();
#define acedRegCmds acedCommandStack()
