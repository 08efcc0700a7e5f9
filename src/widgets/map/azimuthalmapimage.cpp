// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalmapimage.h"

#include <QCoreApplication>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int longestSide = 4096;
constexpr qint64 mostPixels = 250'000'000;

bool isFinite(const QRectF &rect)
{
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width())
        && std::isfinite(rect.height());
}

/// Shrinks the image with all of its pixels, which painting at a smaller size does not, and keeps the visible
/// part.
AzimuthalMapImage::Piece shrunkPiece(const QImage &image, const QRectF &target, const QRectF &visible,
                                     double pixelRatio)
{
    const QSize pixels(std::max(1, qRound(target.width() * pixelRatio)),
                       std::max(1, qRound(target.height() * pixelRatio)));
    const QImage whole = image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);

    const QPoint origin(qRound(target.x() * pixelRatio), qRound(target.y() * pixelRatio));
    const QRectF visiblePixels(visible.topLeft() * pixelRatio, visible.size() * pixelRatio);
    const QRect crop = visiblePixels.toAlignedRect().intersected(QRect(origin, pixels));
    // Smaller than a pixel, the piece may round to beside what is visible.
    if (crop.isEmpty())
        return {};
    const QRectF shown(QPointF(crop.topLeft()) / pixelRatio, QSizeF(crop.size()) / pixelRatio);
    return {whole.copy(crop.translated(-origin)), QRectF(QPointF(), crop.size()), shown, false};
}

AzimuthalMapImage::Piece enlargedPiece(const QImage &image, const QRectF &target, const QRectF &visible)
{
    const double pixelsPerUnit = image.width() / target.width();
    const QRectF source((visible.topLeft() - target.topLeft()) * pixelsPerUnit,
                        visible.size() * pixelsPerUnit);
    return {image, source, visible, false};
}

} // namespace

namespace AzimuthalMapImage {

QString installedPath()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/AzimuthalMap.png");
}

QImage load(const QString &path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    const qint64 pixels = static_cast<qint64>(size.width()) * size.height();
    if (pixels > mostPixels) {
        qDebug("AzimuthalMapImage::load() - [%s] is too large: %d x %d", qUtf8Printable(path), size.width(),
               size.height());
        return {};
    }
    if (std::max(size.width(), size.height()) > longestSide)
        reader.setScaledSize(
            size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return reader.read();
}

Piece pieceOf(const QImage &image, const QRectF &target, const QRect &view, double pixelRatio)
{
    if (image.isNull() || !isFinite(target))
        return {};
    const QRectF upright = target.normalized();
    const QRectF visible = upright.intersected(view);
    if (visible.isEmpty())
        return {};

    const bool shrinks = upright.width() * pixelRatio < image.width();
    Piece piece =
        shrinks ? shrunkPiece(image, upright, visible, pixelRatio) : enlargedPiece(image, upright, visible);
    piece.upsideDown = target.width() < 0.0;
    return piece;
}

void paint(QPainter &painter, const Piece &piece, const QRect &view)
{
    if (piece.image.isNull())
        return;
    painter.save();
    if (piece.upsideDown) {
        const QPointF middle = QRectF(view).center();
        painter.translate(middle);
        painter.rotate(180.0);
        painter.translate(-middle);
    }
    painter.drawImage(piece.target, piece.image, piece.source);
    painter.restore();
}

} // namespace AzimuthalMapImage
