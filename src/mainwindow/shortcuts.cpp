// SPDX-License-Identifier: MIT
#include "mainwindow/shortcuts.h"

#include <QAbstractButton>
#include <QAction>

QShortcut *Shortcuts::make(const QString &keys)
{
    auto *shortcut = new QShortcut(QKeySequence(keys), m_window);
    shortcut->setContext(Qt::WindowShortcut);
    // A key that is held down would switch a relay on and off many times.
    shortcut->setAutoRepeat(false);
    return shortcut;
}

QString Shortcuts::functionKey(int number)
{
    return QStringLiteral("F%1").arg(number);
}

void Shortcuts::showKeys(QAbstractButton *button, const QString &what, const QString &keys)
{
    button->setToolTip(what + QLatin1Char('\t') + keys);
}

void Shortcuts::showInMenu(QAction *action, const QString &keys)
{
    action->setShortcut(QKeySequence(keys));
    // The same keys twice in a window would reach neither; these count in a menu bar with the focus.
    action->setShortcutContext(Qt::WidgetShortcut);
}
