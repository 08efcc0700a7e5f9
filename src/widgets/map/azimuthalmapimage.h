// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>
#include <QRectF>
#include <QString>

class QPainter;

/// The image below the compass: any picture that the operator chose, of any size.
namespace AzimuthalMapImage {

/// Where the map in use is kept: beside the program.
QString installedPath();

/// The image in `path`, whatever its suffix, with its aspect; shrunk when a side is longer than 4096 pixels.
/// Null when there is no such file, when it holds no image, or one beyond 250 million pixels.
QImage load(const QString &path);

/// The part of an image that shows through a view, ready to be painted. Device pixels where it was shrunk, so
/// that painting it copies pixels.
struct Piece
{
    QImage image;
    /// In pixels of `image`.
    QRectF source;
    /// In the view's logical pixels.
    QRectF target;
    /// Turned by 180 degrees about the middle of the view.
    bool upsideDown = false;
};

/// The part of `image` that is visible in `view` when the whole image fills `target`. The target is centred
/// in the view and may have any size, also a negative one. A piece without an image when nothing is visible.
Piece pieceOf(const QImage &image, const QRectF &target, const QRect &view, double pixelRatio);

void paint(QPainter &painter, const Piece &piece, const QRect &view);

} // namespace AzimuthalMapImage
