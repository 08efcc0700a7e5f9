// SPDX-License-Identifier: MIT
#pragma once

/// A place on the earth in degrees: -90 to 90 to the north, -180 to 180 to the east.
struct GeoPosition
{
    double latitude = 0.0;
    double longitude = 0.0;
};

/// The same place as a point of the unit sphere: x to 0° N 0° E, y to 0° N 90° E, z to the north pole.
struct UnitVector
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

UnitVector unitVectorOf(const GeoPosition &position);

/// On the great circle between two places that are not opposite, in its middle.
UnitVector middleOf(const UnitVector &from, const UnitVector &to);
