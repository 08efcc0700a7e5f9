// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/azimuthalscene.h"

class HaloedText;
class QPainter;

/// Paints the azimuthal map, one function for each thing, in the order of painting. AzimuthalGeometry has the
/// positions; colours, pens and fonts are here.
namespace AzimuthalPainting {

void paintBackground(QPainter &painter, const AzimuthalScene &scene);
void paintMapImage(QPainter &painter, const AzimuthalScene &scene, const AzimuthalMapImage::Piece &piece);
void paintScale(QPainter &painter, const AzimuthalScene &scene);
void paintTargetsAndFixedArrows(QPainter &painter, const AzimuthalScene &scene);
void paintRotorArrows(QPainter &painter, const AzimuthalScene &scene);
void paintCurrentArrow(QPainter &painter, const AzimuthalScene &scene);
void paintHub(QPainter &painter, const AzimuthalScene &scene);
void paintCompassLabels(QPainter &painter, const AzimuthalScene &scene, HaloedText &texts);
void paintMarkers(QPainter &painter, const AzimuthalScene &scene);
void paintCaptions(QPainter &painter, const AzimuthalScene &scene, HaloedText &texts);

} // namespace AzimuthalPainting
