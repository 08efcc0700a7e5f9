#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "compass/degrees.h"
#include "device/devicelumen4s.h"
#include "device/vextralremotecontrol.h"
#include "dialogs/settingsdialog.h"
#include "mainwindow/currentobjects.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/ledbutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/memorybutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCloseEvent>
#include <QSignalBlocker>

// How the window stands and what it hands to whom. Shortcuts, memories, modes, held keys and dialogs have a
// source each.

namespace {

/// Two key presses of one search in a list may lie this far apart; operators look away from the keyboard.
constexpr int keyboardInputIntervalMs = 30000;

constexpr int iconSide = 128;
constexpr double zoomStep = 0.2;

} // namespace

CMainWindow::CMainWindow(QWidget *parent)
    : CMainWindow([](const CSettings &settings) { return new CDeviceLumen4S(settings); }, parent)
{}

CMainWindow::CMainWindow(const ControllerFactory &makeController, QWidget *parent)
    : QMainWindow(parent), m_ui(std::make_unique<Ui::CMainWindow>())
{
    m_ui->setupUi(this);
    m_ui->plus180Button->setText(QStringLiteral("+180"));
    hidePropertiesFrame();
    collectMemoryButtons();
    passDirectionKeysToWindow();
    createFixedShortcuts();
    connect(&m_directionTimer, &QTimer::timeout, this, &CMainWindow::onAntennaDirectionTimer);
    QApplication::setKeyboardInputInterval(keyboardInputIntervalMs);
    createSettingsDialog();
    showIcon();

    const CSettings settings;
    m_extendedSize = settings.extendedSize;
    m_miniSize = settings.miniSize;
    m_superMiniSize = settings.superMiniSize;
    createController(makeController, settings);
    connectController();
    createEditors();
    applySettings(settings);
    m_controller->hideUnusedWidgets();
    m_controller->hookC(m_ui->memoryButtonsFrame);
    fitFramesToContent();
    openPort(settings.comPortName);
    createDeviceShortcuts();
    connectMenu();
    update();
}

CMainWindow::~CMainWindow()
{
    // The controller points at the panel, the map and the editors, and its timer runs: it goes first.
    if (CurrentObjects::controller() == m_controller)
        CurrentObjects::setController(nullptr);
    delete m_controller;
    if (CurrentObjects::settingsDialog() && CurrentObjects::settingsDialog()->parent() == this)
        CurrentObjects::setSettingsDialog(nullptr);
}

void CMainWindow::showIcon()
{
    // With its size told, the picture is read only where the desktop asks for it.
    QIcon icon;
    icon.addFile(QStringLiteral(":images/Vextral.png"), QSize(iconSide, iconSide));
    setWindowIcon(icon);
}

void CMainWindow::collectMemoryButtons()
{
    m_memoryButtons = {m_ui->memoButton1, m_ui->memoButton2,  m_ui->memoButton3,  m_ui->memoButton4,
                       m_ui->memoButton5, m_ui->memoButton6,  m_ui->memoButton7,  m_ui->memoButton8,
                       m_ui->memoButton9, m_ui->memoButton10, m_ui->plus180Button};
    for (QPushButton *button : m_memoryButtons) {
        auto *memory = qobject_cast<CMemoryButton *>(button);
        if (!memory)
            continue;
        connect(memory, &CMemoryButton::clicked, this, &CMainWindow::onMemoryButtonClicked);
        connect(memory, &CMemoryButton::onMemoryValueChanged, this, &CMainWindow::onMemoryValueChanged);
    }
}

void CMainWindow::passDirectionKeysToWindow()
{
    // Focused buttons keep Left and Right for themselves; here these keys turn the antenna.
    for (QPushButton *button : {m_ui->pushButton, m_ui->zoomInButton, m_ui->zoomInButton_2,
                                m_ui->hidePropertiesButton, m_ui->propertiesButton})
        button->installEventFilter(this);
}

void CMainWindow::createSettingsDialog()
{
    if (CurrentObjects::settingsDialog())
        return;
    auto *dialog = new CSettingsDIalog(this);
    CurrentObjects::setSettingsDialog(dialog);
}

void CMainWindow::createController(const ControllerFactory &makeController, const CSettings &settings)
{
    m_controller = makeController(settings);
    CurrentObjects::setController(m_controller);
    m_controller->setRemoteControlWidget(m_ui->remoteControlWidget);
    m_controller->setAzimuthalWiget(m_ui->azimuthalWidget);
    m_ui->azimuthalWidget->setDevice(m_controller);
}

void CMainWindow::connectController()
{
    connect(m_controller, &CVextralRemoteControl::onRelayBoxIdChanged, this,
            &CMainWindow::onRotorRelayBoxIdChanged);
    connect(m_ui->azimuthalWidget, &CVextralAzimuthalWidget::onCurrentAntennaChanged, this,
            &CMainWindow::onCurrentAntennaChanged);
    connect(m_controller, &CVextralRemoteControl::onStopRotating, this, &CMainWindow::onStopRotating);
    connect(m_controller, &CVextralRemoteControl::onStartRotating, this, &CMainWindow::onStartRotating);
    connect(m_ui->tabWidget, &QTabWidget::currentChanged, this, &CMainWindow::onTabChanged);
    for (CVextralAntenna *antenna : m_controller->antennas())
        connect(antenna, &CVextralAntenna::onRotationDone, this, &CMainWindow::onAntennaRotationDone);
}

