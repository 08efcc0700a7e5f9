// SPDX-License-Identifier: MIT
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

/// Sets what the window shows in each interface mode and its size there, and opens the properties panel,
/// which makes the window wider. When the operator resizes the window, the size is saved for the present
/// mode, but not while the window is maximised, minimised or full-screen. When the window becomes maximised
/// or full-screen, some window managers report the new size before the new state, others after it:
///
///     first size, then state: followResize() saves the large size, followState() restores the one before
///     first state, then size: followState() restores an old size, and followResize() corrects this
///
/// Sizes are in pixels. Window, form and controller are not owned.
class WindowModes
{
public:
    WindowModes(QMainWindow *window, const Ui::CMainWindow &form, CVextralRemoteControl *controller);

    /// Loads the size of each mode.
    void takeSizes(const CSettings &settings);
    /// Changes to `mode`, an InterfaceMode. A number that is none is only handed to the controller. A model
    /// without a map is always in MiniMode.
    void apply(int mode);
    /// Hides the frames that have nothing to show, which would take room otherwise.
    void fitFramesToContent();

    void openProperties();
    void closeProperties();

    /// To be called when the window's size has changed.
    void followResize();
    /// To be called when the window's state has changed, for example to maximised; `before` is the former
    /// state.
    void followState(Qt::WindowStates before);
    /// In ExtendedMode without a map image, shows a text in the empty map that says where to choose one.
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
    /// The index is the InterfaceMode.
    std::array<QSize, interfaceModes.size()> m_sizes{};
    /// The size that was saved before the present one.
    QSize m_sizeBefore;
    /// The size when the window was maximised. It is the maximised size if no other size is reported
    /// afterwards, and the normal one otherwise.
    QSize m_doubtfulSize;
    /// The normal size before the properties panel was opened.
    QSize m_sizeWithoutProperties;
    /// The size to take when the window is no longer maximised, minimised or full-screen, where the
    /// properties panel, which makes the window wider, was closed meanwhile.
    QSize m_sizeWhenNormal;
};
