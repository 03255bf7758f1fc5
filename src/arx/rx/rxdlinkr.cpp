#include "arx/rx/rxdlinkr.h"

#include "base/text.h"

#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <filesystem>

namespace base = veltora::base;
namespace fs = std::filesystem;

ACRX_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject, nullptr, nullptr)

struct AcRxDynamicLinker::Module {
  std::wstring name;
  AcRxEntryPoint entry = nullptr;
  void* library = nullptr;  // null for an entry that is linked in
  bool locked = true;
  bool mdiAware = false;
};

namespace {

std::wstring moduleName(const ACHAR* fileName) {
  const std::wstring file = fileName ? fileName : L"";
  return base::fromUtf8(fs::path(base::toUtf8(file)).stem().string());
}

void tellReason(std::wstring* message, const std::wstring& reason) {
  if (message) *message = reason;
}

/// A bare name is looked up beside the program first.
std::string libraryPath(const ACHAR* fileName) {
  const fs::path given = base::toUtf8(fileName);
  if (given.has_parent_path()) return given.string();
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  const fs::path beside = program.parent_path() / given;
  if (!error && fs::exists(beside, error)) return beside.string();
  return fs::exists(given, error) ? fs::absolute(given, error).string() : given.string();
}

std::wstring dlReason() {
  const char* reason = dlerror();
  return reason ? base::fromUtf8(reason) : L"raison inconnue";
}

}  // namespace

AcRxDynamicLinker::AcRxDynamicLinker() = default;
AcRxDynamicLinker::~AcRxDynamicLinker() = default;

AcRxDynamicLinker::Module* AcRxDynamicLinker::find(const ACHAR* name) const {
  const std::wstring wanted = moduleName(name);
  for (const auto& module : m_modules) {
    if (base::compareNoCase(module->name, wanted) == 0) return module.get();
  }
  return nullptr;
}

AcRxDynamicLinker::Module* AcRxDynamicLinker::find(const void* appId) const {
  for (const auto& module : m_modules) {
    if (module.get() == appId) return module.get();
  }
  return nullptr;
}

bool AcRxDynamicLinker::loadModule(const ACHAR* fileName, bool, std::wstring* message) {
  if (!fileName || moduleName(fileName).empty()) return tellReason(message, L"nom de module vide"), false;
  if (find(fileName)) return true;
  auto module = std::make_unique<Module>();
  module->name = moduleName(fileName);
  // What the program is linked with is in the process already, wherever its file was found: never a second
  // copy.
  const std::string file = fs::path(base::toUtf8(fileName)).filename().string();
  module->library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
  if (!module->library) module->library = dlopen(libraryPath(fileName).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module->library) return tellReason(message, dlReason()), false;
  module->entry = reinterpret_cast<AcRxEntryPoint>(dlsym(module->library, "acrxEntryPoint"));
  if (!module->entry) {
    dlclose(module->library);
    return tellReason(message, L"« " + module->name + L" » n'a pas de point d'entrée"), false;
  }
  return start(std::move(module), message);
}

bool AcRxDynamicLinker::registerModule(const ACHAR* name, AcRxEntryPoint entry, std::wstring* message) {
  if (!entry || !name || moduleName(name).empty()) return tellReason(message, L"nom de module vide"), false;
  if (find(name)) return true;
  auto module = std::make_unique<Module>();
  module->name = moduleName(name);
  module->entry = entry;
  return start(std::move(module), message);
}

bool AcRxDynamicLinker::start(std::unique_ptr<Module> module, std::wstring* message) {
  Module& started = *m_modules.emplace_back(std::move(module));
  std::wstring reason = L"« " + started.name + L" » refuse de démarrer";
  bool good = false;
  try {
    good = deliver(started, AcRx::kInitAppMsg) == AcRx::kRetOK;
  } catch (const std::exception& error) {
    reason += L" : " + base::fromUtf8(error.what());
  } catch (...) {
    drop(started);
    throw;
  }
  if (!good) {
    drop(started);
    return tellReason(message, reason), false;
  }
  if (m_loaded) m_loaded(started.name);
  return true;
}

