#include "device/vextralremotecontrol.h"

#include "antenna/vextralantenna.h"
#include "device/protocol.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QSerialPort>
#include <QSignalBlocker>

#include <algorithm>
#include <type_traits>

// How a controller is wired: its antennas, its map, its front panel, the panel's signals, and the model
// queries. The line stands in serialcommands.cpp and linerecovery.cpp, the polling in rotormonitoring.cpp.

namespace {

/// The rotor of the antenna at `index`, 0 or more; -1 for one that the settings have no place for.
int rotorIdFor(const CSettings &settings, int index)
{
    return index < CSettings::elementCount ? settings.rotorIds[std::size_t(index)] : -1;
}

} // namespace

CVextralRemoteControl::CVextralRemoteControl(const CSettings *settings)
{
    CVextralRemoteControl::createAntennas(settings);
    connect(&m_monitorTimer, &QTimer::timeout, this, &CVextralRemoteControl::tendLine);
    connect(&m_monitorTimer, &QTimer::timeout, this, &CVextralRemoteControl::monitore);
}

CVextralRemoteControl::~CVextralRemoteControl()
{
    CVextralRemoteControl::close();
}

void CVextralRemoteControl::createAntennas(const CSettings *settings)
{
    // Called by the constructor it makes the base's own four.
    // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall)
    while (static_cast<int>(m_antennas.size()) < antennaCount()) {
        const int i = static_cast<int>(m_antennas.size());
        auto *antenna = new CVextralAntenna(QStringLiteral(":images/arrow2.svg"), i);
        antenna->setParent(this);
        antenna->setColor(Qt::blue);
        antenna->setSvgResources(QStringLiteral(":images/arrow3.svg"), QStringLiteral(":images/arrow5.svg"));
        antenna->setAngle(0.0);
        antenna->setTarget(0.0);
        antenna->setName(QStringLiteral("Antena %1").arg(i + 1));
        antenna->setController(this);
        antenna->setRotorId(rotorIdFor(*settings, i));
        m_antennas.push_back(antenna);
    }
}

void CVextralRemoteControl::applyRotorAssignment(const CSettings *settings)
{
    const int count = std::min(antennaCount(), static_cast<int>(m_antennas.size()));
    for (int i = 0; i < count; ++i)
        m_antennas[i]->setRotorId(rotorIdFor(*settings, i));
}

CVextralAntenna *CVextralRemoteControl::antenna(int index) const
{
    return index >= 0 && index < static_cast<int>(m_antennas.size()) ? m_antennas[index] : nullptr;
}

CVextralAntenna *CVextralRemoteControl::antennaOfRotor(int rotor) const
{
    const auto found = std::find_if(m_antennas.begin(), m_antennas.end(),
                                    [rotor](const CVextralAntenna *a) { return a->rotorId() == rotor; });
    return found == m_antennas.end() ? nullptr : *found;
}

QList<CVextralAntenna *> CVextralRemoteControl::antennasOfRotor(int rotor) const
{
    QList<CVextralAntenna *> result;
    for (CVextralAntenna *antenna : m_antennas) {
        if (antenna->rotorId() == rotor)
            result << antenna;
    }
    return result;
}

void CVextralRemoteControl::setAzimuthalWiget(CVextralAzimuthalWidget *map)
{
    m_map = map;
    if (!map)
        return;
    for (int i = 0; i < antennaCount(); ++i) {
        if (CVextralAntenna *shown = antenna(i))
            map->addAntenna(shown);
        else
            qDebug(
                "CVextralRemoteControl::setAzimuthalWiget() - Warning: antenna de indice [%d] nao aparece no "
                "azimutal",
                i);
    }
}

CVextralAzimuthalWidget *CVextralRemoteControl::azimuthalWidget() const
{
    return m_map;
}

