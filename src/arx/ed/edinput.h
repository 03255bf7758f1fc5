#pragma once

#include "arx/db/resbuf.h"
#include "arx/ed/acutads.h"

#include <cstddef>
#include <string>

// Prompts. Each reads lines from the source until one fits and answers
//   RTNORM   a value was given
//   RTNONE   an empty line
//   RTKWORD  a keyword (or, when arbitrary input is allowed, another text): `acedGetInput` tells it
//   RTCAN    "*Annuler*", the end of the input, or no source
//   RTERROR  wrong arguments
// A line that does not fit gets a French message and the prompt again at an interactive source, and stops a
// script with `base::ScriptError`. A line beginning with "(" is evaluated and its value is the answer.
// Results are changed on RTNORM only. A null prompt is the empty text.

// Bits of `acedInitGet`.
inline constexpr int RSG_NONULL = 1;  ///< an empty line is refused
inline constexpr int RSG_NOZERO = 2;  ///< 0 is refused (integers, reals, distances, angles)
inline constexpr int RSG_NONEG = 4;   ///< negative values are refused (integers, reals, distances)
inline constexpr int RSG_NOLIM = 8;   ///< points outside the limits are taken; they always are
inline constexpr int RSG_DASH = 32;   ///< of the screen only: rubber bands are dashed
inline constexpr int RSG_2D = 64;     ///< distances ignore z
inline constexpr int RSG_OTHER =
    128;  ///< any other text is a keyword; wins over RSG_NONULL, an empty line is ""

/// Sets bits and keywords for the next prompt, which forgets them. `keywords` is a list separated by blanks;
/// a keyword is recognised by its capital letters or by the word up to any letter behind them, whatever the
/// case ("LTscale": "LT", "lts"); without capitals, or in the form "WORD,ABBREVIATION", by the word or the
/// abbreviation. Null for none.
ARX_API int acedInitGet(int bits, const ACHAR* keywords);

/// A point in world coordinates: `x,y`, `x,y,z`, `@dx,dy`, `@dx,dy,dz`, `@distance<angle` or
/// `distance<angle`, angles in degrees (a trailing "g" means grades) counter-clockwise from +X. `@` refers to
/// the base point, without one to the point given last, which `@` alone repeats. Without z it is 0. A line of
/// object snaps in front ("_end", "MIL,INT") pulls the point to the nearest such point of what lies within
/// the pick aperture; "_per" begins at what `@` refers to. Likewise wherever a point is an answer.
ARX_API int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result);
/// The other corner of a rectangle.
ARX_API int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result);
/// A whole number, from -2147483648 to 2147483647.
ARX_API int acedGetInt(const ACHAR* prompt, int* result);
ARX_API int acedGetReal(const ACHAR* prompt, ads_real* result);
/// A distance: a number, or a point seen from the base point, or two points one after the other without a
/// base.
ARX_API int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result);
/// An angle in radians, 0 to 2 pi, counter-clockwise from +X: typed in degrees ("50g" in grades, "1r" in
/// radians), or points as in `acedGetDist`.
ARX_API int acedGetAngle(const ads_point base, const ACHAR* prompt, ads_real* result);
ARX_API int acedGetOrient(const ads_point base, const ACHAR* prompt, ads_real* result);
/// One of the keywords, which is the result in the spelling of the list; at most `size` - 1 characters.
ARX_API int acedGetKword(const ACHAR* prompt, ACHAR* result, std::size_t size = 512);
ARX_API int acedGetKword(const ACHAR* prompt, std::wstring& result);
/// A text. With `cronly` 0 it ends at the first blank. An empty line is the empty text with RTNORM (RTCAN as
/// above).
ARX_API int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, std::size_t size = 512);
ARX_API int acedGetString(int cronly, const ACHAR* prompt, std::wstring& result);
/// The keyword or the text of the latest RTKWORD. RTERROR when there was none.
ARX_API int acedGetInput(ACHAR* result, std::size_t size = 512);
ARX_API int acedGetInput(std::wstring& result);

/// Point given last at any prompt, in world coordinates.
ARX_API void acedSetLastPoint(const ads_point point);

/// 1 when the user asked to stop the job in progress, else 0.
ARX_API int acedUsrBrk();

/// Next key press or point. In a line-driven program a line is taken: an empty one as the Enter key, one of a
/// single character as that key (`type` 2, `result` RTSHORT with its code), a point as a pick (`type` 3,
/// RT3DPOINT), any other as Enter. RTCAN at "*Annuler*" and at the end of the input. `result` is filled in
/// place, no chain.
ARX_API int acedGrRead(int track, int* type, resbuf* result);
