// SPDX-License-Identifier: MIT
#include "stationmap/stationmap.h"

#include "stationmap/projectedline.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

// Middle tones: the program draws both coloured arrows and a black and dark blue compass over the map.
constexpr QColor seaColor(0x7d, 0x9d, 0xb5);
constexpr QColor landColor(0xb3, 0xb1, 0x93);
constexpr QColor coastColor(0x4c, 0x5c, 0x60);
constexpr QColor netColor(0x5f, 0x7f, 0x98);
constexpr QColor bearingColor(0xe8, 0xee, 0xf2, 0x99);
constexpr QColor rimColor(0x3d, 0x51, 0x63);
constexpr QColor textColor(0xff, 0xff, 0xff);
constexpr QColor haloColor(0x44, 0x59, 0x6b);

// Widths and heights as parts of the image's side: the map looks the same at every size.
constexpr double netWidth = 0.0007;
constexpr double coastWidth = 0.001;
constexpr double ringWidth = 0.0014;
constexpr double rimWidth = 0.005;
constexpr double figureHeight = 0.0165;
constexpr double captionHeight = 0.02;
constexpr double haloWidth = 0.004;
/// Below the white hub that the program paints in the middle.
constexpr double captionBelow = 0.046;
// Pixels; what is smaller does not show.
constexpr double thinnest = 0.6;
constexpr double smallestText = 9.0;
constexpr double thinnestHalo = 2.0;
constexpr int longestRun = 100; // points of a line

constexpr int netStep = 15;      // degrees
constexpr int spokeStep = 30;    // degrees
constexpr int ringStep = 2500;   // km
constexpr int lastRing = 17500;  // km; the next lies on the rim
constexpr int figureStep = 5000; // km
/// Between two of the compass figures that the program paints.
constexpr double figureBearing = 50.0;
/// From the base line to the middle of capitals and figures, as a part of the font's size.
constexpr double halfLetter = 0.36;

/// Far from land, and not both far from any station.
constexpr GeoPosition openSeas[] = {{30.0, -40.0}, {20.0, -140.0}};

/// Draws one map; the steps are called from the bottom to the top.
class MapPainter
{
public:
    MapPainter(QPainter &painter, const GeoPosition &station, int side)
        : m_painter(painter), m_side(side), m_projection(StationMap::projection(station, side))
    {}

    void paintSea();
    void paintLand(const std::vector<Outline> &land);
    void paintNet();
    void paintBearings();
    void paintRim();
    void paintFigures();
    void paintCaption(const QString &caption);

private:
    double width(double ratio) const { return std::max(ratio * m_side, thinnest); }
    bool isCoveredBySea(const std::vector<QPolygonF> &outlines) const;
    void addCircle(QPainterPath &path, double distanceKm) const;
    void drawPolyline(const QPolygonF &points);
    void drawNetLine(const GeoPosition &start, const GeoPosition &step, int steps);
    void paintText(const QString &text, const QPointF &place, double height, double alignment);

    QPainter &m_painter;
    int m_side;
    StationProjection m_projection;
};

/// Whether an odd number of outlines surrounds the land, as it does unless the rim is on land.
bool MapPainter::isCoveredBySea(const std::vector<QPolygonF> &outlines) const
{
    const auto km = [this](const GeoPosition &sea) {
        return m_projection.legTo(unitVectorOf(sea)).distanceKm;
    };
    const GeoPosition &sea = km(openSeas[0]) < km(openSeas[1]) ? openSeas[0] : openSeas[1];
    const QPointF pixel = m_projection.pixelOf(unitVectorOf(sea));
    const auto around = std::count_if(outlines.begin(), outlines.end(), [&pixel](const QPolygonF &outline) {
        return outline.containsPoint(pixel, Qt::OddEvenFill);
    });
    return around % 2 == 0;
}

void MapPainter::addCircle(QPainterPath &path, double distanceKm) const
{
    const double radius = distanceKm / StationProjection::farthestKm * m_projection.radius();
    path.addEllipse(m_projection.centre(), radius, radius);
}

void MapPainter::paintSea()
{
    QPainterPath disc;
    addCircle(disc, StationProjection::farthestKm);
    m_painter.fillPath(disc, seaColor);
}

