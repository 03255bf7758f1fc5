#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <string>

namespace veltora {

/// A user choice that outlives a run: one value of "config.ini" in the installation directory. It is read
/// once, when the object is made. The code that uses it reads and writes `valeur`; what is written there
/// lasts until the end of the run and does not reach the file.
template <class T>
class ConfigVariable_base {
public:
  explicit ConfigVariable_base(std::string nomCle) : cle(std::move(nomCle)) {}
  virtual ~ConfigVariable_base() = default;

  std::string cle;  ///< "section.name"
  T valeur{};
};

/// A variable declared as a static object. When the file has no value under its key, or one that does not
/// convert to T, the value is `defaut`, and the file is written at once with it. Failing to write is no
/// error. T is `AcGePoint2d` or `int`.
template <class T>
class Static_ConfigVariable : public ConfigVariable_base<T> {
public:
  Static_ConfigVariable(std::string nomCle, const T& defaut);
};

extern template class VELTORA_API Static_ConfigVariable<AcGePoint2d>;
extern template class VELTORA_API Static_ConfigVariable<int>;

}  // namespace veltora
