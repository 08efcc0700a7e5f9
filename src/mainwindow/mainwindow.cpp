// SPDX-License-Identifier: MIT
#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "device/devicelumen4s.h"
#include "device/vextralremotecontrol.h"
#include "mainwindow/antennatabs.h"
#include "mainwindow/closerequests.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/heldkeys.h"
#include "mainwindow/labelediting.h"
#include "mainwindow/mapimagechoice.h"
#include "mainwindow/memoryrow.h"
#include "mainwindow/settingsdialogloan.h"
#include "mainwindow/shortcuts.h"
#include "mainwindow/stationmapentry.h"
#include "mainwindow/windowmodes.h"
#include "mainwindow/windowtitle.h"
#include "settings/interfacemode.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/memorybutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCheckBox>
#include <QDialog>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTabBar>

namespace {

/// The longest pause between two key presses of one search in a list; operators look away from the keyboard.
constexpr int keyboardInputIntervalMs = 30000;

constexpr double zoomStep = 0.2;

} // namespace

CMainWindow::CMainWindow(QWidget *parent)
    : CMainWindow([](const CSettings &settings) { return new CDeviceLumen4S(settings); }, parent)
{}

CMainWindow::CMainWindow(const ControllerFactory &makeController, QWidget *parent)
    : QMainWindow(parent), m_ui(std::make_unique<Ui::CMainWindow>())
{
    buildForm();
    createMemoryRow();
    createFixedShortcuts();
    QApplication::setKeyboardInputInterval(keyboardInputIntervalMs);
    m_settingsDialog = std::make_unique<SettingsDialogLoan>(this);
    showIcon();

    const CSettings settings;
    createController(makeController, settings);
    connectController();
    createHeldKeys();
    createAntennaTabs();
    m_modes = std::make_unique<WindowModes>(this, *m_ui, m_controller.get());
    m_modes->takeSizes(settings);
    applySettings(settings);
    m_controller->hideUnusedWidgets();
    m_controller->hookC(m_ui->memoryButtonsFrame);
    m_modes->fitFramesToContent();
    openPort(settings.comPortName);
    createDeviceShortcuts();
    connectMenu();
    connectConfigurationChange();
    update();
}

CMainWindow::~CMainWindow()
{
    tearDown();
}

/// Deletes the parts of the window while everything that they use still exists.
void CMainWindow::tearDown()
{
    m_settingsDialog->close();
    m_memoryRow->finishEdits();
    // The controller points at the panel, the map and the editors, and its timer runs.
    if (CurrentObjects::controller() == m_controller.get())
        CurrentObjects::setController(nullptr);
    m_heldKeys.reset();
    m_controller.reset();
    delete takeCentralWidget();
}

// ---- Making and connecting the parts ----

void CMainWindow::buildForm()
{
    m_ui->setupUi(this);
    m_ui->plus180Button->setText(QStringLiteral("+180"));
    m_ui->propertiesFrame->hide();
    m_closeRequests = std::make_unique<CloseRequests>(this);
    m_mapImageChoice = std::make_unique<MapImageChoice>(this);
    connect(m_mapImageChoice.get(), &MapImageChoice::installed, this, &CMainWindow::showNewMap);
}

void CMainWindow::showNewMap()
{
    m_ui->azimuthalWidget->reloadMap();
    m_modes->showMapNotice();
}

void CMainWindow::showIcon()
{
    // With its size given, the picture is read only where the desktop asks for it.
    QIcon icon;
    icon.addFile(QStringLiteral(":images/Vextral.png"), QSize(128, 128));
    setWindowIcon(icon);
}

void CMainWindow::createMemoryRow()
{
    std::vector<CMemoryButton *> memories;
    for (int i = 1; i <= CSettings::elementCount; ++i)
        memories.push_back(findChild<CMemoryButton *>(QStringLiteral("memoButton%1").arg(i)));
    m_memoryRow =
        std::make_unique<MemoryRow>(std::move(memories), m_ui->plus180Button, m_ui->azimuthalWidget);
    for (CMemoryButton *memory : m_memoryRow->memories()) {
        connect(memory, &CMemoryButton::clicked, this, &CMainWindow::onMemoryButtonClicked);
        connect(memory, &CMemoryButton::onMemoryValueChanged, this, &CMainWindow::onMemoryValueChanged);
    }
}

