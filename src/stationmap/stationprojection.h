// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/geoposition.h"

#include <QPointF>

/// The azimuthal equidistant projection about a station: north is up, bearings and distances from the station
/// are true, and the rim is the opposite point of the earth, which is a sphere of 6371 km here. At a pole
/// "up" is the direction that the station's own longitude gives it: away from that meridian at the north
/// pole, along it at the south pole.
class StationProjection
{
public:
    static constexpr double earthRadiusKm = 6371.0;
    /// To the opposite point, the farthest there is.
    static constexpr double farthestKm = 3.14159265358979323846 * earthRadiusKm;

    /// `centre` and `radius` of the disc in pixels.
    StationProjection(const GeoPosition &station, const QPointF &centre, double radius);

    QPointF centre() const { return m_centre; }
    double radius() const { return m_radius; }

    /// From the station along the great circle. The bearing in degrees, 0 to below 360; 0 for the station's
    /// own place.
    struct Leg
    {
        double bearing = 0.0;
        double distanceKm = 0.0;
    };
    Leg legTo(const UnitVector &place) const;

    /// For the opposite point, which is the whole rim, some point of the rim.
    QPointF pixelOf(const UnitVector &place) const;
    QPointF pixelAt(double bearing, double distanceKm) const;

private:
    /// As seen by the station: towards east, north and the zenith.
    struct Local
    {
        double east = 0.0;
        double north = 0.0;
        double up = 0.0;
        /// Radians from the station to the place.
        double angle() const;
    };
    Local localOf(const UnitVector &place) const;

    UnitVector m_east;
    UnitVector m_north;
    UnitVector m_up;
    QPointF m_centre;
    double m_radius;
};
