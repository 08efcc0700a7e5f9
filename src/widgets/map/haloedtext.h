// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QHash>
#include <QPixmap>
#include <QRectF>
#include <QString>

class QPainter;

/// Short texts of one style with a light rim, so that dark letters are legible on a dark picture. Every text
/// is drawn once and kept as a picture until the style changes.
class HaloedText
{
public:
    /// `pixelRatio` is device pixels per logical pixel.
    void setStyle(const QFont &font, const QColor &color, double pixelRatio);

    /// Logical pixels.
    double width(const QString &text) { return pictureOf(text).advance; }
    double height() const { return m_height; }

    /// The baseline begins at `baseline`, moved no further than it takes to have all of the text within
    /// `view`.
    void paint(QPainter &painter, const QPointF &baseline, const QString &text, const QRectF &view);

private:
    struct Picture
    {
        QPixmap pixmap;
        /// Of the pixmap and of the bare letters, about the start of the baseline.
        QRectF bounds;
        QRectF letters;
        double advance = 0.0;
    };

    const Picture &pictureOf(const QString &text);
    Picture drawn(const QString &text) const;

    QFont m_font;
    QColor m_color;
    double m_pixelRatio = 0.0;
    double m_height = 0.0;
    QHash<QString, Picture> m_pictures;
};
