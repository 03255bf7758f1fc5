#pragma once

#include "arx/rx/appmsg.h"
#include "arx/rx/rxclass.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Loads modules and hands them the host's messages.
///
/// A module is known by its file name without folder and extension, whatever the case ("veltora"). It is
/// locked until it calls `unlockApplication` while it is initialised; a locked module is only unloaded at the
/// end.
class ARX_API AcRxDynamicLinker : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)
public:
  AcRxDynamicLinker();
  ~AcRxDynamicLinker() override;
  AcRxDynamicLinker(const AcRxDynamicLinker&) = delete;
  AcRxDynamicLinker& operator=(const AcRxDynamicLinker&) = delete;

  /// Loads a shared library and sends it `kInitAppMsg`; true also when it is loaded already. A module whose
  /// entry answers with an error or throws is unloaded again.
  /// @param message why it failed, in French
  bool loadModule(const ACHAR* fileName, bool printit = true, std::wstring* message = nullptr);
  /// The same for an entry that is linked into the program.
  bool registerModule(const ACHAR* name, AcRxEntryPoint entry, std::wstring* message = nullptr);
  /// Sends `kUnloadAppMsg` and lets the library go. False when it is not loaded, locked, or at work.
  bool unloadModule(const ACHAR* fileName, bool printit = true);
  /// Unloads all modules, locked ones too, the last loaded first.
  void unloadAll();

  bool unlockApplication(void* appId);
  bool lockApplication(void* appId);
  [[nodiscard]] bool isApplicationLocked(const ACHAR* name) const;
  bool registerAppMDIAware(void* appId);
  bool registerAppNotMDIAware(void* appId);
  [[nodiscard]] bool isAppMDIAware(const ACHAR* name) const;

  [[nodiscard]] bool isLoaded(const ACHAR* name) const { return find(name) != nullptr; }
  /// Names in order of loading.
  [[nodiscard]] std::vector<std::wstring> loadedModules() const;
  /// What a loaded module exports under a name; null when either is missing. Loads nothing.
  [[nodiscard]] void* exported(const ACHAR* module, const char* symbol) const;

  /// Sends a message to one module. @return the entry's answer, `kRetError` for a module that is not loaded.
  /// What the
  ///         entry throws passes through.
  AcRx::AppRetCode send(const ACHAR* name, AcRx::AppMsgCode msg);
  /// Sends a message to all modules in order of loading; one that throws does not keep it from the others,
  /// and the first thing thrown passes through at the end.
  void broadcast(AcRx::AppMsgCode msg);
  /// Name of the module that is working on a message, empty outside of one.
  [[nodiscard]] std::wstring currentModule() const;

  /// Called behind a module's initialisation and in front of its unloading, for the messages about open
  /// documents.
  void setListeners(std::function<void(const std::wstring&)> loaded,
                    std::function<void(const std::wstring&)> unloading);

private:
  struct Module;
  [[nodiscard]] Module* find(const ACHAR* name) const;
  [[nodiscard]] Module* find(const void* appId) const;
  bool start(std::unique_ptr<Module> module, std::wstring* message);
  AcRx::AppRetCode deliver(Module& module, AcRx::AppMsgCode msg);
  void drop(Module& module);

  std::vector<std::unique_ptr<Module>> m_modules;
  std::vector<Module*> m_working;  // innermost last
  std::function<void(const std::wstring&)> m_loaded;
  std::function<void(const std::wstring&)> m_unloading;
};

ARX_API AcRxDynamicLinker* acrxDynamicLinkerPtr();
#define acrxDynamicLinker acrxDynamicLinkerPtr()

/// Shorthands of the linker's operations.
ARX_API bool acrxLoadModule(const ACHAR* fileName, bool printit = true, bool asCmd = false);
ARX_API bool acrxUnloadModule(const ACHAR* fileName, bool asCmd = false);
