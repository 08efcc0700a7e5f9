// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalscene.h"

#include <tuple>

namespace {

auto fields(const AzimuthalScene::Antenna &a)
{
    return std::tie(a.index, a.rotorId, a.isEnabled, a.isOnRotor, a.isRotorActive, a.arrow, a.color,
                    a.azimuth, a.angle, a.hasTarget, a.target, a.display, a.isDisplayVisible);
}

auto fields(const AzimuthalScene::Colors &c)
{
    return std::tie(c.captions, c.scaleText, c.hub, c.markers, c.markerText);
}

/// The area of the map image.
auto mapFields(const AzimuthalScene &s)
{
    return std::make_tuple(s.size, s.pixelRatio, s.compass.centre, s.compass.radius, s.zoom,
                           s.mapImage.cacheKey());
}

auto otherFields(const AzimuthalScene &s)
{
    return std::tie(s.scale, s.font, s.hasBoldLabels, s.colors, s.antennas, s.current);
}

} // namespace

bool AzimuthalScene::Antenna::operator==(const Antenna &other) const
{
    return fields(*this) == fields(other);
}

bool AzimuthalScene::Colors::operator==(const Colors &other) const
{
    return fields(*this) == fields(other);
}

bool AzimuthalScene::operator==(const AzimuthalScene &other) const
{
    return hasSameMap(other) && otherFields(*this) == otherFields(other);
}

bool AzimuthalScene::hasSameMap(const AzimuthalScene &other) const
{
    return mapFields(*this) == mapFields(other);
}

AzimuthalScene AzimuthalScene::withoutCurrentAzimuth() const
{
    AzimuthalScene still = *this;
    if (current >= 0) {
        still.antennas[current].azimuth = 0.0;
        still.antennas[current].angle = 0.0;
    }
    return still;
}
