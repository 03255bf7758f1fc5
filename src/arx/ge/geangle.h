#pragma once

/// A full turn in radians.
inline constexpr double kTurn = 6.283185307179586;
