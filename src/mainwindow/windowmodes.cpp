#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QFile>
#include <QLayout>

// The window's three sizes and looks, and the properties panel that widens it.

namespace {

using Modes = CVextralRemoteControl;

constexpr int remoteFrameMaximumHeight = 90;
constexpr int propertiesPanelWidth = 350;
constexpr int propertiesButtonSide = 20;
constexpr int propertiesButtonRightOffset = 22;
constexpr int propertiesButtonTop = 2;

/// By window mode.
constexpr QSize defaultSizes[] = {CSettings::defaultExtendedSize, CSettings::defaultMiniSize,
                                  CSettings::defaultSuperMiniSize};

} // namespace

int CMainWindow::modeOfName(const QString &name)
{
    if (name == QLatin1String("mini"))
        return Modes::MiniMode;
    return name == QLatin1String("supermini") ? Modes::SuperMiniMode : Modes::ExtendedMode;
}

QSize *CMainWindow::sizeOfMode(int mode)
{
    switch (mode) {
    case Modes::ExtendedMode:
        return &m_extendedSize;
    case Modes::MiniMode:
        return &m_miniSize;
    case Modes::SuperMiniMode:
        return &m_superMiniSize;
    }
    return nullptr;
}

void CMainWindow::applyInterfaceMode(int mode)
{
    const bool allowsExtended = m_controller->supportsAzimuthalMap();
    if (!allowsExtended)
        mode = Modes::MiniMode;
    m_ui->remoteFrame->setMaximumHeight(allowsExtended ? remoteFrameMaximumHeight : QWIDGETSIZE_MAX);

    if (mode != Modes::ExtendedMode && !m_ui->propertiesFrame->isHidden()) {
        hidePropertiesFrame();
        storeSize(m_savedSize);
    }

    // Showing and hiding may resize the window, which overwrites the size that is wanted.
    m_interfaceMode = mode;
    QSize size;
    if (const QSize *stored = sizeOfMode(mode)) {
        size = stored->isValid() ? *stored : defaultSizes[mode];
        const bool hasRotor = m_controller->rotorCount() >= 1;
        m_ui->azimuthalWidget->setInterfaceMode(
            mode == Modes::ExtendedMode ? CVextralAzimuthalWidget::Extended : CVextralAzimuthalWidget::Row);
        m_ui->propertiesButton->setVisible(mode == Modes::ExtendedMode);
        m_ui->memoryButtonsFrame->setVisible(mode != Modes::SuperMiniMode && hasRotor);
        m_ui->azimuthalWidget->setVisible(allowsExtended && mode != Modes::SuperMiniMode);
    }

    m_controller->applyInterfaceMode(mode);
    fitFramesToContent();
    update();
    if (size.isValid())
        resizeSettled(size);
    m_ui->azimuthalWidget->update();
    m_controller->applyInterfaceMode(mode);
}

void CMainWindow::fitFramesToContent()
{
    // An empty frame would take its share of the window.
    const bool showsMap = !m_ui->azimuthalWidget->isHidden();
    m_ui->azimuthalFrame->setVisible(showsMap);
    m_ui->rotorFrame->setVisible(showsMap || !m_ui->memoryButtonsFrame->isHidden());
}

void CMainWindow::resizeSettled(const QSize &size)
{
    // Until the layouts have run, the minimum size of what was hidden just now still bounds the window.
    for (QWidget *container : {static_cast<QWidget *>(m_ui->rotorFrame), static_cast<QWidget *>(m_ui->frame),
                               m_ui->centralWidget, static_cast<QWidget *>(this)})
        container->layout()->activate();
    resize(size);
}

void CMainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    m_ui->propertiesButton->setGeometry(width() - propertiesButtonRightOffset, propertiesButtonTop,
                                        propertiesButtonSide, propertiesButtonSide);
    m_ui->propertiesButton->raise();

    storeSize(size());
}

void CMainWindow::storeSize(const QSize &size)
{
    QSize *current = sizeOfMode(m_interfaceMode);
    if (!current)
        return;
    *current = size;
    CSettings settings;
    QSize *const sizes[] = {&settings.extendedSize, &settings.miniSize, &settings.superMiniSize};
    QSize *stored = sizes[m_interfaceMode];
    // The window opens in the size that is stored: its first picture does not wait for the disk.
    if (*stored == size && QFile::exists(SettingsFile::path()))
        return;
    *stored = size;
    settings.save();
}

void CMainWindow::on_propertiesButton_clicked()
{
    if (!m_ui->propertiesFrame->isHidden())
        return;
    m_savedSize = size();
    m_ui->propertiesFrame->setMinimumWidth(propertiesPanelWidth);
    m_ui->propertiesFrame->show();
    m_ui->propertiesButton->setEnabled(false);
    resizeSettled(QSize(m_savedSize.width() + propertiesPanelWidth, m_savedSize.height()));
}

void CMainWindow::on_hidePropertiesButton_clicked()
{
    if (m_ui->propertiesFrame->isHidden())
        return;
    hidePropertiesFrame();
    if (m_savedSize.isValid())
        resizeSettled(m_savedSize);
}

void CMainWindow::hidePropertiesFrame()
{
    m_ui->propertiesFrame->setMinimumWidth(0);
    m_ui->propertiesFrame->hide();
    m_ui->propertiesButton->setEnabled(true);
}
