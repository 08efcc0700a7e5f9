// SPDX-License-Identifier: MIT
#pragma once

#include <QLineF>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QTransform>

#include <vector>

/// The positions of everything on the azimuthal map, as functions of its size.
///
/// Azimuths are compass degrees: 0 at the top, increasing clockwise. Painter angles are degrees too, but 0 is
/// at the right and they increase counter-clockwise. Positions, lengths and the radius of the compass are
/// widget pixels; a `scale` is a radius over the 171 pixels at which everything has its nominal size. A
/// widget below 80 pixels has a zero or negative radius, which every function accepts.
namespace AzimuthalGeometry {

struct Compass
{
    QPointF centre;
    double radius = 0.0;
};

Compass compassIn(const QSize &size);
double scaleOf(double radius);

/// The point `distance` pixels away from the centre.
QPointF pointAt(const Compass &compass, double azimuth, double distance);
/// The point `offset` pixels outside of the circle.
QPointF pointAtRing(const Compass &compass, double azimuth, double offset);

/// The corners and sides for exactly four or six displays; empty for any other count.
std::vector<QRect> cornerDisplayRects(const QSize &size, int count);
/// `count` displays in cells of which `rotorCount` fill the width; empty without rotors.
std::vector<QRect> rowDisplayRects(const QSize &size, int count, int rotorCount);

/// `zoom` compass diameters wide about the centre. A negative zoom gives a negative size, which turns the
/// image upside down. `imageSize` must not be empty.
QRectF mapRect(const Compass &compass, double zoom, const QSize &imageSize);

/// The 36 lines at whole tens of painter degrees, from 0 on; every third one is long, the first is not.
std::vector<QLineF> tenDegreeTicks(const Compass &compass, double scale);
/// The 36 short lines halfway between them.
std::vector<QLineF> fiveDegreeTicks(const Compass &compass, double scale);

struct CompassLabel
{
    QString text;
    QPointF anchor;
    /// The text is centred on the anchor instead of starting there.
    bool centred = false;
};

/// "0" to "330", clockwise; none on a circle without a radius.
std::vector<CompassLabel> compassLabels(const Compass &compass, double scale);
/// Where the baseline of a label's text begins.
QPointF baselineOf(const CompassLabel &label, double textWidth, double fontHeight);

/// `index` is the antenna's; the higher it is, the further out the marker.
QPointF fixedMarkerCentre(const Compass &compass, double scale, double azimuth, int index);
int markerRadius(double scale);
/// Where the baseline of a text centred on a marker begins.
QPointF markerBaseline(const QPointF &centre, double textWidth);

/// From arrow pictures, whose hub is their origin, to the widget.
QTransform arrowTransform(const Compass &compass, double azimuth, double scale);

/// Baseline starts of the two captions of a display on the compass.
QPointF nameBaseline(const QRect &display, int index, double textWidth);
QPointF rotorBaseline(const QRect &display, double textWidth, double fontHeight);
/// Baseline start of the caption of a display in a row.
QPointF rowBaseline(const QRect &display);

/// The offset that moves `rect` into `view`, null when it is inside. A larger rectangle is moved to begin
/// where the view begins.
QPointF shiftInto(const QRectF &view, const QRectF &rect);

// Font sizes, in pixels.
int labelFontSize(double radius);
int markerFontSize(double scale);
int captionFontSize(double radius);

} // namespace AzimuthalGeometry
