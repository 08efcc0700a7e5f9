#include "widgets/antennabutton.h"

namespace {

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
