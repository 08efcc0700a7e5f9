#include "mainwindow/shortcuts.h"

#include <QAbstractButton>

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
