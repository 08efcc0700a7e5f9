// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/geoposition.h"

#include <QString>

#include <optional>

/// Positions as operators write them.
namespace PositionText {

/// The middle of the square that a Maidenhead locator of 4, 6 or 8 characters names, such as GG66, GG66rp or
/// GG66rp25, in capitals or not. Nothing when the text is no such locator.
std::optional<GeoPosition> positionOfLocator(const QString &locator);

/// The six characters of the square that holds the position.
QString locatorOf(const GeoPosition &position);

/// Degrees, -90 to 90 and -180 to 180. "-23.5", "23,5 S", "S 23 30" and "23°30'00" S" are the same. Nothing
/// when the text is no such coordinate.
std::optional<double> latitudeOf(const QString &text);
std::optional<double> longitudeOf(const QString &text);

/// Degrees with a sign and four decimals at most, which is 11 m.
QString textOf(double degrees);

} // namespace PositionText
