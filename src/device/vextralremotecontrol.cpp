// SPDX-License-Identifier: MIT
#include "device/vextralremotecontrol.h"

#include "antenna/vextralantenna.h"
#include "device/commandlog.h"
#include "device/protocol.h"
#include "settings/settings.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <algorithm>
#include <type_traits>

namespace {

constexpr int afterToggleRotorMs = 20;

/// The rotor of the antenna at `index`, 0 or more; -1 for one that the settings have no place for.
int rotorIdFor(const CSettings &settings, int index)
{
    return index < CSettings::elementCount ? settings.rotorIds[std::size_t(index)] : -1;
}

} // namespace

CVextralRemoteControl::CVextralRemoteControl(const CSettings *settings)
    : m_monitoring(*this), m_turning(*this, m_link)
{
    CVextralRemoteControl::createAntennas(settings);
    connect(&m_monitoring, &Monitoring::due, &m_link, &BoxLink::tend);
    connect(&m_monitoring, &Monitoring::due, this, &CVextralRemoteControl::monitore);
    connect(&m_link, &BoxLink::opened, this, &CVextralRemoteControl::onLineOpened);
    connect(&m_link, &BoxLink::lost, this, &CVextralRemoteControl::onLineLost);
    connect(&m_link, &BoxLink::back, this, &CVextralRemoteControl::showLineState);
    connect(&m_link, &BoxLink::stateChanged, this, &CVextralRemoteControl::showLineState);
}

CVextralRemoteControl::~CVextralRemoteControl()
{
    m_monitoring.stop();
    closeLine();
}

// ---- The line ----

bool CVextralRemoteControl::open(const QString &portName)
{
    if (m_link.hasLine())
        return isOpen();
    const bool opened = m_link.open(portName);
    showLineState();
    if (!opened)
        return false;
    // Somebody may close the line inside the synchronisation pass, and open it again.
    return startMonitoring() || isOpen();
}

bool CVextralRemoteControl::close()
{
    stopMonitoring();
    closeLine();
    lineWentAway();
    return true;
}

void CVextralRemoteControl::closeLine()
{
    m_link.close();
    showPower(false);
}

bool CVextralRemoteControl::stopMonitoring()
{
    m_monitoring.stop();
    return true;
}

void CVextralRemoteControl::onLineOpened()
{
    showLineState();
    startMonitoring();
}

void CVextralRemoteControl::onLineLost()
{
    showPower(false);
    lineWentAway();
}

void CVextralRemoteControl::noteAnswer(bool answered)
{
    if (!answered)
        m_link.noteSilence();
    showPower(answered);
}

void CVextralRemoteControl::showPower(bool on)
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->showPower(on);
    showLineState();
}

void CVextralRemoteControl::showLineState()
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->showLine(lineState());
}

// ---- Queries ----

double CVextralRemoteControl::getCurrentAngle()
{
    if (!isOpen())
        return unknownAngle;
    if (m_monitoring.holdsAngle())
        return m_currentAngle;
    const std::optional<double> angle = m_link.readAngle();
    m_currentAngle = angle.value_or(unknownAngle);
    if (angle)
        m_lastReadAngle = *angle;
    return m_currentAngle;
}

CDeviceStatus CVextralRemoteControl::getStatusAndCurrentAngle()
{
    const CDeviceStatus status = readStatus(Protocol::statusAndAngleQuery);
    if (status.valid) {
        m_lastReadAngle = m_currentAngle = status.angle;
        qDebug("................. Tudo lido [%3.2f]", status.angle);
    }
    return status;
}

CDeviceStatus CVextralRemoteControl::getStatus()
{
    return readStatus(Protocol::statusQuery);
}

CDeviceStatus CVextralRemoteControl::readStatus(const Protocol::StatusQuery &query)
{
    CDeviceStatus status;
    const Protocol::StatusReply reply = m_link.readStatus(query);
    if (reply.kind != Protocol::StatusReply::Kind::Good)
        return status;
    status.valid = true;
    decodeStatus(status, reply.a, reply.b);
    status.angle = reply.angle;
    return status;
}

void CVextralRemoteControl::decodeStatus(CDeviceStatus &status, quint8 a, quint8 b)
{
    Protocol::decodeStatusBytes(status, a, b);
}

int CVextralRemoteControl::currentRotor(const CDeviceStatus *status)
{
    const CDeviceStatus known = status ? *status : getStatus();
    if (!known.valid)
        return -1;
    if (known.rotorSelected[0])
        return 0;
    return known.rotorSelected[1] ? 1 : -1;
}

// ---- Commands ----

