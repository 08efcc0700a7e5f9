// SPDX-License-Identifier: MIT
#include "stationmap/indexedimage.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <vector>

namespace {

constexpr int mostColors = 256;
/// Colours that have these bits in common are as good as the same.
constexpr QRgb groupBits = 0xf0f0f0f0;

/// Calls `visit` with each colour of the image, row by row.
template <typename Visit>
void forEachPixel(const QImage &image, const Visit &visit)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        std::for_each(row, row + image.width(), visit);
    }
}

/// The most frequent colour first.
std::vector<QRgb> colorsOf(const QImage &image)
{
    QHash<QRgb, int> counts;
    QRgb last = 0;
    int *count = &counts[last];
    forEachPixel(image, [&](QRgb color) {
        if (color != last)
            count = &counts[color];
        last = color;
        ++*count;
    });
    std::vector<QRgb> colors(counts.keyBegin(), counts.keyEnd());
    std::sort(colors.begin(), colors.end(),
              [&counts](QRgb a, QRgb b) { return counts[a] != counts[b] ? counts[a] > counts[b] : a > b; });
    return colors;
}

QVector<QRgb> paletteOf(const std::vector<QRgb> &colors)
{
    QVector<QRgb> palette;
    QSet<QRgb> groups;
    for (const QRgb color : colors) {
        if (palette.size() == mostColors || groups.contains(color & groupBits))
            continue;
        groups.insert(color & groupBits);
        palette.append(color);
    }
    // A reader checks each pixel of an image with fewer.
    palette.resize(mostColors);
    return palette;
}

int distance(QRgb a, QRgb b)
{
    const auto square = [](int difference) { return difference * difference; };
    return square(qRed(a) - qRed(b)) + square(qGreen(a) - qGreen(b)) + square(qBlue(a) - qBlue(b))
         + square(qAlpha(a) - qAlpha(b));
}

int nearest(const QVector<QRgb> &palette, QRgb color)
{
    const auto isNearer = [color](QRgb a, QRgb b) { return distance(a, color) < distance(b, color); };
    return static_cast<int>(std::min_element(palette.begin(), palette.end(), isNearer) - palette.begin());
}

} // namespace

QImage indexedImage(const QImage &image)
{
    const QImage source = image.convertToFormat(QImage::Format_ARGB32);
    const std::vector<QRgb> colors = colorsOf(source);
    const QVector<QRgb> palette = paletteOf(colors);
    QHash<QRgb, uchar> indices;
    for (const QRgb color : colors)
        indices.insert(color, static_cast<uchar>(nearest(palette, color)));

    QImage indexed(image.size(), QImage::Format_Indexed8);
    indexed.setColorTable(palette);
    for (int y = 0; y < source.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        std::transform(from, from + source.width(), indexed.scanLine(y),
                       [&indices](QRgb color) { return indices.value(color); });
    }
    return indexed;
}
