// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>

#include <memory>
#include <optional>

class QSvgRenderer;

/// One of an antenna's pictures, drawn from an SVG resource in the antenna's colour. It is parsed when it is
/// first drawn in a colour: most pictures of an antenna are never drawn, and parsing all of them would delay
/// the start.
class ArrowPicture
{
public:
    /// A resource that cannot be read gives a picture that draws nothing.
    explicit ArrowPicture(const QString &resource);
    ~ArrowPicture();
    ArrowPicture(ArrowPicture &&) noexcept;
    ArrowPicture &operator=(ArrowPicture &&) noexcept;

    /// Draws the white parts of the resource in this colour from now on. Invalidates renderer().
    void setColor(const QColor &color);

    /// Never null; owned by the picture, valid until the colour changes.
    QSvgRenderer *renderer() const;

private:
    QString m_svg;
    std::optional<QColor> m_color; ///< None: as in the resource.
    mutable std::unique_ptr<QSvgRenderer> m_renderer;
};
