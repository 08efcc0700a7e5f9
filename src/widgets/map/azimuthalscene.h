// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/map/azimuthalgeometry.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRect>
#include <QSize>

#include <vector>

class QSvgRenderer;

/// All that the picture of the azimuthal map shows, as one value: scenes that compare equal look equal.
/// Azimuths are compass degrees, sizes and positions widget pixels.
struct AzimuthalScene
{
    struct Antenna
    {
        int index = 0;
        int rotorId = -1;
        bool isEnabled = false;
        /// On a rotor that its box has.
        bool isOnRotor = false;
        /// The box has that rotor selected.
        bool isRotorActive = false;
        /// Not owned. The antenna draws its pictures anew with every colour.
        QSvgRenderer *arrow = nullptr;
        QColor color;
        /// Where the arrow points.
        double azimuth = 0.0;
        /// The azimuth of a fixed antenna's marker.
        double angle = 0.0;
        bool hasTarget = false;
        double target = 0.0;
        QRect display;
        bool isDisplayVisible = false;

        bool operator==(const Antenna &other) const;
    };

    struct Colors
    {
        QColor captions;
        QColor scaleText;
        QColor hub;
        QColor markers;
        QColor markerText;

        bool operator==(const Colors &other) const;
    };

    QSize size;
    /// Device pixels per widget pixel.
    double pixelRatio = 1.0;
    AzimuthalGeometry::Compass compass;
    /// The radius of the previous paint.
    double scale = 0.0;
    double zoom = 1.0;
    QImage mapImage;
    QFont font;
    bool hasBoldLabels = true;
    Colors colors;
    std::vector<Antenna> antennas;
    /// Position of the current antenna, -1 without one.
    int current = -1;

    bool operator==(const AzimuthalScene &other) const;
    /// Whether the same part of the map image is visible at the same place.
    bool hasSameMap(const AzimuthalScene &other) const;
    /// The part of the scene that does not change while the current antenna turns.
    AzimuthalScene withoutCurrentAzimuth() const;
};
