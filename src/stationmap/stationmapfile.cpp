// SPDX-License-Identifier: MIT
#include "stationmap/stationmapfile.h"

#include "stationmap/indexedimage.h"
#include "stationmap/positiontext.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

namespace {

const QString stationKey = QStringLiteral("Station");
const QString captionKey = QStringLiteral("Title");

/// Of 100; more takes three times as long for a file that is hardly smaller.
constexpr int compression = 90;

} // namespace

namespace StationMapFile {

QByteArray encoded(const QImage &drawing, const std::optional<StationMap> &drawnFor)
{
    QByteArray file;
    QBuffer buffer(&file);
    QImageWriter writer(&buffer, "png");
    writer.setCompression(compression);
    if (drawnFor) {
        const GeoPosition &station = drawnFor->station;
        writer.setText(stationKey, PositionText::textOf(station.latitude) + QLatin1Char(' ')
                                       + PositionText::textOf(station.longitude));
        writer.setText(captionKey, drawnFor->caption);
    }
    return writer.write(indexedImage(drawing)) ? file : QByteArray();
}

std::optional<StationMap> read(const QString &path)
{
    QImageReader reader(path, "png");
    const QString station = reader.text(stationKey);
    const auto latitude = PositionText::latitudeOf(station.section(QLatin1Char(' '), 0, 0));
    const auto longitude = PositionText::longitudeOf(station.section(QLatin1Char(' '), 1));
    if (!latitude || !longitude)
        return {};
    return StationMap{{*latitude, *longitude}, reader.text(captionKey)};
}

} // namespace StationMapFile
