// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>

class CVextralAzimuthalWidget;
class CVextralRemoteControl;

/// The keys that turn the current antenna while they are held: Left and F10 counter-clockwise, Right and F11
/// clockwise. Auto-repeat makes pairs of release and press, so a release ends the rotation only when no press
/// follows at once:
///
///     idle --press--> turning --release--> waiting --233 ms, delayPassed()--> letGo(): idle
///                             <--press----
///
/// A release counts when its press came here: one in a text field or of another shortcut did not. A model may
/// handle the keys itself; then nothing is held here.
class HeldKeys : public QObject
{
    Q_OBJECT

public:
    /// `window` gets the keys; neither it nor the others are owned.
    HeldKeys(CVextralRemoteControl *controller, CVextralAzimuthalWidget *map, QWidget *window);

    /// Lets the keys pass from a widget, which would use them itself, to the window while it is a part of it.
    void passFrom(QWidget *widget);

    /// Each returns whether the key, a Qt::Key, is one of these.
    bool press(int key);
    bool release(int key);

    /// The keys were let go: stops the rotation.
    void letGo();
    /// The rotation ended otherwise.
    void forget();
    /// Stops a rotation that a held key has started.
    void stopRotation();

signals:
    /// No press has followed the last release.
    void delayPassed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void turn(int direction);
    void stopCurrentAntenna();
    void forgetKeys();

    QPointer<CVextralRemoteControl> m_controller;
    QPointer<CVextralAzimuthalWidget> m_map;
    QPointer<QWidget> m_window;
    /// The keys that were pressed here and not released yet.
    QSet<int> m_pressed;
    /// A key was pressed, and since then all keys have not been released for long enough.
    bool m_held = false;
    /// The controller was told to rotate.
    bool m_rotating = false;
    QTimer m_releaseTimer;
};
