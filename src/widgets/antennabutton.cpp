// SPDX-License-Identifier: MIT
#include "widgets/antennabutton.h"

#include "widgets/buttoncaption.h"

#include <QEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

/// Border and padding of the sheet, on both sides together.
constexpr int captionMargins = 12;

// %1 text, %2 inner and %3 outer colour of the glow
const char sheet[] =
    "QPushButton{color: #999999;border: 1px solid #222222;border-radius: 11px;padding: 5px;"
    "background: qradialgradient(cx: 0.3, cy: -0.4,fx: 0.3, fy: -0.4,radius: 1.35, stop: 0 #888888, stop: 1 "
    "#000000);}"
    "   QPushButton:checked{color: %1;border: 1px solid #555;border-radius: 11px;padding: 5px;"
    "background: qradialgradient(cx: 0.3, cy: 0.4,fx: 0.3, fy: -0.4,radius: 4.35, stop: 0 %2, stop: 1 %3);"
    "min-width: 80px;}";

QString glowSheet(const QColor &glow)
{
    return QString::fromLatin1(sheet).arg(QStringLiteral("#333"), glow.name(), QStringLiteral("#333333"));
}

QString redSheet()
{
    return QString::fromLatin1(sheet).arg(QStringLiteral("#ffffff"), QStringLiteral("#ff0000"),
                                          QStringLiteral("#330000"));
}

} // namespace

CAntennaButton::CAntennaButton(QWidget *parent) : CAntennaButton(QString(), parent) {}

CAntennaButton::CAntennaButton(const QString &text, QWidget *parent) : QPushButton(text, parent)
{
    setCheckable(true);
    setColor(m_color);
}

void CAntennaButton::setColor(const QColor &color)
{
    m_color = color;
    setStyleSheet(glowSheet(color));
}

void CAntennaButton::setRedState(bool red)
{
    if (red == m_redState)
        return;
    m_redState = red;
    setStyleSheet(red ? redSheet() : glowSheet(Qt::white));
    update();
}

// ---- The caption ----

void CAntennaButton::fitCaption(int pixelSize)
{
    const QSize room = size() - QSize(captionMargins, captionMargins);
    const FittedCaption fitted = fittedCaption(text(), font(), room, pixelSize);
    m_wholeText = text();
    m_fittedText = fitted.text;
    QFont sized = font();
    sized.setPixelSize(fitted.pixelSize);
    setFont(sized);
    composeToolTip();
    update();
}

QString CAntennaButton::shownText() const
{
    return text() == m_wholeText ? m_fittedText : text();
}

void CAntennaButton::composeToolTip()
{
    m_composedToolTip = m_givenToolTip;
    if (shownText() != text()) {
        const QString name =
            accessibleDescription().isEmpty() ? nameOfCaption(text()) : accessibleDescription();
        m_composedToolTip = m_givenToolTip.isEmpty() ? name : name + QLatin1Char('\n') + m_givenToolTip;
    }
    if (toolTip() != m_composedToolTip)
        setToolTip(m_composedToolTip);
}

bool CAntennaButton::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTipChange && toolTip() != m_composedToolTip) {
        m_givenToolTip = toolTip();
        composeToolTip();
    }
    return QPushButton::event(event);
}

void CAntennaButton::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = shownText();
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}

// ---- The mouse ----

void CAntennaButton::mousePressEvent(QMouseEvent *event)
{
    QPushButton::mousePressEvent(event);
    emit onMouseDown();
}

void CAntennaButton::mouseReleaseEvent(QMouseEvent *event)
{
    QPushButton::mouseReleaseEvent(event);
    emit onMouseUp();
}