void CMainWindow::createController(const ControllerFactory &makeController, const CSettings &settings)
{
    m_controller.reset(makeController(settings));
    CurrentObjects::setController(m_controller.get());
    m_controller->setRemoteControlWidget(m_ui->remoteControlWidget);
    m_controller->setAzimuthalWiget(m_ui->azimuthalWidget);
    m_ui->azimuthalWidget->setDevice(m_controller.get());
}

void CMainWindow::connectController()
{
    using Controller = CVextralRemoteControl;
    connect(m_controller.get(), &Controller::onRelayBoxIdChanged, this,
            &CMainWindow::onRotorRelayBoxIdChanged);
    connect(m_ui->azimuthalWidget, &CVextralAzimuthalWidget::onCurrentAntennaChanged, this,
            &CMainWindow::onCurrentAntennaChanged);
    connect(m_controller.get(), &Controller::onStopRotating, this, &CMainWindow::onStopRotating);
    connect(m_controller.get(), &Controller::onStartRotating, this,
            [this](double angle) { m_memoryRow->showStart(angle); });
    connect(m_settingsDialog.get(), &SettingsDialogLoan::accepted, this, &CMainWindow::onSettingsAccepted);
    connect(m_ui->tabWidget, &QTabWidget::currentChanged, this, &CMainWindow::onTabChanged);
    for (CVextralAntenna *antenna : m_controller->antennas())
        connect(antenna, &CVextralAntenna::onRotationDone, this, &CMainWindow::onAntennaRotationDone);
}

void CMainWindow::createHeldKeys()
{
    m_heldKeys = std::make_unique<HeldKeys>(m_controller.get(), m_ui->azimuthalWidget, this);
    connect(m_heldKeys.get(), &HeldKeys::delayPassed, this, &CMainWindow::onAntennaDirectionTimer);
    for (QPushButton *button : {m_ui->pushButton, m_ui->zoomInButton, m_ui->zoomInButton_2,
                                m_ui->hidePropertiesButton, m_ui->propertiesButton})
        m_heldKeys->passFrom(button);
    m_heldKeys->passFrom(m_ui->tabWidget->tabBar());
}

void CMainWindow::createAntennaTabs()
{
    m_antennaTabs = std::make_unique<AntennaTabs>(m_ui->tabWidget, m_ui->tabWidgetLayout, m_controller.get());
    m_antennaTabs->createEditors();
    for (QCheckBox *tick : m_ui->tabWidget->findChildren<QCheckBox *>())
        m_heldKeys->passFrom(tick);
    connect(m_antennaTabs.get(), &AntennaTabs::nameEdited, m_ui->remoteControlWidget,
            &CVextralRemoteControlWidget::relayout);
}

// ---- Keys and menu ----

void CMainWindow::createFixedShortcuts()
{
    m_shortcuts = std::make_unique<Shortcuts>(this);
    m_shortcuts->addRow(QStringLiteral("M"), m_memoryRow->memories(), QStringLiteral("Shift+"),
                        Shortcuts::firstMemoryKey, this, &CMainWindow::onMemoryButtonShortcutTrigered);
    m_shortcuts->add(Shortcuts::plus180Keys, this, &CMainWindow::on_plus180Button_clicked);
    Shortcuts::showKeys(m_ui->plus180Button, tr("Opposite bearing"), Shortcuts::plus180Keys);
    m_rotorShortcut = m_shortcuts->add(Shortcuts::rotorKeys, this, &CMainWindow::toggleRotor);
}

void CMainWindow::createDeviceShortcuts()
{
    const CVextralRemoteControlWidget *panel = m_ui->remoteControlWidget;
    m_shortcuts->addRow(QStringLiteral("RX"), panel->antennaButtons(), QString(), Shortcuts::firstRxKey, this,
                        &CMainWindow::onAtennaButtonShortcutTrigered);
    m_shortcuts->addRow(QStringLiteral("TX"), panel->txButtons(), QString(), Shortcuts::firstTxKey, this,
                        &CMainWindow::onAtennaTXButtonShortcutTrigered);

    const int radios = m_controller->radioCount();
    for (int i = 0; i < radios; ++i)
        m_shortcuts->addForPosition(i, Shortcuts::functionKey(Shortcuts::firstRadioKey + i), this,
                                    &CMainWindow::onRadioButtonShortcutTrigered);
    if (radios == 0 || m_controller->rotorCount() > 0)
        return;
    delete m_rotorShortcut;
}

