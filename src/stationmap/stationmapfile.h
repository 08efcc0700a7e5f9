// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/stationmap.h"

#include <QByteArray>

#include <optional>

/// A station's map as a PNG file, which may also hold what it was drawn for.
namespace StationMapFile {

/// Twice what the map widget shows of it at its usual size: shrunk by half it stays sharp there, and on a
/// fine screen it shows pixel by pixel.
constexpr int usualSide = 1360;

/// `drawnFor` is what read() returns later; none for a map of no particular station. Touches nothing but its
/// arguments, so it may run in any thread.
QByteArray encoded(const QImage &drawing, const std::optional<StationMap> &drawnFor);

/// None when there is no map with a station at `path`.
std::optional<StationMap> read(const QString &path);

} // namespace StationMapFile
