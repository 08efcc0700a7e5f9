// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalpicture.h"

#include "widgets/map/azimuthalpainting.h"

#include <QPainter>

using namespace AzimuthalPainting;

namespace {

/// Keeps a pixmap that fits already: nothing is allocated while an arrow turns.
void fitTo(QPixmap &pixmap, const AzimuthalScene &scene)
{
    const QSize pixels = (QSizeF(scene.size) * scene.pixelRatio).toSize();
    if (pixmap.size() != pixels)
        pixmap = QPixmap(pixels);
    pixmap.setDevicePixelRatio(scene.pixelRatio);
}

// High-quality antialiasing is not asked for: it has been the same as antialiasing since Qt 5.14.
void setHints(QPainter &painter)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                           | QPainter::SmoothPixmapTransform);
}

} // namespace

const QPixmap &AzimuthalPicture::of(const AzimuthalScene &scene)
{
    if (scene.size.isEmpty() || (!m_picture.isNull() && scene == m_scene))
        return m_picture;

    const AzimuthalScene still = scene.withoutCurrentAzimuth();
    if (m_still.isNull() || !(still == m_stillScene)) {
        if (m_still.isNull() || !still.hasSameMap(m_stillScene))
            updatePiece(scene);
        updateStill(scene);
        m_stillScene = still;
    }
    updatePicture(scene);
    m_scene = scene;
    return m_picture;
}

void AzimuthalPicture::updatePiece(const AzimuthalScene &scene)
{
    m_piece = {};
    if (scene.mapImage.isNull())
        return;
    const QRectF target = AzimuthalGeometry::mapRect(scene.compass, scene.zoom, scene.mapImage.size());
    m_piece =
        AzimuthalMapImage::pieceOf(scene.mapImage, target, QRect(QPoint(), scene.size), scene.pixelRatio);
}

void AzimuthalPicture::updateStill(const AzimuthalScene &scene)
{
    fitTo(m_still, scene);
    QPainter painter(&m_still);
    setHints(painter);
    paintBackground(painter, scene);
    paintMapImage(painter, scene, m_piece);
    paintScale(painter, scene);
    paintTargetsAndFixedArrows(painter, scene);
    paintRotorArrows(painter, scene);
}

void AzimuthalPicture::updatePicture(const AzimuthalScene &scene)
{
    fitTo(m_picture, scene);
    QPainter painter(&m_picture);
    setHints(painter);
    painter.drawPixmap(0, 0, m_still);
    paintCurrentArrow(painter, scene);
    paintHub(painter, scene);
    paintCompassLabels(painter, scene, m_labels);
    paintMarkers(painter, scene);
    paintCaptions(painter, scene, m_captions);
}