void CVextralRemoteControl::setRemoteControlWidget(CVextralRemoteControlWidget *widget)
{
    if (m_remoteControlWidget || !widget)
        return;
    m_remoteControlWidget = widget;
    widget->bindController(this);
    buildPanel(widget);

    using Panel = CVextralRemoteControlWidget;
    using Base = CVextralRemoteControl;
    connect(widget, &Panel::onAtennaButtonChange, this, &Base::onAtennaButtonChange);
    connect(widget, &Panel::onAtennaTXButtonChange, this, &Base::onAtennaTXButtonChange);
    connect(widget, &Panel::onToggleRotorButtonChange, this, &Base::onToggleRotorButtonChange);
    connect(widget, &Panel::onRadioButtonChange, this, &Base::onRadioButtonChange);

    const auto followOperator = [this](auto *display) {
        using Display = std::remove_pointer_t<decltype(display)>;
        connect(display, &Display::onRotationStarted, this, &Base::onRotationStarted);
        connect(display, &Display::onRotationChanging, this, &Base::onRotationTargetChanging);
        connect(display, &Display::onRotationChanged, this, &Base::onRotationTargetChanged);
    };
    followOperator(widget->digitalDisplay());
    followOperator(widget->dial());

    // The panel may have had its size before it had its buttons.
    widget->relayout();
    showLineState();
}

CVextralRemoteControlWidget *CVextralRemoteControl::remoteControlWidget() const
{
    return m_remoteControlWidget;
}

void CVextralRemoteControl::setLiveDisplay(CRotationDigitalDisplayWidget *display)
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->setDigitalDisplay(display);
}

LineState CVextralRemoteControl::lineState() const
{
    LineState state = m_lineState;
    if (m_sinceAnswer.isValid())
        state.silentSeconds = static_cast<int>(m_sinceAnswer.elapsed() / 1000);
    return state;
}

void CVextralRemoteControl::showLineState()
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->showLine(lineState());
}

// ---- What the operator does ----

void CVextralRemoteControl::onAtennaButtonChange(int index, bool state)
{
    Q_UNUSED(state)
    CAntennaButton *button = m_remoteControlWidget->antennaButtons().at(index);
    if (m_map && index < m_map->antennaCount())
        m_map->setCurrentAntenna(m_map->antennaAt(index));
    if (!button->isEnabled()) {
        qDebug("CVextralRemoteControl::onAtennaButtonChange ----------> ignorado => %d index", index);
        button->setEnabled(true);
        m_ignoredAntennaIndex = index;
        return;
    }
    m_ignoredAntennaIndex = -1;
    toggleRX(index);
}

void CVextralRemoteControl::onAtennaTXButtonChange(int index)
{
    toggleTX(index);
}

void CVextralRemoteControl::onRadioButtonChange(int index, bool state)
{
    toggleRadio(index);
    const QList<CAntennaButton *> radios = m_remoteControlWidget->radioButtons();
    for (int i = 0; i < radios.size(); ++i) {
        const QSignalBlocker blocker(radios[i]);
        if (i != index)
            radios[i]->setChecked(false);
        else if (!state)
            radios[i]->setChecked(true);
    }
}

void CVextralRemoteControl::onRotationStarted()
{
    if (!m_remoteControlWidget)
        return;
    if (CRotationDigitalDisplayWidget *display = m_remoteControlWidget->digitalDisplay())
        display->setEditing(true);
    if (CRotationDialWidget *dial = m_remoteControlWidget->dial())
        dial->setPressed(true);
}

void CVextralRemoteControl::onRotationTargetChanging(int value)
{
    if (m_map && m_map->currentAntenna()) {
        m_map->currentAntenna()->setTarget(value);
        if (CRotationDigitalDisplayWidget *display = m_map->displayOf(m_map->currentAntenna()))
            display->update();
    }
    showOnPanelDisplays(value);
}

