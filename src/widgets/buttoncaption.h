#pragma once

#include <QFont>
#include <QSize>
#include <QString>

// On a button a single "&" marks a shortcut, which would press the button. A name keeps its own; the caption
// has each of them doubled, which shows it as it was typed.

QString captionOfName(QString name);
QString nameOfCaption(QString caption);

/// How a caption shows on a button that has too little room for it.
struct FittedCaption
{
    QString text;
    int pixelSize = 0;
};

/// Fits a caption into `room` pixels: in `usualSize` where it can be, broken between words where that helps,
/// in a smaller print down to a legible one, and at last cut at the right of its lines, with dots.
FittedCaption fittedCaption(const QString &caption, const QFont &font, const QSize &room, int usualSize);
