// SPDX-License-Identifier: MIT
#include "stationmap/stationprojection.h"

#include <QtMath>

#include <cmath>

namespace {

double dot(const UnitVector &a, const UnitVector &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

} // namespace

StationProjection::StationProjection(const GeoPosition &station, const QPointF &centre, double radius)
    : m_east(unitVectorOf({0.0, station.longitude + 90.0})), m_up(unitVectorOf(station)), m_centre(centre),
      m_radius(radius)
{
    // Ninety degrees further along the meridian; over the pole this is the other side, as it should be.
    m_north = unitVectorOf({station.latitude + 90.0, station.longitude});
}

double StationProjection::Local::angle() const
{
    return std::atan2(std::hypot(east, north), up);
}

StationProjection::Local StationProjection::localOf(const UnitVector &place) const
{
    return {dot(place, m_east), dot(place, m_north), dot(place, m_up)};
}

StationProjection::Leg StationProjection::legTo(const UnitVector &place) const
{
    const Local local = localOf(place);
    const double bearing = qRadiansToDegrees(std::atan2(local.east, local.north));
    return {bearing < 0.0 ? bearing + 360.0 : bearing, local.angle() * earthRadiusKm};
}

QPointF StationProjection::pixelOf(const UnitVector &place) const
{
    const Local local = localOf(place);
    const double sideways = std::hypot(local.east, local.north);
    if (sideways == 0.0)
        return local.up > 0.0 ? m_centre : m_centre - QPointF(0.0, m_radius);
    const double scale = std::atan2(sideways, local.up) / M_PI * m_radius / sideways;
    return m_centre + QPointF(local.east, -local.north) * scale;
}

QPointF StationProjection::pixelAt(double bearing, double distanceKm) const
{
    const double angle = qDegreesToRadians(bearing);
    return m_centre + QPointF(std::sin(angle), -std::cos(angle)) * (distanceKm / farthestKm * m_radius);
}
