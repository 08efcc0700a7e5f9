// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QLatin1String>
#include <QPointer>
#include <QShortcut>
#include <QString>

class QAbstractButton;
class QAction;

/// The window's keys. Each calls an operation of the window or clicks a button in a row of buttons. A key may
/// have only one shortcut: with two on the same key neither fires.
class Shortcuts
{
public:
    // Numbers of function keys.
    static constexpr int firstRxKey = 1;
    static constexpr int firstTxKey = 5;
    static constexpr int firstRadioKey = 7;
    static constexpr int firstMemoryKey = 1;
    static inline const QLatin1String rotorKeys{"F9"};
    static inline const QLatin1String plus180Keys{"F12"};
    static inline const QLatin1String settingsKeys{"Ctrl+F5"};
    static inline const QLatin1String labelKeys{"Ctrl+F6"};

    explicit Shortcuts(QWidget *window) : m_window(window) {}

    /// Calls `slot` of the window at each press of `keys`, in the text form of QKeySequence.
    template <typename Window>
    QShortcut *add(const QString &keys, Window *window, void (Window::*slot)())
    {
        QShortcut *shortcut = make(keys);
        QObject::connect(shortcut, &QShortcut::activated, window, slot);
        return shortcut;
    }
    /// As add(), for the number `position` of a row.
    template <typename Window>
    void addForPosition(int position, const QString &keys, Window *window, void (Window::*slot)())
    {
        m_positions.insert(add(keys, window, slot), position);
    }
    /// A key for each button of a row, F`firstKey` and on with `modifiers` before it ("Shift+"). The buttons'
    /// tool tips say `kind`, their number and their key.
    template <typename Buttons, typename Window>
    void addRow(const QString &kind, const Buttons &buttons, const QString &modifiers, int firstKey,
                Window *window, void (Window::*slot)())
    {
        int position = 0;
        for (QAbstractButton *button : buttons) {
            const QString keys = modifiers + functionKey(firstKey + position);
            showKeys(button, kind + QString::number(position + 1), keys);
            addForPosition(position++, keys, window, slot);
        }
    }

    /// The position in its row of the button that a shortcut clicks, -1 for a shortcut without a row.
    int positionOf(const QObject *shortcut) const { return m_positions.value(shortcut, -1); }

    /// Clicks the button of a shortcut in its row.
    template <typename Button>
    void clickButtonOf(const QObject *shortcut, const QList<Button *> &row) const
    {
        if (Button *button = row.value(positionOf(shortcut)))
            button->click();
    }

    static QString functionKey(int number);
    /// Says in the tool tip what a button is and what its keys are.
    static void showKeys(QAbstractButton *button, const QString &what, const QString &keys);

    /// Shows the keys of a shortcut beside the menu entry that does the same.
    static void showInMenu(QAction *action, const QString &keys);

private:
    QShortcut *make(const QString &keys);

    QPointer<QWidget> m_window;
    QHash<const QObject *, int> m_positions;
};
