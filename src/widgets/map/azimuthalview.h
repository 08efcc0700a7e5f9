#pragma once

#include "widgets/map/azimuthalpicture.h"
#include "widgets/map/azimuthalscene.h"

#include <QImage>

#include <optional>
#include <vector>

class CVextralAntenna;
class QPainter;
class QWidget;

/// How the map looks: a compass over the map image, or a row of captions. It keeps from one paint to the next
/// what is costly, and the compass radius, whose scale the next paint still draws much of the map at.
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

    /// What is to be seen of an antenna and of its display. The arrow of the current antenna follows the
    /// drawn direction while the antenna turns or is animated.
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
