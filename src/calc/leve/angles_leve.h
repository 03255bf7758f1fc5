#pragma once

#include "calc/angles.h"

#include <cmath>

/// Angles of a survey, which are grades.
namespace veltora {

inline constexpr double kTourGrades = 400.0;

inline double radiansDe(double grades) { return grades * kPi / (kTourGrades / 2.0); }
/// a less b, within half a turn.
inline double ecartGrades(double a, double b) { return std::remainder(a - b, kTourGrades); }

}  // namespace veltora
