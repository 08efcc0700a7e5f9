// SPDX-License-Identifier: MIT
#include "widgets/ledbutton.h"

namespace {

constexpr int noFontSize = -1;
constexpr int roomyPadding = 5;
constexpr int tightPadding = 1; // small panel buttons carry an explicit font size

// %1 radius, %2 font rule or nothing, %3 lit text colour, %4 lit padding, %5 lit background
const char sheet[] =
    "QPushButton{\t\tcolor: #999999;\t\tborder: 1px solid #999999;\t\tborder-radius: %1px;"
    "\t\tbackground-color: transparent;%2}"
    "   QPushButton:checked{\t\tcolor: %3;\t\tborder: 1px solid #ff3030;\t\tborder-radius: %1px;"
    "\t\tpadding: %4px;\t\tbackground: %5;\t\tmin-width: 80px;%2}";
const char fontSizeRule[] = "\t\tfont-size: %1px;";

} // namespace

CLedButton::CLedButton(QWidget *parent) : CLedButton(QString(), parent) {}

CLedButton::CLedButton(const QString &text, QWidget *parent) : QPushButton(text, parent)
{
    setCheckable(true);
    rebuildStyleSheet();
}

void CLedButton::setRadius(int radius)
{
    m_radius = radius;
    rebuildStyleSheet();
}

void CLedButton::setFontSize(int size)
{
    m_fontSize = size;
    rebuildStyleSheet();
}

void CLedButton::setBackgroundColor(const QColor &color)
{
    m_backgroundColor = color;
    rebuildStyleSheet();
}

void CLedButton::setTextColor(const QColor &color)
{
    m_textColor = color;
    rebuildStyleSheet();
}

void CLedButton::rebuildStyleSheet()
{
    const bool ownFontSize = m_fontSize != noFontSize;
    const QString fontRule = ownFontSize ? QString::fromLatin1(fontSizeRule).arg(m_fontSize) : QString();
    const int padding = ownFontSize ? tightPadding : roomyPadding;
    setStyleSheet(QString::fromLatin1(sheet).arg(QString::number(m_radius), fontRule, m_textColor.name(),
                                                 QString::number(padding), m_backgroundColor.name()));
}
