// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalgeometry.h"

#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double pi = 3.14159265359;
constexpr double nominalRadius = 171.0;
constexpr int ringMargin = 60 - 20;

constexpr float nominalWidth = 672.0F;
constexpr float nominalDisplayWidth = 90.0F;
constexpr int displayMargin = 20;

constexpr int tickCount = 36;
constexpr double tickDegrees = 10.0;
constexpr double tickInset = -12.0;
constexpr double longTick = 14.0;
constexpr double shortTick = 4.0;

constexpr int labelCount = 12;
constexpr int labelAtTop = 9; // the circle's path begins at the right and runs clockwise
constexpr double nearLabelOffset = 20.0;
constexpr double farLabelOffset = 35.0;

constexpr double markerInset = 5.0;
constexpr double markersPerRadius = 6.0;
constexpr double nominalMarkerRadius = 12.0;
constexpr int markerTextDrop = 4;

constexpr int captionGap = 4;
constexpr int rowCaptionGap = 5;
constexpr int rightHandDisplays = 2;

constexpr int smallestFont = 10;
constexpr double nominalFont = 12.0;
constexpr double nominalCaptionRadius = 221.0;

enum class Column { Left, Right };
enum class Row { Top, Middle, Bottom };
struct Place
{
    Column column;
    Row row;
};

constexpr std::array<Place, 4> fourPlaces = {{{Column::Right, Row::Top},
                                              {Column::Right, Row::Bottom},
                                              {Column::Left, Row::Bottom},
                                              {Column::Left, Row::Top}}};
constexpr std::array<Place, 6> sixPlaces = {{{Column::Right, Row::Top},
                                             {Column::Right, Row::Middle},
                                             {Column::Right, Row::Bottom},
                                             {Column::Left, Row::Bottom},
                                             {Column::Left, Row::Middle},
                                             {Column::Left, Row::Top}}};

double radians(double degrees)
{
    return degrees * pi / 180.0;
}

/// `painterAngle` in degrees.
QPointF pointOnCircle(const QPointF &centre, double painterAngle, double distance)
{
    return {centre.x() + distance * std::cos(radians(painterAngle)),
            centre.y() - distance * std::sin(radians(painterAngle))};
}

double painterAngleOf(double azimuth)
{
    return (360.0 - azimuth) + 90.0;
}

QLineF tickAt(const AzimuthalGeometry::Compass &compass, double painterAngle, double inner, double outer)
{
    return {pointOnCircle(compass.centre, painterAngle, compass.radius + inner),
            pointOnCircle(compass.centre, painterAngle, compass.radius + outer)};
}

template <std::size_t Count>
std::vector<QRect> rectsAt(const std::array<Place, Count> &places, const QSize &size)
{
    const float displayWidth = static_cast<float>(size.width()) * nominalDisplayWidth / nominalWidth;
    const float displayHeight = displayWidth / 60.0F * 30.0F;
    const QSize display(static_cast<int>(displayWidth), static_cast<int>(displayHeight));
    const int right = size.width() - displayMargin - display.width();
    const int bottom = size.height() - displayMargin - display.height();

    std::vector<QRect> rects;
    for (const Place &place : places) {
        const int x = place.column == Column::Right ? right : displayMargin;
        const int y = place.row == Row::Top    ? displayMargin
                    : place.row == Row::Middle ? static_cast<int>(bottom * 0.5)
                                               : bottom;
        rects.emplace_back(QPoint(x, y), display);
    }
    return rects;
}

/// The angles of a circle's path at the labels, the same for all circles and slow to find.
const std::array<double, labelCount> &labelTangents()
{
    static const std::array<double, labelCount> tangents = [] {
        QPainterPath circle;
        circle.addEllipse(QPointF(), nominalRadius, nominalRadius);
        std::array<double, labelCount> found{};
        for (int i = 0; i < labelCount; ++i)
            found[i] =
                circle.angleAtPercent(((labelAtTop + i) % labelCount) / static_cast<double>(labelCount));
        return found;
    }();
    return tangents;
}

int fontSize(double size)
{
    return std::max(smallestFont, static_cast<int>(size));
}

} // namespace

