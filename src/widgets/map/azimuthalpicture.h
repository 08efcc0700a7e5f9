#pragma once

#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/azimuthalscene.h"
#include "widgets/map/haloedtext.h"

#include <QPixmap>

/// The picture of the azimuthal map, kept from one paint to the next in three layers:
///
///     piece    the part of the map image that shows, at the size at which it shows
///     still    all that lies below the current arrow
///     picture  everything
///
/// so that a scene that was painted before costs one copy, and a turning arrow only itself and what lies on
/// it.
class AzimuthalPicture
{
public:
    const QPixmap &of(const AzimuthalScene &scene);

private:
    void updatePiece(const AzimuthalScene &scene);
    void updateStill(const AzimuthalScene &scene);
    void updatePicture(const AzimuthalScene &scene);

    AzimuthalScene m_scene;
    AzimuthalScene m_stillScene;
    AzimuthalMapImage::Piece m_piece;
    QPixmap m_still;
    QPixmap m_picture;
    HaloedText m_labels;
    HaloedText m_captions;
};
