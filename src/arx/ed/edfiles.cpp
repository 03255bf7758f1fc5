#include "arx/ed/edfiles.h"

#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"

int acedFindFile(const ACHAR* name, std::wstring& result) {
  if (!name || !*name) return RTERROR;
  const std::wstring found = acdbHostApplicationServices()->findFile(name);
  if (found.empty()) return RTERROR;
  result = found;
  return RTNORM;
}

int acedFindFile(const ACHAR* name, ACHAR* result, std::size_t size) {
  std::wstring found;
  if (!result || size == 0 || acedFindFile(name, found) != RTNORM) return RTERROR;
  if (found.size() >= size) return RTERROR;
  result[found.copy(result, found.size())] = L'\0';
  return RTNORM;
}

int acedGetFileD(const ACHAR* title, const ACHAR* defaultName, const ACHAR* extension, int flags,
                 resbuf* result) {
  if (!result) return RTERROR;
  if (!acedPorts().fileChooser) return RTERROR;
  constexpr int kSave = 1;
  constexpr int kAnyExtension = 4;
  constexpr int kNoQuestion = 32;
  veltora::base::FileRequest request;
  request.title = title ? title : L"";
  request.defaultName = defaultName ? defaultName : L"";
  if (!(flags & kAnyExtension) && extension) request.extension = extension;
  if (extension && *extension) {
    const std::wstring pattern = L"*." + std::wstring(extension);
    request.filter = L"Fichiers " + pattern + L"|" + pattern;
  }
  request.save = (flags & kSave) != 0;
  request.confirmOverwrite = request.save && !(flags & kNoQuestion);
  const auto answer = acedPorts().fileChooser->chooseFile(request);
  if (!answer) return RTCAN;
  result->rbnext = nullptr;
  result->restype = RTSTR;
  acutNewString(answer->path, result->resval.rstring);
  return RTNORM;
}