namespace AzimuthalGeometry {

Compass compassIn(const QSize &size)
{
    return {QPointF(size.width() * 0.5, size.height() * 0.5),
            std::min(size.width(), size.height()) * 0.5 - ringMargin};
}

double scaleOf(double radius)
{
    return radius / nominalRadius;
}

QPointF pointAt(const Compass &compass, double azimuth, double distance)
{
    return pointOnCircle(compass.centre, painterAngleOf(azimuth), distance);
}

QPointF pointAtRing(const Compass &compass, double azimuth, double offset)
{
    return pointAt(compass, azimuth, compass.radius + offset);
}

std::vector<QRect> cornerDisplayRects(const QSize &size, int count)
{
    if (count == static_cast<int>(fourPlaces.size()))
        return rectsAt(fourPlaces, size);
    if (count == static_cast<int>(sixPlaces.size()))
        return rectsAt(sixPlaces, size);
    return {};
}

std::vector<QRect> rowDisplayRects(const QSize &size, int count, int rotorCount)
{
    std::vector<QRect> rects;
    if (rotorCount < 1)
        return rects;

    const float cell = static_cast<float>(size.width()) / static_cast<float>(rotorCount);
    for (int i = 0; i < count; ++i)
        rects.emplace_back(static_cast<int>(static_cast<float>(i) * cell), displayMargin,
                           static_cast<int>(cell), size.height() - displayMargin);
    return rects;
}

QRectF mapRect(const Compass &compass, double zoom, const QSize &imageSize)
{
    const double width = 2.0 * compass.radius * zoom;
    const double height = width * (static_cast<double>(imageSize.height()) / imageSize.width());
    return {compass.centre.x() - width / 2.0, compass.centre.y() - height / 2.0, width, height};
}

std::vector<QLineF> tenDegreeTicks(const Compass &compass, double scale)
{
    std::vector<QLineF> ticks;
    for (int i = 0; i < tickCount; ++i) {
        const bool isLong = i > 0 && i % 3 == 0;
        ticks.push_back(
            tickAt(compass, i * tickDegrees, tickInset * scale, (isLong ? longTick : shortTick) * scale));
    }
    return ticks;
}

std::vector<QLineF> fiveDegreeTicks(const Compass &compass, double scale)
{
    std::vector<QLineF> ticks;
    ticks.reserve(tickCount);
    for (int i = 0; i < tickCount; ++i)
        ticks.push_back(tickAt(compass, (i + 0.5) * tickDegrees, tickInset * scale, 0.0));
    return ticks;
}

std::vector<CompassLabel> compassLabels(const Compass &compass, double scale)
{
    std::vector<CompassLabel> labels;
    if (compass.radius == 0.0)
        return labels;

    for (int i = 0; i < labelCount; ++i) {
        const double tangent = labelTangents()[i];
        const bool isNear = tangent >= 270.0;
        const double offset = (isNear ? nearLabelOffset : farLabelOffset) * scale;
        labels.push_back({QString::number(i * 30.0),
                          pointOnCircle(compass.centre, tangent + 90.0, compass.radius + offset), !isNear});
    }
    return labels;
}

QPointF baselineOf(const CompassLabel &label, double textWidth, double fontHeight)
{
    return label.anchor + QPointF(label.centred ? -textWidth / 2.0 : 0.0, fontHeight / 2.0);
}

QPointF fixedMarkerCentre(const Compass &compass, double scale, double azimuth, int index)
{
    return pointAt(compass, azimuth, markerInset * scale + compass.radius / markersPerRadius * (index + 1));
}

int markerRadius(double scale)
{
    return static_cast<int>(nominalMarkerRadius * scale);
}

QPointF markerBaseline(const QPointF &centre, double textWidth)
{
    return centre + QPointF(-textWidth / 2.0, markerTextDrop);
}

QTransform arrowTransform(const Compass &compass, double azimuth, double scale)
{
    QTransform transform;
    transform.translate(compass.centre.x(), compass.centre.y());
    transform.rotate(90.0 - painterAngleOf(azimuth));
    transform.scale(scale, scale);
    return transform;
}

QPointF nameBaseline(const QRect &display, int index, double textWidth)
{
    const double x = index < rightHandDisplays ? display.x() + display.width() - textWidth : display.x();
    return {x, static_cast<double>(display.y() - captionGap)};
}

QPointF rotorBaseline(const QRect &display, double textWidth, double fontHeight)
{
    return {display.x() + display.width() - textWidth,
            display.y() + display.height() - captionGap + fontHeight};
}

QPointF rowBaseline(const QRect &display)
{
    return display.topLeft() - QPoint(0, rowCaptionGap);
}

QPointF shiftInto(const QRectF &view, const QRectF &rect)
{
    const double fromRight = std::min(0.0, view.right() - rect.right());
    const double fromBottom = std::min(0.0, view.bottom() - rect.bottom());
    return {std::max(fromRight, view.left() - rect.left()), std::max(fromBottom, view.top() - rect.top())};
}

int labelFontSize(double radius)
{
    return fontSize(radius * nominalFont / nominalRadius);
}

int markerFontSize(double scale)
{
    return fontSize(nominalFont * scale);
}

int captionFontSize(double radius)
{
    return fontSize(radius * nominalFont / nominalCaptionRadius);
}

} // namespace AzimuthalGeometry
