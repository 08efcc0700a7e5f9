// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalview.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "widgets/map/azimuthalgeometry.h"
#include "widgets/map/azimuthalmapimage.h"

#include <QPainter>
#include <QWidget>

namespace {

const QColor rowBackground = Qt::darkCyan;
const QColor rowCaptions = Qt::white;
constexpr bool hasBoldLabels = true;

constexpr double largestPixelRatio = 4.0;

AzimuthalScene::Colors mapColors()
{
    AzimuthalScene::Colors colors;
    colors.captions = Qt::black;
    colors.scaleText = Qt::black;
    colors.hub = Qt::white;
    colors.markers = Qt::white;
    colors.markerText = Qt::black;
    return colors;
}

/// Device pixels per widget pixel of what is painted on: the screen's, or those of a picture being taken.
double pixelRatioOf(const QPainter &painter)
{
    return qBound(1.0, painter.deviceTransform().m11(), largestPixelRatio);
}

QSvgRenderer *arrowOf(const CVextralAntenna &antenna, bool isCurrent)
{
    if (antenna.isRotorConnected()) {
        const bool isLive = antenna.isReadingKnown() && (isCurrent || antenna.rotorStatusFlag());
        return isLive ? antenna.bodyRenderer() : antenna.arrowRenderer();
    }
    QSvgRenderer *fixedArrow = isCurrent ? antenna.thirdRenderer() : antenna.secondRenderer();
    return fixedArrow ? fixedArrow : antenna.bodyRenderer();
}

QString rowCaption(const AzimuthalScene::Antenna &antenna)
{
    if (!antenna.isEnabled)
        return QStringLiteral("Off");
    return antenna.isOnRotor ? QLatin1Char('R') + QString::number(antenna.rotorId + 1)
                             : QStringLiteral("Fixed");
}

} // namespace

AzimuthalScene::Antenna AzimuthalView::seen(const CVextralAntenna &antenna, const QWidget &display,
                                            bool isCurrent, bool isAnimated)
{
    AzimuthalScene::Antenna seen;
    seen.index = antenna.index();
    seen.rotorId = antenna.rotorId();
    seen.isEnabled = antenna.isEnabled();
    seen.isOnRotor = antenna.isRotorConnected();
    seen.isRotorActive = antenna.rotorStatusFlag();
    seen.arrow = arrowOf(antenna, isCurrent);
    seen.color = antenna.color();
    const bool moves = isCurrent && (antenna.isRotating() || isAnimated);
    seen.azimuth = moves ? antenna.rotation() : antenna.angle();
    seen.angle = antenna.angle();
    seen.hasTarget = antenna.hasPendingTarget() && isKnownAngle(antenna.target());
    seen.target = antenna.target();
    seen.display = display.geometry();
    seen.isDisplayVisible = display.isVisible();
    return seen;
}

void AzimuthalView::paintRow(QPainter &painter, const QRect &area, const Content &content) const
{
    painter.fillRect(area, rowBackground);
    painter.setPen(rowCaptions);
    for (const AzimuthalScene::Antenna &antenna : content.antennas)
        painter.drawText(AzimuthalGeometry::rowBaseline(antenna.display), rowCaption(antenna));
}

bool AzimuthalView::paintMap(QPainter &painter, const QSize &size, const Content &content)
{
    // Not before: a window without a map opens sooner and smaller.
    if (!m_mapImage)
        m_mapImage = AzimuthalMapImage::load(AzimuthalMapImage::installedPath());

    AzimuthalScene scene;
    scene.size = size;
    scene.pixelRatio = pixelRatioOf(painter);
    scene.compass = AzimuthalGeometry::compassIn(size);
    scene.scale = AzimuthalGeometry::scaleOf(m_radius);
    scene.zoom = content.zoom;
    scene.mapImage = *m_mapImage;
    scene.font = painter.font();
    scene.hasBoldLabels = hasBoldLabels;
    scene.colors = mapColors();
    scene.antennas = content.antennas;
    scene.current = content.current;
    painter.drawPixmap(0, 0, m_picture.of(scene));

    const bool hasNewRadius = scene.compass.radius != m_radius;
    m_radius = scene.compass.radius;
    return hasNewRadius;
}

void AzimuthalView::reloadMap()
{
    m_mapImage.reset();
}
