#pragma once

namespace veltora {

// The codes that a point may bear.
inline constexpr int kSmallestCode = 1;
inline constexpr int kLargestCode = 9999;
/// Of what a computation places, unless the user chooses another.
inline constexpr int kStationCode = 100;

constexpr bool isPointCode(int code) { return code >= kSmallestCode && code <= kLargestCode; }

/// The code itself, or the one that stands for it when it lies outside the range.
constexpr int codeOuDefaut(int code, int defaut = kSmallestCode) { return isPointCode(code) ? code : defaut; }

}  // namespace veltora
