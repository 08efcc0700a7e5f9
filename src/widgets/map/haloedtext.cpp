// SPDX-License-Identifier: MIT
#include "widgets/map/haloedtext.h"

#include "widgets/map/azimuthalgeometry.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr QColor haloColor(255, 255, 255, 190);
constexpr double haloPerFontSize = 0.3;
constexpr double thinnestHalo = 3.0;
/// Captions change their numbers seldom, so the texts of one style stay few.
constexpr int mostPictures = 100;

} // namespace

void HaloedText::setStyle(const QFont &font, const QColor &color, double pixelRatio)
{
    if (font == m_font && color == m_color && pixelRatio == m_pixelRatio)
        return;
    m_font = font;
    m_color = color;
    m_pixelRatio = pixelRatio;
    m_height = QFontMetricsF(font).height();
    m_pictures.clear();
}

const HaloedText::Picture &HaloedText::pictureOf(const QString &text)
{
    auto found = m_pictures.find(text);
    if (found == m_pictures.end()) {
        if (m_pictures.size() >= mostPictures)
            m_pictures.clear();
        found = m_pictures.insert(text, drawn(text));
    }
    return *found;
}

HaloedText::Picture HaloedText::drawn(const QString &text) const
{
    const QFontMetricsF metrics(m_font);
    const double haloWidth = std::max(thinnestHalo, m_font.pixelSize() * haloPerFontSize);
    QPainterPath letters;
    letters.addText(QPointF(), m_font, text);

    Picture picture;
    picture.advance = metrics.horizontalAdvance(text);
    picture.letters = letters.boundingRect();
    picture.bounds = picture.letters.adjusted(-haloWidth, -haloWidth, haloWidth, haloWidth).toAlignedRect();
    picture.pixmap = QPixmap((picture.bounds.size() * m_pixelRatio).toSize());
    picture.pixmap.setDevicePixelRatio(m_pixelRatio);
    picture.pixmap.fill(Qt::transparent);

    QPainter painter(&picture.pixmap);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(-picture.bounds.topLeft());
    painter.strokePath(letters, QPen(haloColor, haloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setFont(m_font);
    painter.setPen(m_color);
    painter.drawText(QPointF(), text);
    return picture;
}

void HaloedText::paint(QPainter &painter, const QPointF &baseline, const QString &text, const QRectF &view)
{
    const Picture &picture = pictureOf(text);
    const QPointF start = baseline + AzimuthalGeometry::shiftInto(view, picture.letters.translated(baseline));
    // On whole pixels, where a picture of letters stays sharp.
    painter.drawPixmap((start + picture.bounds.topLeft()).toPoint(), picture.pixmap);
}
