// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QSize>
#include <QString>

// On a button a single "&" marks a shortcut, which would press the button. The caption therefore doubles
// every
// "&" of a name, which shows it as it was typed.

QString captionOfName(QString name);
QString nameOfCaption(QString caption);

/// A caption as it is shown on a button that may be too small for it.
struct FittedCaption
{
    QString text;
    int pixelSize = 0;
};

/// Fits a caption into `room` pixels: in `usualSize` if possible, then broken between words, then in a
/// smaller size down to a legible one, and at last cut at the end of its lines, with dots.
FittedCaption fittedCaption(const QString &caption, const QFont &font, const QSize &room, int usualSize);
