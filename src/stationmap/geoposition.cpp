// SPDX-License-Identifier: MIT
#include "stationmap/geoposition.h"

#include <QtMath>

#include <cmath>

UnitVector unitVectorOf(const GeoPosition &position)
{
    const double latitude = qDegreesToRadians(position.latitude);
    const double longitude = qDegreesToRadians(position.longitude);
    const double toAxis = std::cos(latitude);
    return {toAxis * std::cos(longitude), toAxis * std::sin(longitude), std::sin(latitude)};
}

UnitVector middleOf(const UnitVector &from, const UnitVector &to)
{
    const UnitVector sum{from.x + to.x, from.y + to.y, from.z + to.z};
    const double length = std::sqrt(sum.x * sum.x + sum.y * sum.y + sum.z * sum.z);
    return {sum.x / length, sum.y / length, sum.z / length};
}