void CMainWindow::connectMenu()
{
    const bool allowsSettingsDialog = m_controller->capabilityH();
    const bool allowsLabelEditor = m_controller->capabilityI();
    if (allowsSettingsDialog)
        m_shortcuts->add(Shortcuts::settingsKeys, this, &CMainWindow::onShowSettingsDialog);
    if (allowsLabelEditor)
        m_shortcuts->add(Shortcuts::labelKeys, this, &CMainWindow::onShowAntennaLabelEditorDialog);
    Shortcuts::showInMenu(m_ui->actionPreferences, Shortcuts::settingsKeys);
    Shortcuts::showInMenu(m_ui->actionLabels, Shortcuts::labelKeys);
    m_ui->actionPreferences->setEnabled(allowsSettingsDialog);
    m_ui->actionLabels->setEnabled(allowsLabelEditor);
    connect(m_ui->actionPreferences, &QAction::triggered, this, &CMainWindow::onPreferenceMenuTriggered);
    connect(m_ui->actionLabels, &QAction::triggered, this, &CMainWindow::onEditLabelsMenuTriggered);
    connect(m_ui->actionQuit, &QAction::triggered, this, &CMainWindow::close);
    if (m_controller->supportsAzimuthalMap())
        addStationMapEntry(m_ui->menuFile, this, [this] { showNewMap(); });
}

void CMainWindow::connectConfigurationChange()
{
    // First the one that saves; the others give up.
    connect(this, &CMainWindow::configurationAboutToChange, m_settingsDialog.get(),
            &SettingsDialogLoan::saveWhereOpen);
    connect(this, &CMainWindow::configurationAboutToChange, m_antennaTabs.get(), &AntennaTabs::giveUp);
    connect(this, &CMainWindow::configurationAboutToChange, this, [this] { m_memoryRow->giveUp(); });
    for (auto *display : findChildren<CRotationDigitalDisplayWidget *>())
        connect(this, &CMainWindow::configurationAboutToChange, display,
                &CRotationDigitalDisplayWidget::giveUp);
}

void CMainWindow::onAtennaButtonShortcutTrigered()
{
    m_shortcuts->clickButtonOf(sender(), m_ui->remoteControlWidget->antennaButtons());
}

void CMainWindow::onAtennaTXButtonShortcutTrigered()
{
    m_shortcuts->clickButtonOf(sender(), m_ui->remoteControlWidget->txButtons());
}

void CMainWindow::onRadioButtonShortcutTrigered()
{
    const int position = m_shortcuts->positionOf(sender());
    if (position >= 0)
        m_controller->toggleRadio(position);
}

void CMainWindow::onMemoryButtonShortcutTrigered()
{
    m_memoryRow->finishEdits();
    m_memoryRow->recall(m_shortcuts->positionOf(sender()));
}

void CMainWindow::toggleRotor()
{
    m_controller->toggleRotor();
}

// ---- Applying the settings ----

void CMainWindow::applySettings(const CSettings &settings)
{
    m_antennaTabs->apply(settings, m_ui->azimuthalWidget);
    m_memoryRow->showTexts(settings.memories);
    m_ui->remoteControlWidget->showRadioNames(
        QStringList(settings.radioNames.begin(), settings.radioNames.end()));
    m_ui->remoteControlWidget->relayout();
    m_ui->azimuthalWidget->update();
    m_modes->apply(interfaceModeOf(settings.interfaceMode));
    m_ui->azimuthalWidget->refreshDisplays(true, true);
    applyIdentity(settings.relayBoxId, settings.relayBoxName);
}

void CMainWindow::applyIdentity(int relayBoxId, const QString &relayBoxName)
{
    m_controller->setRelayBoxId(relayBoxId);
    m_controller->setRelayBoxName(relayBoxName);

    setWindowTitle(windowTitleOf(*m_controller));
}

void CMainWindow::openPort(const QString &portName)
{
    if (!m_controller->open(portName))
        m_ui->remoteControlWidget->showPower(false);
}

// ---- The map and the tabs ----