void CMainWindow::createEditors()
{
    for (int i = 0; i < m_controller->antennaCount(); ++i) {
        CVextralAntenna *antenna = m_controller->antenna(i);
        if (!antenna)
            break;
        auto *editor = new CVextralAntennaUI(m_controller->rotorCount(), m_ui->tabWidget);
        m_ui->tabWidget->addTab(editor, QStringLiteral("Antenna %1").arg(i + 1));
        antenna->setEditor(editor);
        m_controller->setupAntennaEditor(editor);
        connect(editor, &CVextralAntennaUI::onNameEdited, this, &CMainWindow::onNameEdited);
    }
}

// ---- Applying the settings ----

void CMainWindow::applySettings(const CSettings &settings)
{
    applyAntennaSettings(settings);
    for (int i = 0; i < CSettings::elementCount; ++i)
        m_memoryButtons[i]->setText(settings.memories[i]);
    const QList<CAntennaButton *> radios = m_ui->remoteControlWidget->radioButtons();
    for (int i = 0; i < radios.size() && i < CSettings::elementCount; ++i)
        radios[i]->setText(captionOfName(settings.radioNames[i]));
    m_ui->remoteControlWidget->relayout();
    m_ui->azimuthalWidget->update();
    applyInterfaceMode(modeOfName(settings.interfaceMode));
    m_ui->azimuthalWidget->refreshDisplays(true, true);
    applyIdentity(settings.relayBoxId, settings.relayBoxName);
}

void CMainWindow::applyAntennaSettings(const CSettings &settings)
{
    for (int i = 0; i < m_controller->antennaCount() && i < CSettings::elementCount; ++i) {
        CVextralAntenna *antenna = m_controller->antenna(i);
        if (!antenna)
            break;
        antenna->setColor(settings.colors[i]);
        antenna->setEnabled(settings.enabled[i]);
        antenna->setAngle(settings.angles[i]);
        antenna->setTarget(settings.angles[i]);
        antenna->setRotating(false);
        antenna->setName(settings.names[i]);

        m_ui->azimuthalWidget->showInDisplay(antenna, shownDegrees(settings.angles[i]));
        if (CVextralAntennaUI *editor = antenna->editor())
            editor->showSettings();
        m_ui->tabWidget->setTabText(i, QStringLiteral("A%1").arg(i + 1));
    }
}

bool CMainWindow::isTitledByName() const
{
    return false; // no model of ours is known by its given name alone
}

void CMainWindow::applyIdentity(int relayBoxId, const QString &relayBoxName)
{
    m_controller->setRelayBoxId(relayBoxId);
    m_controller->setRelayBoxName(relayBoxName);

    const QString model = m_controller->modelName();
    QString title = model + QLatin1String(" : ") + relayBoxName;
    const bool hasId = m_controller->capabilityA();
    if (hasId)
        title = QStringLiteral("%1 %2 %3").arg(model, QString::number(relayBoxId), relayBoxName);
    else if (isTitledByName())
        title = relayBoxName;
    setWindowTitle(QLatin1String("Vextral - ") + title);
}

void CMainWindow::openPort(const QString &portName)
{
    if (m_controller->open(portName))
        return;
    if (CLedButton *power = m_ui->remoteControlWidget->powerIndicator())
        power->setChecked(false);
}

// ---- What the controller, the map and the editors tell ----

void CMainWindow::onCurrentAntennaChanged(CVextralAntenna *antenna)
{
    if (!antenna)
        return;
    const QSignalBlocker blocker(m_ui->tabWidget);
    m_ui->tabWidget->setCurrentIndex(antenna->index());
}

void CMainWindow::onTabChanged(int index)
{
    CVextralAntenna *antenna = m_controller ? m_controller->antenna(index) : nullptr;
    // Asking for the selected rotor reads the box: not for an antenna that no rotor turns.
    if (!antenna || !antenna->isRotorConnected())
        return;
    const int selected = m_controller->currentRotor(nullptr);
    // Another tab may have been chosen while the box was asked.
    if (m_ui->tabWidget->currentIndex() != index)
        return;
    if (selected >= 0 && selected != antenna->rotorId())
        m_controller->setCurrentRotor(antenna->rotorId());
}

void CMainWindow::onAntennaRotationDone()
{
    light(nullptr);
}

void CMainWindow::onStopRotating()
{
    m_directionTimer.stop();
    m_keyHeld = false;
    m_keyRotating = false;
    light(nullptr);
}

void CMainWindow::onNameEdited()
{
    m_ui->remoteControlWidget->relayout();
}

void CMainWindow::toggleRotor()
{
    m_controller->toggleRotor();
}

void CMainWindow::on_zoomInButton_clicked()
{
    m_ui->azimuthalWidget->setZoom(m_ui->azimuthalWidget->zoom() + zoomStep);
}

void CMainWindow::on_zoomInButton_2_clicked()
{
    m_ui->azimuthalWidget->setZoom(m_ui->azimuthalWidget->zoom() - zoomStep);
}

void CMainWindow::closeEvent(QCloseEvent *event)
{
    // So that the size without the panel is the one that is kept.
    on_hidePropertiesButton_clicked();
    if (m_keyRotating)
        stopCurrentAntenna();
    QMainWindow::closeEvent(event);
}
