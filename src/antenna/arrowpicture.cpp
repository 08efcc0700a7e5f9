// SPDX-License-Identifier: MIT
#include "antenna/arrowpicture.h"

#include <QLatin1String>
#include <QResource>
#include <QSvgRenderer>

namespace {

const QLatin1String colourableFill("fill:#ffffff");

/// The resource's text, empty when there is no such resource.
QString svgText(const QString &path)
{
    const QByteArray bytes = QResource(path).uncompressedData();
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

QString recoloured(const QString &svg, const QColor &color)
{
    return QString(svg).replace(colourableFill, QLatin1String("fill:") + color.name(), Qt::CaseSensitive);
}

} // namespace

ArrowPicture::ArrowPicture(const QString &resource) : m_svg(svgText(resource)) {}

ArrowPicture::~ArrowPicture() = default;
ArrowPicture::ArrowPicture(ArrowPicture &&) noexcept = default;
ArrowPicture &ArrowPicture::operator=(ArrowPicture &&) noexcept = default;

void ArrowPicture::setColor(const QColor &color)
{
    m_color = color;
    m_renderer.reset();
}

QSvgRenderer *ArrowPicture::renderer() const
{
    if (m_renderer)
        return m_renderer.get();
    m_renderer = std::make_unique<QSvgRenderer>();
    // Loading nothing would only put a warning into the log.
    if (!m_svg.isEmpty())
        m_renderer->load((m_color ? recoloured(m_svg, *m_color) : m_svg).toLatin1());
    return m_renderer.get();
}
