#pragma once

#include "widgets/antennabutton.h"

#include <QStringList>
#include <QWidget>

/// A rotator's panel as the operator sees it, and dialogues about it. A dialogue's lines, divided by "; ",
/// say what happens, what the box hears of it and which lamps are lit then: "STOP -> M115 [STOP]".
namespace RotatorPanel {

/// The visible child of that class; the panel has hidden ones for other models.
template <typename Widget>
Widget *shown(const QWidget &panel, const QString &text = QString())
{
    for (Widget *widget : panel.findChildren<Widget *>()) {
        if (!widget->isHidden() && (text.isEmpty() || widget->property("text") == text))
            return widget;
    }
    return nullptr;
}

inline CAntennaButton *button(const QWidget &panel, const QString &text)
{
    return shown<CAntennaButton>(panel, text);
}

/// Plays a dialogue and returns it as it really came out. `act` does an action and returns what the box
/// heard; it is told how many commands are expected.
template <typename Act>
QString play(const QWidget &panel, const QString &dialogue, Act act)
{
    QStringList lines;
    for (const QString &line : dialogue.split("; ")) {
        const QString action = line.section(" -> ", 0, 0).section(" [", 0, 0);
        const QString expected = line.section(" -> ", 1).section(" [", 0, 0);
        const QString heard = act(action, expected.isEmpty() ? 0 : expected.count(' ') + 1);
        QStringList lit;
        for (const char *name : {"CCW", "STOP", "CW"}) {
            if (button(panel, name)->isChecked())
                lit << name;
        }
        lines << action + (heard.isEmpty() ? "" : " -> ") + heard
                     + (lit.isEmpty() ? QString() : " [" + lit.join(' ') + "]");
    }
    return lines.join("; ");
}

} // namespace RotatorPanel