void CMainWindow::onCurrentAntennaChanged(CVextralAntenna *antenna)
{
    m_antennaTabs->select(antenna);
}

void CMainWindow::onTabChanged(int index)
{
    m_antennaTabs->followTab(index);
}

void CMainWindow::on_zoomInButton_clicked()
{
    m_ui->azimuthalWidget->setZoom(m_ui->azimuthalWidget->zoom() + zoomStep);
}

void CMainWindow::on_zoomInButton_2_clicked()
{
    m_ui->azimuthalWidget->setZoom(m_ui->azimuthalWidget->zoom() - zoomStep);
}

void CMainWindow::on_pushButton_clicked()
{
    m_mapImageChoice->ask();
}

void CMainWindow::onMemoryButtonClicked(bool /*b*/)
{
    m_memoryRow->click(sender());
}

void CMainWindow::onMemoryValueChanged(int value)
{
    m_memoryRow->store(sender(), value);
}

void CMainWindow::on_plus180Button_clicked()
{
    m_memoryRow->recallOpposite();
}

void CMainWindow::onAntennaRotationDone()
{
    m_memoryRow->showRest();
}

void CMainWindow::keyPressEvent(QKeyEvent *event)
{
    if (!m_heldKeys->press(event->key()))
        QMainWindow::keyPressEvent(event);
}

void CMainWindow::keyReleaseEvent(QKeyEvent *event)
{
    if (!m_heldKeys->release(event->key()))
        QMainWindow::keyReleaseEvent(event);
}

void CMainWindow::onAntennaDirectionTimer()
{
    m_heldKeys->letGo();
}

void CMainWindow::onStopRotating()
{
    m_heldKeys->forget();
    m_memoryRow->showRest();
}

void CMainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    m_modes->followResize();
}

void CMainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        m_modes->followState(static_cast<QWindowStateChangeEvent *>(event)->oldState());
}

void CMainWindow::on_propertiesButton_clicked()
{
    m_modes->openProperties();
}

void CMainWindow::on_hidePropertiesButton_clicked()
{
    m_modes->closeProperties();
}

void CMainWindow::closeEvent(QCloseEvent *event)
{
    if (m_closeRequests->bringDialogToFront())
        return event->ignore();
    // So that the size without the panel is the one that is kept.
    m_modes->closeProperties();
    m_heldKeys->stopRotation();
    QMainWindow::closeEvent(event);
}

void CMainWindow::onPreferenceMenuTriggered(bool /*c*/)
{
    onShowSettingsDialog();
}

void CMainWindow::onShowSettingsDialog()
{
    if (!m_controller->capabilityH())
        return;
    m_modes->closeProperties();
    m_settingsDialog->open(m_controller.get(), m_antennaTabs.get());
}

void CMainWindow::onSettingsAccepted(const QString &mode)
{
    if (!mode.isEmpty())
        m_modes->apply(interfaceModeOf(mode));
    applyIdentity(m_controller->relayBoxId(), CSettings().relayBoxName);
}

void CMainWindow::onEditLabelsMenuTriggered(bool /*c*/)
{
    onShowAntennaLabelEditorDialog();
}

void CMainWindow::onShowAntennaLabelEditorDialog()
{
    if (!m_controller->capabilityI())
        return;
    const QDialog *dialog = editLabels(m_ui->remoteControlWidget, m_controller.get(), this);
    connect(this, &CMainWindow::configurationAboutToChange, dialog, &QDialog::reject);
}

void CMainWindow::onRotorRelayBoxIdChanged(int currentValue, int newValue)
{
    // Reopening the port polls, and a poll may report the same change again.
    if (m_changingRelayBox)
        return;
    const QScopedValueRollback<bool> changing(m_changingRelayBox, true);
    emit configurationAboutToChange();
    qDebug("CMainWindow::onRotorRelayBoxIdChanged() - O atual valor [%d] mudou para [%d]", currentValue,
           newValue);
    const CSettings settings = SettingsFile::ofThisProgram().exchange(currentValue, newValue);
    m_controller->close();
    m_controller->applyRotorAssignment(&settings);
    applySettings(settings);
    for (CVextralAntenna *antenna : m_controller->antennas())
        antenna->refreshEditor();
    update();
    openPort(settings.comPortName);
    m_settingsDialog->reloadWhereOpen();
}
