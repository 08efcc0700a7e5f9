// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/geoposition.h"
#include "stationmap/landoutlines.h"
#include "stationmap/stationprojection.h"

#include <QImage>
#include <QString>

/// An azimuthal map of the whole earth about a station: land and sea, meridians and parallels, bearings and
/// distances, and a caption below the middle.
struct StationMap
{
    GeoPosition station;
    QString caption; ///< None when empty.

    /// Square, transparent outside the disc; `side` in pixels, at least 1. Touches nothing but its arguments,
    /// so it may run in any thread.
    QImage drawn(const std::vector<Outline> &land, int side) const;

    /// The disc that such an image shows.
    static StationProjection projection(const GeoPosition &station, int side);
};
