#pragma once

#include "settings/interfacemode.h"

#include <QPointer>
#include <QSize>

class CSettings;
class CVextralRemoteControl;
class QMainWindow;

namespace Ui {
class CMainWindow;
}

/// What the window shows in each interface mode and how large it is then, and the properties panel that
/// widens it. A size that the operator gives the window is kept as that of the present mode; the one of a
/// maximised, minimised or full-screen window is not. Window managers report the new size before or after the
/// new state:
///
///     size, state: followState() brings the size from before back
///     state, size: followState() does so too early, and followResize() undoes it
///
/// Sizes are in pixels. Window, form and controller are not owned.
class WindowModes
{
public:
    WindowModes(QMainWindow *window, const Ui::CMainWindow &form, CVextralRemoteControl *controller);

    /// Takes the size of each mode over.
    void takeSizes(const CSettings &settings);
    /// Enters `mode`, an InterfaceMode; the controller receives any other number too.
    void apply(int mode);
    /// Gives empty frames no room.
    void fitFramesToContent();

    void openProperties();
    void closeProperties();

    /// The window's size changed.
    void followResize();
    /// The window's state changed, e.g. to maximised; `before` is the former one.
    void followState(Qt::WindowStates before);
    /// Without a map image, shows in the empty map where one can be chosen.
    void showMapNotice();

private:
    void showPartsOf(InterfaceMode mode);
    void hidePropertiesFrame();
    void resizeSettled(const QSize &size);
    bool hasNormalSize() const;
    void storeSize(QSize size);

    QPointer<QMainWindow> m_window;
    const Ui::CMainWindow &m_form;
    QPointer<CVextralRemoteControl> m_controller;
    int m_mode = ExtendedMode;
    /// By InterfaceMode.
    std::array<QSize, interfaceModes.size()> m_sizes{};
    /// The normal size before the last one.
    QSize m_sizeBefore;
    /// The last size before the window was maximised; it belongs to that state when no other one follows.
    QSize m_doubtfulSize;
    /// The size before the properties panel was opened.
    QSize m_sizeWithoutProperties;
};
