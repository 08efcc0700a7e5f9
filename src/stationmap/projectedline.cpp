// SPDX-License-Identifier: MIT
#include "stationmap/projectedline.h"

#include <QLineF>

#include <cmath>

namespace {

// Pixels.
constexpr double nearest = 0.4;
constexpr double longestUndivided = 3.0;
constexpr double straight = 0.2;

/// A piece of five degrees becomes shorter than 10 m.
constexpr int mostDivisions = 16;
constexpr double rimStep = 2.0; // degrees

double distance(const QPointF &from, const QPointF &to)
{
    return std::hypot(to.x() - from.x(), to.y() - from.y());
}

} // namespace

void ProjectedLine::add(const UnitVector &place)
{
    const Point point{place, m_projection.pixelOf(place)};
    if (m_points.isEmpty())
        append(point.pixel);
    else
        draw(m_last, point, mostDivisions);
    m_last = point;
}

// Halves the way at most `divisions` times.
// NOLINTNEXTLINE(misc-no-recursion)
void ProjectedLine::draw(const Point &from, const Point &to, int divisions)
{
    if (distance(from.pixel, to.pixel) < longestUndivided) {
        append(to.pixel);
        return;
    }
    if (divisions == 0) {
        followRim(from.pixel, to.pixel);
        return;
    }
    const UnitVector place = middleOf(from.place, to.place);
    const Point middle{place, m_projection.pixelOf(place)};
    if (distance(middle.pixel, (from.pixel + to.pixel) / 2.0) < straight) {
        append(to.pixel);
        return;
    }
    draw(from, middle, divisions - 1);
    draw(middle, to, divisions - 1);
}

void ProjectedLine::followRim(const QPointF &from, const QPointF &to)
{
    QLineF spoke(m_projection.centre(), from);
    const double turn = std::remainder(QLineF(m_projection.centre(), to).angle() - spoke.angle(), 360.0);
    const int steps = static_cast<int>(std::ceil(std::abs(turn) / rimStep));
    const double start = spoke.angle();
    for (int i = 1; i < steps; ++i) {
        spoke.setAngle(start + turn * i / steps);
        append(spoke.p2());
    }
    append(to);
}

/// Leaves out what would not show. Two points stay of the smallest island.
void ProjectedLine::append(const QPointF &pixel)
{
    if (m_points.size() < 2 || distance(m_points.last(), pixel) >= nearest)
        m_points.append(pixel);
}
