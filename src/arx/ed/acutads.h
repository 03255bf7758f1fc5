#pragma once

#include "arx/adesk.h"
#include "base/format.h"

#include <string>

/// Prints a text as it stands.
ARX_API int acedPrompt(const ACHAR* text);
ARX_API int acedPrompt(const std::wstring& text);

/// Prints a text in printf form. Arguments as in `base::formater`: numbers, `const ACHAR*`, `std::wstring`.
template <class... Args>
int acutPrintf(const ACHAR* format, const Args&... args) {
  return acedPrompt(veltora::base::formater(std::wstring(format), args...));
}

/// Shows a message box with one button, or prints the text when there is no message box. Result RTNORM.
ARX_API int acedAlert(const ACHAR* text);

/// Matches a text with a pattern: `*` any run, `?` one character, `#` a digit, `@` a letter, `.` neither of
/// both, `[abc]` `[a-z]` `[~abc]`, a leading `~` negates, a comma separates alternatives, a backquote takes
/// the next character as it is. Case counts. @return RTNORM when it matches, else RTERROR
ARX_API int acutWcMatch(const ACHAR* text, const ACHAR* pattern);

// Points and names of the command-line layer.
using ads_matrix = ads_real[4][4];
inline void ads_point_set(const ads_point from, ads_point to) {
  to[0] = from[0], to[1] = from[1], to[2] = from[2];
}
inline void ads_name_set(const ads_name from, ads_name to) { to[0] = from[0], to[1] = from[1]; }
inline void ads_name_clear(ads_name name) { name[0] = name[1] = 0; }
inline bool ads_name_nil(const ads_name name) { return name[0] == 0 && name[1] == 0; }
inline bool ads_name_equal(const ads_name a, const ads_name b) { return a[0] == b[0] && a[1] == b[1]; }
