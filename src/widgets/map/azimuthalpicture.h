// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/azimuthalscene.h"
#include "widgets/map/haloedtext.h"

#include <QPixmap>

/// Paints the azimuthal map and keeps three results for the next paint:
///
///     piece    the visible part of the map image, at its size on the screen
///     still    everything below the arrow of the current antenna, including the piece
///     picture  everything
///
/// When the scene has not changed, nothing is painted. When only the current antenna has turned, its arrow
/// and what is above it are painted over a copy of `still`.
class AzimuthalPicture
{
public:
    /// The picture of `scene`. It stays valid until the next call.
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
