// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

// Whole degrees of a direction. NaN, infinities and values beyond the range of int count as 0, since settings
// files and serial lines may contain anything.

inline bool isUsableAngle(double degrees)
{
    return std::isfinite(degrees) && std::abs(degrees) < 1e6;
}

/// A failed reading, or no target.
constexpr double unknownAngle = -1.0;

inline bool isKnownAngle(double degrees)
{
    return degrees > unknownAngle;
}

/// Truncated toward zero.
inline int truncatedDegrees(double degrees)
{
    return isUsableAngle(degrees) ? static_cast<int>(degrees) : 0;
}

/// Rounded, halves away from zero.
inline int roundedDegrees(double degrees)
{
    return isUsableAngle(degrees) ? static_cast<int>(std::lround(degrees)) : 0;
}

/// Folded into 0..359 by adding or subtracting 360 once; callers stay within one turn of that range.
inline int foldedDegrees(int degrees)
{
    if (degrees >= 360)
        return degrees - 360;
    return degrees < 0 ? degrees + 360 : degrees;
}

/// The same for an angle, into [0, 360).
inline double foldedAngle(double degrees)
{
    if (degrees >= 360.0)
        return degrees - 360.0;
    return degrees < 0.0 ? degrees + 360.0 : degrees;
}

/// Rounded and folded for a display; 0 for values more than one turn outside.
inline int shownDegrees(double degrees)
{
    const int folded = foldedDegrees(roundedDegrees(degrees));
    return folded >= 0 && folded < 360 ? folded : 0;
}
