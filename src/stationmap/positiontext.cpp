// SPDX-License-Identifier: MIT
#include "stationmap/positiontext.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

/// A pair of characters divides a square by so many columns, and as many rows.
struct LocatorPair
{
    char first;
    int divisions;
};
constexpr LocatorPair locatorPairs[] = {{'A', 18}, {'0', 10}, {'A', 24}, {'0', 10}};
constexpr int pairsOfLocator = 3;

constexpr double westEdge = -180.0;
constexpr double southEdge = -90.0;
constexpr int decimals = 4;

/// A square of a locator: its south-west corner and its size.
struct Square
{
    GeoPosition corner{southEdge, westEdge};
    GeoPosition size{180.0, 360.0};
};

const QRegularExpression &locatorPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^[A-R]{2}\\d{2}([A-X]{2}(\\d{2})?)?$"));
    return pattern;
}

/// Letter, degrees, minutes, seconds, letter.
const QRegularExpression &coordinatePattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("^([A-Z]?) *([+-]?\\d+(?:\\.\\d*)?)"
                       "(?:[° ]+(\\d+(?:\\.\\d*)?)(?:['′ ]+(\\d+(?:\\.\\d*)?))?)?[°'′\"″ ]*([A-Z]?)$"));
    return pattern;
}

/// `directions` are the letters of the positive and of the negative half.
std::optional<double> coordinateOf(const QString &text, const QString &directions, double limit)
{
    const QString plain = text.trimmed().toUpper().replace(QLatin1Char(','), QLatin1Char('.'));
    const QRegularExpressionMatch match = coordinatePattern().match(plain);
    const QString letter = match.captured(1) + match.captured(5);
    const bool hasSign = match.captured(2).startsWith(QLatin1Char('-'));
    const double minutes = match.captured(3).toDouble();
    const double seconds = match.captured(4).toDouble();
    if (!match.hasMatch() || minutes >= 60.0 || seconds >= 60.0)
        return {};
    if (!letter.isEmpty() && (letter.size() > 1 || hasSign || !directions.contains(letter)))
        return {};

    const double degrees = std::abs(match.captured(2).toDouble()) + minutes / 60.0 + seconds / 3600.0;
    if (degrees > limit)
        return {};
    return hasSign || letter == directions.mid(1) ? -degrees : degrees;
}

} // namespace

namespace PositionText {

std::optional<GeoPosition> positionOfLocator(const QString &locator)
{
    const QString plain = locator.trimmed().toUpper();
    if (!locatorPattern().match(plain).hasMatch())
        return {};
    Square square;
    for (int i = 0; i < plain.size() / 2; ++i) {
        const LocatorPair pair = locatorPairs[i];
        square.size = {square.size.latitude / pair.divisions, square.size.longitude / pair.divisions};
        square.corner.longitude += (plain[2 * i].toLatin1() - pair.first) * square.size.longitude;
        square.corner.latitude += (plain[2 * i + 1].toLatin1() - pair.first) * square.size.latitude;
    }
    return GeoPosition{square.corner.latitude + square.size.latitude / 2.0,
                       square.corner.longitude + square.size.longitude / 2.0};
}

QString locatorOf(const GeoPosition &position)
{
    QString locator;
    Square square;
    for (int i = 0; i < pairsOfLocator; ++i) {
        const LocatorPair pair = locatorPairs[i];
        square.size = {square.size.latitude / pair.divisions, square.size.longitude / pair.divisions};
        const auto part = [&pair](double offset, double size) {
            // The outermost square holds its outer edge as well.
            return std::clamp(static_cast<int>(std::floor(offset / size)), 0, pair.divisions - 1);
        };
        const int column = part(position.longitude - square.corner.longitude, square.size.longitude);
        const int row = part(position.latitude - square.corner.latitude, square.size.latitude);
        square.corner.longitude += column * square.size.longitude;
        square.corner.latitude += row * square.size.latitude;
        locator += QLatin1Char(static_cast<char>(pair.first + column));
        locator += QLatin1Char(static_cast<char>(pair.first + row));
    }
    return locator.left(4) + locator.mid(4).toLower();
}

std::optional<double> latitudeOf(const QString &text)
{
    return coordinateOf(text, QStringLiteral("NS"), 90.0);
}

std::optional<double> longitudeOf(const QString &text)
{
    return coordinateOf(text, QStringLiteral("EW"), 180.0);
}

QString textOf(double degrees)
{
    const double unit = std::pow(10.0, decimals);
    return QString::number(std::round(degrees * unit) / unit, 'g', 3 + decimals);
}

} // namespace PositionText
