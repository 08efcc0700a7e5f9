// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/stationprojection.h"

#include <QPolygonF>

/// A line on the earth as it runs on a station's map, in pixels. Between two of its places it follows the
/// great circle. Near the rim, which is a single place, a short way on the earth is a long way round the rim:
/// there it is divided finely, and where it meets the opposite point it follows the rim itself.
class ProjectedLine
{
public:
    explicit ProjectedLine(const StationProjection &projection) : m_projection(projection) {}

    void add(const UnitVector &place);

    const QPolygonF &points() const { return m_points; }

private:
    struct Point
    {
        UnitVector place;
        QPointF pixel;
    };
    void draw(const Point &from, const Point &to, int divisions);
    void followRim(const QPointF &from, const QPointF &to);
    void append(const QPointF &pixel);

    const StationProjection &m_projection;
    QPolygonF m_points;
    Point m_last;
};
