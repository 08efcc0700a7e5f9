// SPDX-License-Identifier: MIT
#include "widgets/buttoncaption.h"

#include <QFontMetrics>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int smallestPixelSize = 9;

const QLatin1Char lineBreak('\n');
const QLatin1Char wordBreak(' ');

QFontMetrics metricsOf(QFont font, int pixelSize)
{
    font.setPixelSize(pixelSize);
    return QFontMetrics(font);
}

bool fits(const QSizeF &needed, const QSizeF &room)
{
    return needed.width() <= room.width() && needed.height() <= room.height();
}

/// Breaks `name` into lines between words, each at most `width` wide where possible.
QStringList wrapped(const QString &name, const QFontMetrics &metrics, double width)
{
    QStringList lines;
    for (const QString &line : name.split(lineBreak)) {
        const QStringList words = line.split(wordBreak);
        QString begun = words.first();
        for (const QString &word : words.mid(1)) {
            const QString longer = begun + wordBreak + word;
            if (metrics.horizontalAdvance(longer) <= width) {
                begun = longer;
                continue;
            }
            lines << begun;
            begun = word;
        }
        lines << begun;
    }
    return lines;
}

/// The largest size in which the wrapped name fits. It is measured in one size and scaled, because Qt
/// searches for a font for each size that is measured.
int fittingSize(const QString &name, const QFontMetrics &usual, const QSize &room, int usualSize)
{
    for (int size = usualSize; size > smallestPixelSize; --size) {
        const QSizeF scaledRoom = QSizeF(room) * usualSize / size;
        const QString lines = wrapped(name, usual, scaledRoom.width()).join(lineBreak);
        if (fits(usual.size(0, lines), scaledRoom))
            return size;
    }
    return smallestPixelSize;
}

/// As many lines as fit the height, each cut to the width.
QString cut(QStringList lines, const QFontMetrics &metrics, const QSize &room)
{
    const int possible = std::max(1, room.height() / metrics.lineSpacing());
    if (lines.size() > possible) {
        const QString rest = lines.mid(possible - 1).join(wordBreak);
        lines = lines.mid(0, possible - 1) << rest;
    }
    for (QString &line : lines)
        line = metrics.elidedText(line, Qt::ElideRight, room.width());
    return lines.join(lineBreak);
}

} // namespace

QString captionOfName(QString name)
{
    return name.replace(QLatin1String("&"), QLatin1String("&&"));
}

QString nameOfCaption(QString caption)
{
    return caption.replace(QLatin1String("&&"), QLatin1String("&"));
}

FittedCaption fittedCaption(const QString &caption, const QFont &font, const QSize &room, int usualSize)
{
    const QFontMetrics usual = metricsOf(font, usualSize);
    if (room.isEmpty() || fits(usual.size(Qt::TextShowMnemonic, caption), room))
        return {caption, usualSize};

    const QString name = nameOfCaption(caption);
    int size = fittingSize(name, usual, room, usualSize);
    QFontMetrics metrics = metricsOf(font, size);
    QStringList lines = wrapped(name, metrics, room.width());
    // The widths of a hinted font, as Windows has, do not grow evenly with its size.
    while (size > smallestPixelSize && !fits(metrics.size(0, lines.join(lineBreak)), room)) {
        metrics = metricsOf(font, --size);
        lines = wrapped(name, metrics, room.width());
    }
    return {captionOfName(cut(lines, metrics, room)), size};
}
