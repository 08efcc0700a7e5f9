#pragma once

#include <QColor>
#include <QString>

#include <memory>
#include <optional>

class QSvgRenderer;

/// One of an antenna's pictures, drawn from an SVG resource in a colour of the antenna's own. It is parsed
/// when it is drawn for the first time in a colour: most of an antenna's pictures never are, and parsing all
/// of them is felt when the window opens.
class ArrowPicture
{
public:
    /// A resource that cannot be read gives a picture that draws nothing.
    explicit ArrowPicture(const QString &resource);
    ~ArrowPicture();
    ArrowPicture(ArrowPicture &&) noexcept;
    ArrowPicture &operator=(ArrowPicture &&) noexcept;

    /// What is white in the resource takes this colour from now on; renderer() gives a new object afterwards.
    void setColor(const QColor &color);

    /// Never null; owned by the picture, valid until the colour changes.
    QSvgRenderer *renderer() const;

private:
    QString m_svg;
    std::optional<QColor> m_color; ///< None: as in the resource.
    mutable std::unique_ptr<QSvgRenderer> m_renderer;
};
