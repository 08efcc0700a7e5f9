// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/map/azimuthalpicture.h"
#include "widgets/map/azimuthalscene.h"

#include <QImage>

#include <optional>
#include <vector>

class CVextralAntenna;
class QPainter;
class QWidget;

/// Paints the map: a compass over the map image, or a row of captions. It keeps what is costly from one paint
/// to the next, and the compass radius, since the next paint draws much of the map at the scale of the last
/// one.
class AzimuthalView
{
public:
    struct Content
    {
        std::vector<AzimuthalScene::Antenna> antennas;
        /// Position of the current antenna, -1 without one.
        int current = -1;
        /// Width of the map image in compass diameters.
        double zoom = 1.0;
    };

    /// What the map shows of an antenna and its display. The arrow of the current antenna follows the drawn
    /// direction while the antenna turns or is animated.
    static AzimuthalScene::Antenna seen(const CVextralAntenna &antenna, const QWidget &display,
                                        bool isCurrent, bool isAnimated);

    /// Paints the captions of a row of displays.
    void paintRow(QPainter &painter, const QRect &area, const Content &content) const;
    /// Paints the compass, `size` pixels large. True asks to paint it once more: its radius has changed.
    bool paintMap(QPainter &painter, const QSize &size, const Content &content);
    /// Reads the map image again before the next paint.
    void reloadMap();

private:
    std::optional<QImage> m_mapImage; ///< None until it is painted for the first time.
    double m_radius = 0.0;
    AzimuthalPicture m_picture;
};