bool AcRxDynamicLinker::unloadModule(const ACHAR* fileName, bool) {
  Module* module = find(fileName);
  if (!module || module->locked) return false;
  if (std::find(m_working.begin(), m_working.end(), module) != m_working.end()) return false;
  const std::wstring name = module->name;
  if (m_unloading) m_unloading(name);
  deliver(*module, AcRx::kUnloadAppMsg);
  drop(*module);
  return true;
}

void AcRxDynamicLinker::unloadAll() {
  while (!m_modules.empty()) {
    Module& last = *m_modules.back();
    try {
      if (m_unloading) m_unloading(last.name);
      deliver(last, AcRx::kUnloadAppMsg);
    } catch (const std::exception&) {
      // The program ends; what a module could not put away is lost either way.
    }
    drop(last);
  }
}

void AcRxDynamicLinker::drop(Module& module) {
  const auto at =
      std::find_if(m_modules.begin(), m_modules.end(), [&](const auto& m) { return m.get() == &module; });
  void* library = module.library;
  m_modules.erase(at);
  if (library) dlclose(library);
}

bool AcRxDynamicLinker::unlockApplication(void* appId) {
  Module* module = find(static_cast<const void*>(appId));
  if (module) module->locked = false;
  return module != nullptr;
}

bool AcRxDynamicLinker::lockApplication(void* appId) {
  Module* module = find(static_cast<const void*>(appId));
  if (module) module->locked = true;
  return module != nullptr;
}

bool AcRxDynamicLinker::isApplicationLocked(const ACHAR* name) const {
  const Module* module = find(name);
  return module && module->locked;
}

bool AcRxDynamicLinker::registerAppMDIAware(void* appId) {
  Module* module = find(static_cast<const void*>(appId));
  if (module) module->mdiAware = true;
  return module != nullptr;
}

bool AcRxDynamicLinker::registerAppNotMDIAware(void* appId) {
  Module* module = find(static_cast<const void*>(appId));
  if (module) module->mdiAware = false;
  return module != nullptr;
}

bool AcRxDynamicLinker::isAppMDIAware(const ACHAR* name) const {
  const Module* module = find(name);
  return module && module->mdiAware;
}

std::vector<std::wstring> AcRxDynamicLinker::loadedModules() const {
  std::vector<std::wstring> names;
  for (const auto& module : m_modules) names.push_back(module->name);
  return names;
}

void* AcRxDynamicLinker::exported(const ACHAR* module, const char* symbol) const {
  const Module* found = find(module);
  return found && found->library ? dlsym(found->library, symbol) : nullptr;
}

AcRx::AppRetCode AcRxDynamicLinker::deliver(Module& module, AcRx::AppMsgCode msg) {
  struct Working {
    std::vector<Module*>& stack;
    ~Working() { stack.pop_back(); }
  };
  m_working.push_back(&module);
  const Working working{m_working};
  return module.entry(msg, &module);
}

AcRx::AppRetCode AcRxDynamicLinker::send(const ACHAR* name, AcRx::AppMsgCode msg) {
  Module* module = find(name);
  return module ? deliver(*module, msg) : AcRx::kRetError;
}

void AcRxDynamicLinker::broadcast(AcRx::AppMsgCode msg) {
  std::exception_ptr first;
  for (const std::wstring& name : loadedModules()) {
    try {
      send(name.c_str(), msg);
    } catch (...) {
      if (!first) first = std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

std::wstring AcRxDynamicLinker::currentModule() const {
  return m_working.empty() ? std::wstring() : m_working.back()->name;
}

void AcRxDynamicLinker::setListeners(std::function<void(const std::wstring&)> loaded,
                                     std::function<void(const std::wstring&)> unloading) {
  m_loaded = std::move(loaded);
  m_unloading = std::move(unloading);
}

AcRxDynamicLinker* acrxDynamicLinkerPtr() {
  static auto* const linker = new AcRxDynamicLinker;
  return linker;
}

bool acrxLoadModule(const ACHAR* fileName, bool printit, bool) {
  return acrxDynamicLinker->loadModule(fileName, printit);
}

bool acrxUnloadModule(const ACHAR* fileName, bool) { return acrxDynamicLinker->unloadModule(fileName); }