void CVextralRemoteControl::onRotationTargetChanged(int value)
{
    if (!m_map)
        return;
    if (m_remoteControlWidget) {
        if (CRotationDigitalDisplayWidget *display = m_remoteControlWidget->digitalDisplay())
            display->setEditing(false);
        if (CRotationDialWidget *dial = m_remoteControlWidget->dial())
            dial->setPressed(false);
        showOnPanelDisplays(value);
    }
    if (CVextralAntenna *antenna = m_map->currentAntenna()) {
        antenna->setTarget(value);
        turnAntennaFromCurrentToTarget(antenna);
        if (m_map)
            m_map->update();
    }
}

void CVextralRemoteControl::showOnPanelDisplays(int value)
{
    if (!m_remoteControlWidget)
        return;
    if (CRotationDigitalDisplayWidget *display = m_remoteControlWidget->digitalDisplay()) {
        display->setValue(value, true);
        display->update();
    }
    if (CRotationDialWidget *dial = m_remoteControlWidget->dial()) {
        dial->setValue(value, true);
        dial->update();
    }
}

// ---- What a model may answer otherwise ----

QString CVextralRemoteControl::modelId()
{
    return QStringLiteral("LUMEN4");
}

QString CVextralRemoteControl::modelName()
{
    return QStringLiteral("Lumen Quad 4");
}

QString CVextralRemoteControl::shortName()
{
    return QStringLiteral("Lumen");
}

QString CVextralRemoteControl::alternateName()
{
    return QStringLiteral("PVX-Lumen");
}

bool CVextralRemoteControl::capabilityA()
{
    return true;
}

int CVextralRemoteControl::antennaCount()
{
    return 4;
}

int CVextralRemoteControl::rotorCount()
{
    return 2;
}

bool CVextralRemoteControl::readsAngleWithStatus()
{
    return false;
}

bool CVextralRemoteControl::supportsAzimuthalMap()
{
    return true;
}

bool CVextralRemoteControl::hasSendAndPower()
{
    return false;
}

bool CVextralRemoteControl::hasSplit()
{
    return false;
}

int CVextralRemoteControl::txButtonCount()
{
    return 4;
}

int CVextralRemoteControl::radioCount()
{
    return 0;
}

bool CVextralRemoteControl::hasOwnPanel()
{
    return false;
}

bool CVextralRemoteControl::hasLogo()
{
    return false;
}

bool CVextralRemoteControl::hasInfoLabels()
{
    return false;
}

bool CVextralRemoteControl::hasTitleLabel()
{
    return false;
}

bool CVextralRemoteControl::capabilityH()
{
    return true;
}

bool CVextralRemoteControl::capabilityI()
{
    return false;
}

bool CVextralRemoteControl::mapAnimationFlag()
{
    return true;
}

bool CVextralRemoteControl::rotateByKey(int key)
{
    Q_UNUSED(key)
    return false;
}

bool CVextralRemoteControl::acceptsDirectionKeys()
{
    return false;
}

void CVextralRemoteControl::decodeStatus(CDeviceStatus &status, quint8 a, quint8 b)
{
    Protocol::decodeStatusBytes(status, a, b);
}

void CVextralRemoteControl::activateSplit() {}

void CVextralRemoteControl::afterInitialSync() {}

void CVextralRemoteControl::relayoutPanel(int width, int height)
{
    Q_UNUSED(width)
    Q_UNUSED(height)
}

void CVextralRemoteControl::setupAntennaEditor(CVextralAntennaUI *editor)
{
    Q_UNUSED(editor)
}

void CVextralRemoteControl::hookC(QWidget *widget)
{
    Q_UNUSED(widget)
}

void CVextralRemoteControl::hideUnusedWidgets() {}

void CVextralRemoteControl::applyInterfaceMode(int mode)
{
    Q_UNUSED(mode)
}

void CVextralRemoteControl::buildPanel(CVextralRemoteControlWidget *widget)
{
    Q_UNUSED(widget)
}

void CVextralRemoteControl::lineWentAway() {}