bool CVextralRemoteControl::rotateTo(double angle)
{
    m_turning.begin();
    if (!m_link.hasLine())
        return false;
    m_link.send("Comando girar", Protocol::rotateToCommand(angle));
    logSeparator();
    emit onStartRotating(angle);
    return true;
}

bool CVextralRemoteControl::rotateCCW()
{
    m_turning.begin();
    return m_link.hasLine() && m_link.send("Comando CCW", Protocol::rotateCCWCommand());
}

bool CVextralRemoteControl::rotateCW()
{
    m_turning.begin();
    return m_link.hasLine() && m_link.send("Comando CW", Protocol::rotateCWCommand());
}

bool CVextralRemoteControl::stop()
{
    m_turning.begin();
    return m_link.hasLine() && m_link.send("Comando STOP", Protocol::stopCommand());
}

bool CVextralRemoteControl::toggleRX(int index)
{
    if (!m_link.hasLine())
        return false;
    m_link.send(Protocol::toggleReceivePortCommand(index));
    logCommand("Comando TogleRX");
    return true;
}

bool CVextralRemoteControl::toggleTX(int index)
{
    if (!m_link.hasLine())
        return false;
    m_link.send("Comando TogleTX", Protocol::toggleTransmitLineCommand(index));
    return true;
}

bool CVextralRemoteControl::toggleRotor()
{
    m_turning.begin();
    if (!m_link.hasLine())
        return false;
    m_lastReadAngle = unknownAngle;
    m_link.send("Comando toggle Rotor", Protocol::selectOtherRotorCommand());
    pause(afterToggleRotorMs);
    return true;
}

void CVextralRemoteControl::finishRotation(CVextralAntenna *antenna, double target)
{
    qDebug("................. finalizando tgt[%3.2f]ani[%3.2f]a[%3.2f]", target, antenna->rotation(),
           antenna->angle());
    antenna->setTarget(target);
}

// ---- The antennas ----

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

// ---- Map and panel ----

void CVextralRemoteControl::setAzimuthalWiget(CVextralAzimuthalWidget *map)
{
    m_map = map;
    if (!map)
        return;
    for (int i = 0; i < antennaCount(); ++i) {
        CVextralAntenna *shown = antenna(i);
        if (!shown) {
            qDebug("CVextralRemoteControl::setAzimuthalWiget() - Warning: antenna de indice [%d] nao aparece "
                   "no azimutal",
                   i);
            continue;
        }
        map->addAntenna(shown);
        using Display = CRotationDigitalDisplayWidget;
        connect(map->displayOf(shown), &Display::onRotationGivenUp, shown, [shown] {
            if (!shown->isRotating())
                shown->setTarget(shown->angle());
        });
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
    m_liveDisplay = display;
}

void CVextralRemoteControl::showLiveAzimuth(double degrees)
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->showAzimuth(degrees);
    if (!m_liveDisplay)
        return;
    m_liveDisplay->setValue(truncatedDegrees(degrees), false);
    m_liveDisplay->update();
}

// ---- What the operator does ----

void CVextralRemoteControl::onAtennaButtonChange(int index, bool state)
{
    Q_UNUSED(state)
    if (m_map && index < m_map->antennaCount())
        m_map->setCurrentAntenna(m_map->antennaAt(index));
    if (!m_remoteControlWidget->isAntennaEnabled(index)) {
        qDebug("CVextralRemoteControl::onAtennaButtonChange ----------> ignorado => %d index", index);
        m_remoteControlWidget->setAntennaEnabled(index, true);
        return;
    }
    toggleRX(index);
}

void CVextralRemoteControl::onRadioButtonChange(int index, bool state)
{
    Q_UNUSED(state)
    toggleRadio(index);
    m_remoteControlWidget->showRadio(index);
}

void CVextralRemoteControl::onRotationStarted()
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->setEditing(true);
}

void CVextralRemoteControl::onRotationTargetChanging(int value)
{
    if (m_map && m_map->currentAntenna()) {
        m_map->currentAntenna()->setTarget(value);
        if (CRotationDigitalDisplayWidget *display = m_map->displayOf(m_map->currentAntenna()))
            display->update();
    }
    if (m_remoteControlWidget)
        m_remoteControlWidget->showTarget(value);
}

void CVextralRemoteControl::onRotationTargetChanged(int value)
{
    if (!m_map)
        return;
    if (m_remoteControlWidget) {
        m_remoteControlWidget->setEditing(false);
        m_remoteControlWidget->showTarget(value);
    }
    turnTo(m_map->currentAntenna(), value);
}
