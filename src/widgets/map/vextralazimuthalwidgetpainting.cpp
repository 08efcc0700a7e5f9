#include "widgets/map/vextralazimuthalwidget.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/azimuthalgeometry.h"
#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/azimuthalpicture.h"
#include "widgets/map/azimuthalscene.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QPainter>

// What the map shows: the scene that its antennas make, or a row of captions.

namespace {

constexpr double largestPixelRatio = 4.0;

/// Device pixels per widget pixel of what is painted on: the screen's, or those of a picture being taken.
double pixelRatioOf(const QPainter &painter)
{
    return qBound(1.0, painter.deviceTransform().m11(), largestPixelRatio);
}

} // namespace

void CVextralAzimuthalWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isExtended())
        paintMap(painter);
    else
        paintRow(painter);
}

void CVextralAzimuthalWidget::paintRow(QPainter &painter)
{
    m_labelColor = Qt::white;
    painter.fillRect(rect(), Qt::darkCyan);
    painter.setPen(m_labelColor);
    for (const Shown &shown : m_shown) {
        if (!shown.antenna)
            continue;
        const CVextralAntenna &antenna = *shown.antenna;
        QString caption = QStringLiteral("Fixed");
        if (!antenna.isEnabled())
            caption = QStringLiteral("Off");
        else if (antenna.isRotorConnected())
            caption = QLatin1Char('R') + QString::number(antenna.rotorId() + 1);
        painter.drawText(AzimuthalGeometry::rowBaseline(shown.display->geometry()), caption);
    }
}

void CVextralAzimuthalWidget::paintMap(QPainter &painter)
{
    m_labelColor = Qt::black;
    const double previousRadius = m_radius;
    const AzimuthalGeometry::Compass compass = AzimuthalGeometry::compassIn(size());
    m_centreX = compass.centre.x();
    m_centreY = compass.centre.y();
    m_radius = compass.radius;

    painter.drawPixmap(0, 0, m_picture->of(scene(painter, AzimuthalGeometry::scaleOf(previousRadius))));

    // Much of this was drawn at the scale of the previous radius.
    if (m_radius != previousRadius)
        update();
}

AzimuthalScene CVextralAzimuthalWidget::scene(const QPainter &painter, double scale)
{
    // Not before: a window without a map opens sooner and smaller.
    if (!m_mapImage)
        m_mapImage = AzimuthalMapImage::load(AzimuthalMapImage::installedPath());

    AzimuthalScene scene;
    scene.size = size();
    scene.pixelRatio = pixelRatioOf(painter);
    scene.compass = {QPointF(m_centreX, m_centreY), m_radius};
    scene.scale = scale;
    scene.zoom = m_zoom;
    scene.mapImage = *m_mapImage;
    scene.font = painter.font();
    scene.hasBoldLabels = m_boldLabels;
    scene.colors = {m_labelColor, m_scaleTextColor, m_hubColor, m_markerColor, m_markerTextColor};
    scene.antennas.reserve(m_shown.size());
    for (const Shown &shown : m_shown) {
        if (!shown.antenna)
            continue;
        const CVextralAntenna &antenna = *shown.antenna;
        if (&antenna == m_currentAntenna)
            scene.current = static_cast<int>(scene.antennas.size());
        scene.antennas.push_back({antenna.index(), antenna.rotorId(), antenna.isEnabled(),
                                  antenna.isRotorConnected(), antenna.rotorStatusFlag(), arrowOf(antenna),
                                  antenna.color(), shownAzimuthOf(antenna), antenna.angle(),
                                  antenna.hasPendingTarget() && isKnownAngle(antenna.target()),
                                  antenna.target(), shown.display->geometry(), shown.display->isVisible()});
    }
    return scene;
}

QSvgRenderer *CVextralAzimuthalWidget::arrowOf(const CVextralAntenna &antenna) const
{
    const bool isCurrent = &antenna == m_currentAntenna;
    if (antenna.isRotorConnected())
        return isCurrent || antenna.rotorStatusFlag() ? antenna.bodyRenderer() : antenna.arrowRenderer();
    QSvgRenderer *fixedArrow = isCurrent ? antenna.thirdRenderer() : antenna.secondRenderer();
    return fixedArrow ? fixedArrow : antenna.bodyRenderer();
}

double CVextralAzimuthalWidget::shownAzimuthOf(const CVextralAntenna &antenna) const
{
    const bool isAnimated = m_animationTimer.isActive() && &antenna == m_animatedAntenna;
    const bool moves = antenna.isRotating() || isAnimated;
    return &antenna == m_currentAntenna && moves ? antenna.rotation() : antenna.angle();
}