void MapPainter::paintLand(const std::vector<Outline> &land)
{
    std::vector<QPolygonF> outlines;
    for (const Outline &outline : land) {
        ProjectedLine line(m_projection);
        for (const UnitVector &place : outline)
            line.add(place);
        line.add(outline.front());
        outlines.push_back(line.points());
    }

    QPainterPath inside;
    for (const QPolygonF &outline : outlines)
        inside.addPolygon(outline);
    // Land around the opposite point is outside its outline, up to the rim.
    if (!isCoveredBySea(outlines))
        addCircle(inside, StationProjection::farthestKm);
    // Smooth edges would take several times as long; the coast line hides them.
    m_painter.setRenderHint(QPainter::Antialiasing, false);
    m_painter.fillPath(inside, landColor);
    m_painter.setRenderHint(QPainter::Antialiasing, true);
    m_painter.setPen(QPen(coastColor, width(coastWidth), Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    for (const QPolygonF &outline : outlines)
        drawPolyline(outline);
}

/// In short runs, which is many times quicker than one long line: Qt's filling slows down with the number of
/// edges in a row of pixels.
void MapPainter::drawPolyline(const QPolygonF &points)
{
    const int count = static_cast<int>(points.size());
    for (int start = 0; start + 1 < count; start += longestRun)
        m_painter.drawPolyline(points.constData() + start, std::min(longestRun + 1, count - start));
}

void MapPainter::drawNetLine(const GeoPosition &start, const GeoPosition &step, int steps)
{
    ProjectedLine line(m_projection);
    for (int i = 0; i <= steps; ++i)
        line.add(unitVectorOf({start.latitude + i * step.latitude, start.longitude + i * step.longitude}));
    drawPolyline(line.points());
}

void MapPainter::paintNet()
{
    m_painter.setPen(QPen(netColor, width(netWidth), Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    const int lastParallel = 90 - netStep;
    for (int longitude = -180; longitude < 180; longitude += netStep) {
        const int end = longitude % 90 == 0 ? 90 : lastParallel;
        drawNetLine({-1.0 * end, 1.0 * longitude}, {1.0, 0.0}, 2 * end);
    }
    for (int latitude = -lastParallel; latitude <= lastParallel; latitude += netStep)
        drawNetLine({1.0 * latitude, -180.0}, {0.0, 1.0}, 360);
}

void MapPainter::paintBearings()
{
    QPainterPath figured;
    QPainterPath dotted;
    for (int km = ringStep; km <= lastRing; km += ringStep)
        addCircle(km % figureStep == 0 ? figured : dotted, km);
    QPainterPath spokes;
    for (int bearing = 0; bearing < 360; bearing += spokeStep) {
        spokes.moveTo(m_projection.pixelAt(bearing, ringStep));
        spokes.lineTo(m_projection.pixelAt(bearing, StationProjection::farthestKm));
    }

    QPen pen(bearingColor, width(ringWidth));
    m_painter.strokePath(figured, pen);
    pen.setDashPattern({1.4, 4.3});
    pen.setCapStyle(Qt::FlatCap);
    m_painter.strokePath(dotted, pen);
    m_painter.strokePath(spokes, QPen(bearingColor, width(netWidth)));
}

void MapPainter::paintRim()
{
    QPainterPath rim;
    addCircle(rim, StationProjection::farthestKm);
    m_painter.strokePath(rim, QPen(rimColor, width(rimWidth)));
}

/// Centred on `place` vertically; `alignment` of the text's width is left of it (0 to 1).
void MapPainter::paintText(const QString &text, const QPointF &place, double height, double alignment)
{
    QFont font;
    font.setPixelSize(qRound(std::max(height * m_side, smallestText)));
    font.setBold(true);
    const QPointF start(-QFontMetricsF(font).horizontalAdvance(text) * alignment,
                        font.pixelSize() * halfLetter);
    QPainterPath letters;
    letters.addText(place + start, font, text);
    const double halo = std::max(haloWidth * m_side, thinnestHalo);
    m_painter.strokePath(letters, QPen(haloColor, halo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter.fillPath(letters, textColor);
}

void MapPainter::paintFigures()
{
    for (int km = figureStep; km <= lastRing; km += figureStep)
        paintText(QStringLiteral("%1 km").arg(km), m_projection.pixelAt(figureBearing, km), figureHeight,
                  1.0);
}

void MapPainter::paintCaption(const QString &caption)
{
    paintText(caption, m_projection.centre() + QPointF(0.0, captionBelow * m_side), captionHeight, 0.5);
}

} // namespace

StationProjection StationMap::projection(const GeoPosition &station, int side)
{
    const double middle = side / 2.0;
    return {station, {middle, middle}, middle - rimWidth * side / 2.0};
}

QImage StationMap::drawn(const std::vector<Outline> &land, int side) const
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    MapPainter map(painter, station, side);
    map.paintSea();
    map.paintLand(land);
    map.paintNet();
    map.paintBearings();
    map.paintRim();
    map.paintFigures();
    map.paintCaption(caption);
    return image;
}
