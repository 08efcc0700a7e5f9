// SPDX-License-Identifier: MIT
#include "mainwindow/windowmodes.h"

#include "device/vextralremotecontrol.h"
#include "settings/settingsfile.h"
#include "ui_mainwindow.h"
#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QFile>
#include <QImageReader>
#include <QLayout>
#include <QMainWindow>

#include <utility>

namespace {

constexpr int remoteFrameMaximumHeight = 90;
constexpr int propertiesPanelWidth = 350;
constexpr int propertiesButtonSide = 20;
constexpr int propertiesButtonRightOffset = 22;
constexpr int propertiesButtonTop = 2;

/// Those in which the window has a size that the operator did not choose.
constexpr Qt::WindowStates enlargedStates = Qt::WindowMaximized | Qt::WindowFullScreen;
constexpr Qt::WindowStates otherStates = Qt::WindowMinimized | enlargedStates;

bool hasMapImage()
{
    QImageReader reader(AzimuthalMapImage::installedPath());
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

} // namespace

WindowModes::WindowModes(QMainWindow *window, const Ui::CMainWindow &form, CVextralRemoteControl *controller)
    : m_window(window), m_form(form), m_controller(controller)
{}

void WindowModes::takeSizes(const CSettings &settings)
{
    for (std::size_t mode = 0; mode < interfaceModes.size(); ++mode)
        m_sizes[mode] = settings.*interfaceModes[mode].size;
}

void WindowModes::apply(int mode)
{
    const bool allowsExtended = m_controller->supportsAzimuthalMap();
    if (!allowsExtended)
        mode = MiniMode;
    m_form.remoteFrame->setMaximumHeight(allowsExtended ? remoteFrameMaximumHeight : QWIDGETSIZE_MAX);

    if (mode != ExtendedMode && !m_form.propertiesFrame->isHidden()) {
        hidePropertiesFrame();
        if (m_sizeWithoutProperties.isValid())
            storeSize(m_sizeWithoutProperties);
    }

    // Showing and hiding may resize the window, which overwrites the size that is wanted.
    const bool isSameMode = mode == m_mode;
    m_mode = mode;
    QSize size;
    if (isInterfaceMode(mode)) {
        const QSize stored = m_sizes[std::size_t(mode)];
        size = stored.isValid() ? stored : interfaceModes[std::size_t(mode)].defaultSize;
        showPartsOf(InterfaceMode(mode));
    }

    m_controller->applyInterfaceMode(mode);
    fitFramesToContent();
    m_window->update();
    // Another relay box is no reason to take the window out of full screen.
    const bool keepsState = isSameMode && (m_window->windowState() & otherStates);
    if (size.isValid() && !keepsState) {
        m_sizeWhenNormal = QSize();
        m_window->setWindowState(m_window->windowState() & ~otherStates);
        resizeSettled(size);
    }
    m_form.azimuthalWidget->update();
    m_controller->applyInterfaceMode(mode);
}

void WindowModes::showPartsOf(InterfaceMode mode)
{
    using Map = CVextralAzimuthalWidget;
    const bool hasRotor = m_controller->rotorCount() >= 1;
    m_form.azimuthalWidget->setInterfaceMode(mode == ExtendedMode ? Map::Extended : Map::Row);
    m_form.propertiesButton->setVisible(mode == ExtendedMode);
    m_form.memoryButtonsFrame->setVisible(mode != SuperMiniMode && hasRotor);
    m_form.azimuthalWidget->setVisible(m_controller->supportsAzimuthalMap() && mode != SuperMiniMode);
    showMapNotice();
}

void WindowModes::showMapNotice()
{
    // The other modes have no compass, and reading the file takes time at the start.
    m_form.mapNoticeLabel->setVisible(m_mode == ExtendedMode && !hasMapImage());
}

void WindowModes::fitFramesToContent()
{
    // An empty frame would take its share of the window.
    const bool showsMap = !m_form.azimuthalWidget->isHidden();
    m_form.azimuthalFrame->setVisible(showsMap);
    m_form.rotorFrame->setVisible(showsMap || !m_form.memoryButtonsFrame->isHidden());
}

void WindowModes::resizeSettled(const QSize &size)
{
    if (!hasNormalSize())
        return;
    // Until the layouts have run, the minimum size of what was hidden just now still bounds the window.
    for (QWidget *container :
         {static_cast<QWidget *>(m_form.rotorFrame), static_cast<QWidget *>(m_form.frame),
          m_form.centralWidget, static_cast<QWidget *>(m_window)})
        container->layout()->activate();
    m_window->resize(size);
}

void WindowModes::followResize()
{
    m_form.propertiesButton->setGeometry(m_window->width() - propertiesButtonRightOffset, propertiesButtonTop,
                                         propertiesButtonSide, propertiesButtonSide);
    m_form.propertiesButton->raise();
    if (hasNormalSize())
        storeSize(m_window->size());
    else if (m_doubtfulSize.isValid() && m_doubtfulSize != m_window->size())
        storeSize(std::exchange(m_doubtfulSize, QSize()));
}

void WindowModes::followState(Qt::WindowStates before)
{
    if (hasNormalSize() && m_sizeWhenNormal.isValid()) {
        m_doubtfulSize = QSize();
        resizeSettled(std::exchange(m_sizeWhenNormal, QSize()));
    } else if ((before & enlargedStates) && hasNormalSize()) {
        m_doubtfulSize = QSize();
        storeSize(m_window->size());
    } else if (!(before & otherStates) && (m_window->windowState() & enlargedStates)
               && m_sizeBefore.isValid()) {
        m_doubtfulSize = m_window->size();
        storeSize(m_sizeBefore);
    }
}

bool WindowModes::hasNormalSize() const
{
    return !(m_window->windowState() & otherStates);
}

void WindowModes::storeSize(QSize size)
{
    if (!isInterfaceMode(m_mode))
        return;
    QSize &present = m_sizes[std::size_t(m_mode)];
    if (size != present)
        m_sizeBefore = std::exchange(present, size);
    CSettings settings;
    QSize &stored = settings.*interfaceModes[std::size_t(m_mode)].size;
    // The window opens in the size that is stored: its first picture does not wait for the disk.
    if (stored == size && QFile::exists(SettingsFile::path()))
        return;
    stored = size;
    settings.save();
}

void WindowModes::openProperties()
{
    if (!m_form.propertiesFrame->isHidden())
        return;
    m_sizeWithoutProperties = hasNormalSize() ? m_window->size() : m_sizes[ExtendedMode];
    m_sizeWhenNormal = QSize();
    m_form.propertiesFrame->setMinimumWidth(propertiesPanelWidth);
    m_form.propertiesFrame->show();
    m_form.propertiesButton->setEnabled(false);
    resizeSettled(m_sizeWithoutProperties + QSize(propertiesPanelWidth, 0));
}

void WindowModes::closeProperties()
{
    if (m_form.propertiesFrame->isHidden())
        return;
    hidePropertiesFrame();
    if (!m_sizeWithoutProperties.isValid())
        return;
    if (hasNormalSize()) {
        resizeSettled(m_sizeWithoutProperties);
        return;
    }
    m_sizeWhenNormal = m_sizeWithoutProperties;
    storeSize(m_sizeWhenNormal);
}

void WindowModes::hidePropertiesFrame()
{
    m_form.propertiesFrame->setMinimumWidth(0);
    m_form.propertiesFrame->hide();
    m_form.propertiesButton->setEnabled(true);
}
