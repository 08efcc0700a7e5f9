// SPDX-License-Identifier: MIT
#include "widgets/panelelements.h"

#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"

#include <QLabel>

namespace {

constexpr int captionSize = 11;
constexpr int ledFontSize = 9;
constexpr int ledRadius = 4;
constexpr int infoIndent = 3;

const QLatin1String smallSheet("background-color: transparent; font-size: 10px;");
const QLatin1String largeInfoSheet("background-color: transparent; font-size: 16px; color: white;");
const QLatin1String smallInfoSheet("background-color: transparent; font-size: 11px; color: white;");
const QLatin1String titleSheet("background-color: transparent; font-size: 20px; color: white;");

/// A panel that is not seen yet shows its children with itself. Showing them before would polish and measure
/// each of them for nothing.
void showOnSeenPanel(QWidget *child)
{
    if (child->parentWidget()->isVisible())
        child->show();
}

QLabel *label(const QLatin1String &sheet, QWidget *panel)
{
    auto *label = new QLabel(panel);
    label->setStyleSheet(sheet);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    showOnSeenPanel(label);
    return label;
}

/// A narrow one, because models place it where the display ends, with little room to the right.
QLabel *infoLabel(const QLatin1String &sheet, QWidget *panel)
{
    QLabel *info = label(sheet, panel);
    info->setIndent(infoIndent);
    QFont narrow = info->font();
    narrow.setStretch(QFont::SemiCondensed);
    info->setFont(narrow);
    return info;
}

} // namespace

CAntennaButton *PanelElements::antennaButton(const QString &text, QWidget *panel)
{
    auto *button = new CAntennaButton(text, panel);
    QFont font = button->font();
    font.setPixelSize(captionSize);
    button->setFont(font);
    button->setFocusPolicy(Qt::NoFocus);
    showOnSeenPanel(button);
    return button;
}

CLedButton *PanelElements::led(const QString &text, const QString &spokenName, QWidget *panel)
{
    auto *led = new CLedButton(text, panel);
    led->setFontSize(ledFontSize);
    led->setRadius(ledRadius);
    led->setFocusPolicy(Qt::NoFocus);
    led->setAccessibleName(spokenName);
    showOnSeenPanel(led);
    return led;
}

CLedButton *PanelElements::indicator(const QString &text, const QString &spokenName, QWidget *panel)
{
    CLedButton *indicator = led(text, spokenName, panel);
    indicator->setAttribute(Qt::WA_TransparentForMouseEvents);
    return indicator;
}

QLabel *PanelElements::smallLabel(QWidget *panel)
{
    return label(smallSheet, panel);
}

void PanelElements::hiddenLabel(const QString &text, QWidget *panel)
{
    QLabel *hidden = smallLabel(panel);
    hidden->setText(text);
    hidden->hide();
}

QLabel *PanelElements::largeInfoLabel(QWidget *panel)
{
    return infoLabel(largeInfoSheet, panel);
}

QLabel *PanelElements::smallInfoLabel(QWidget *panel)
{
    return infoLabel(smallInfoSheet, panel);
}

QLabel *PanelElements::titleLabel(QWidget *panel)
{
    QLabel *title = label(titleSheet, panel);
    title->setAlignment(Qt::AlignCenter);
    return title;
}
