#pragma once

#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/azimuthalscene.h"

class HaloedText;
class QPainter;

/// The picture of the azimuthal map, thing by thing, in the order in which they lie on each other. Where they
/// stand is told by AzimuthalGeometry, how they look is told here.
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
