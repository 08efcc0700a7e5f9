#pragma once

#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/azimuthalscene.h"
#include "widgets/map/haloedtext.h"

#include <QPixmap>

/// The picture of the azimuthal map, kept from one paint to the next in three layers:
///
///     piece    the visible part of the map image, at its size on the screen
///     still    everything below the current arrow
///     picture  everything
///
/// A scene that was painted before costs one copy; a turning arrow costs itself and what is painted over it.
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
