// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalpainting.h"

#include "widgets/map/haloedtext.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QSvgRenderer>

using namespace AzimuthalGeometry;

namespace {

constexpr QColor topColor(230, 230, 236);
constexpr QColor bottomColor(140, 140, 140);

// Below dark lines, so that they show on a dark map.
constexpr QColor tickHalo(255, 255, 255, 90);
constexpr QColor targetHalo(255, 255, 255, 110);
constexpr double haloWidth = 2.0;

constexpr double wideTick = 2.0;
constexpr double narrowTick = 1.0;

constexpr double targetWidth = 1.5;
// Of a dashed line: a dash with its square ends, and what is left of the gap, in line widths.
constexpr double dashLength = 5.0;
constexpr double gapLength = 1.0;
constexpr double squareEnd = 0.5;
constexpr int targetShade = 200;
constexpr double targetEnd = -32.0;

const QRectF arrowRect(0.0, 0.0, 25.0, 200.0);
constexpr double hubRadius = 10.0;
constexpr double fixedMarkerPen = 1.0;
constexpr double rotorMarkerPen = 10.0;

QRectF viewOf(const AzimuthalScene &scene)
{
    return QRectF(QPointF(), scene.size);
}

QFont sized(QFont font, int pixels, bool bold)
{
    font.setPixelSize(pixels);
    font.setWeight(bold ? QFont::Bold : QFont::Normal);
    return font;
}

QString numbered(const char *prefix, int zeroBased)
{
    return QLatin1String(prefix) + QString::number(zeroBased + 1);
}

void paintTicks(QPainter &painter, const std::vector<QLineF> &ticks, double width)
{
    const int count = static_cast<int>(ticks.size());
    painter.setPen(QPen(tickHalo, width + haloWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.drawLines(ticks.data(), count);
    painter.setPen(QPen(Qt::darkBlue, width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.drawLines(ticks.data(), count);
}

/// The light rim of a target's line, below its dashes only.
QPen targetHaloPen()
{
    const double lineWidths = targetWidth / (targetWidth + haloWidth);
    QPen pen(targetHalo, targetWidth + haloWidth, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({dashLength * lineWidths, gapLength * lineWidths});
    pen.setDashOffset(squareEnd * lineWidths);
    return pen;
}

void paintTarget(QPainter &painter, const AzimuthalScene &scene, const AzimuthalScene::Antenna &antenna)
{
    const QLineF line(scene.compass.centre, pointAtRing(scene.compass, antenna.target, targetEnd));
    painter.setPen(targetHaloPen());
    painter.drawLine(line);
    painter.setPen(QPen(antenna.color.darker(targetShade), targetWidth, Qt::DashLine));
    painter.drawLine(line);
}

void paintArrow(QPainter &painter, const AzimuthalScene &scene, const AzimuthalScene::Antenna &antenna,
                double scale)
{
    if (!antenna.arrow || scale == 0.0)
        return;
    painter.save();
    painter.setTransform(arrowTransform(scene.compass, antenna.azimuth, scale), true);
    antenna.arrow->render(&painter, arrowRect);
    painter.restore();
}

void paintMarker(QPainter &painter, const AzimuthalScene &scene, const QPointF &centre, const QString &text)
{
    const int radius = markerRadius(scene.scale);
    if (radius > 0)
        painter.drawEllipse(centre, radius, radius);
    painter.setPen(scene.colors.markerText);
    painter.drawText(markerBaseline(centre, QFontMetricsF(painter.font()).horizontalAdvance(text)), text);
}

} // namespace

namespace AzimuthalPainting {

void paintBackground(QPainter &painter, const AzimuthalScene &scene)
{
    QLinearGradient gradient(0.0, 0.0, 0.0, scene.size.height());
    gradient.setColorAt(0.0, topColor);
    gradient.setColorAt(1.0, bottomColor);
    // At a fractional scale the picture is up to a pixel larger than the view.
    painter.fillRect(viewOf(scene).adjusted(0, 0, 1, 1), gradient);
}

void paintMapImage(QPainter &painter, const AzimuthalScene &scene, const AzimuthalMapImage::Piece &piece)
{
    AzimuthalMapImage::paint(painter, piece, QRect(QPoint(), scene.size));
}

void paintScale(QPainter &painter, const AzimuthalScene &scene)
{
    paintTicks(painter, tenDegreeTicks(scene.compass, scene.scale), wideTick);
    paintTicks(painter, fiveDegreeTicks(scene.compass, scene.scale), narrowTick);
}

void paintTargetsAndFixedArrows(QPainter &painter, const AzimuthalScene &scene)
{
    for (std::size_t i = 0; i < scene.antennas.size(); ++i) {
        const AzimuthalScene::Antenna &antenna = scene.antennas[i];
        if (!antenna.isEnabled)
            continue;
        if (antenna.hasTarget)
            paintTarget(painter, scene, antenna);
        if (!antenna.isOnRotor && static_cast<int>(i) != scene.current)
            paintArrow(painter, scene, antenna, scaleOf(scene.compass.radius));
    }
}

void paintRotorArrows(QPainter &painter, const AzimuthalScene &scene)
{
    for (std::size_t i = 0; i < scene.antennas.size(); ++i) {
        const AzimuthalScene::Antenna &antenna = scene.antennas[i];
        if (antenna.isEnabled && antenna.isOnRotor && static_cast<int>(i) != scene.current)
            paintArrow(painter, scene, antenna, scene.scale);
    }
}

void paintCurrentArrow(QPainter &painter, const AzimuthalScene &scene)
{
    if (scene.current >= 0 && scene.antennas[scene.current].isEnabled)
        paintArrow(painter, scene, scene.antennas[scene.current], scaleOf(scene.compass.radius));
}

void paintHub(QPainter &painter, const AzimuthalScene &scene)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(scene.colors.hub);
    painter.drawEllipse(scene.compass.centre, hubRadius, hubRadius);
}

void paintCompassLabels(QPainter &painter, const AzimuthalScene &scene, HaloedText &texts)
{
    texts.setStyle(sized(scene.font, labelFontSize(scene.compass.radius), scene.hasBoldLabels),
                   scene.colors.scaleText, scene.pixelRatio);
    for (const CompassLabel &label : compassLabels(scene.compass, scene.scale))
        texts.paint(painter, baselineOf(label, texts.width(label.text), texts.height()), label.text,
                    viewOf(scene));
}

void paintMarkers(QPainter &painter, const AzimuthalScene &scene)
{
    painter.setFont(sized(scene.font, markerFontSize(scene.scale), scene.hasBoldLabels));
    painter.setBrush(scene.colors.markers);
    for (const AzimuthalScene::Antenna &antenna : scene.antennas) {
        if (!antenna.isEnabled)
            continue;
        if (antenna.rotorId < 0) {
            painter.setPen(QPen(scene.colors.markerText, fixedMarkerPen));
            paintMarker(painter, scene,
                        fixedMarkerCentre(scene.compass, scene.scale, antenna.angle, antenna.index),
                        numbered("A", antenna.index));
        } else if (antenna.isRotorActive) {
            painter.setPen(QPen(scene.colors.markers, rotorMarkerPen));
            paintMarker(painter, scene, scene.compass.centre, numbered("R", antenna.rotorId));
        }
    }
}

void paintCaptions(QPainter &painter, const AzimuthalScene &scene, HaloedText &texts)
{
    texts.setStyle(sized(scene.font, captionFontSize(scene.compass.radius), scene.hasBoldLabels),
                   scene.colors.captions, scene.pixelRatio);
    for (std::size_t i = 0; i < scene.antennas.size(); ++i) {
        const AzimuthalScene::Antenna &antenna = scene.antennas[i];
        if (!antenna.isDisplayVisible)
            continue;
        const int position = static_cast<int>(i);
        const QString name = numbered("Antenna ", position);
        texts.paint(painter, nameBaseline(antenna.display, position, texts.width(name)), name, viewOf(scene));
        if (antenna.isOnRotor) {
            const QString rotor = numbered("R", antenna.rotorId);
            texts.paint(painter, rotorBaseline(antenna.display, texts.width(rotor), texts.height()), rotor,
                        viewOf(scene));
        }
    }
}

} // namespace AzimuthalPainting
