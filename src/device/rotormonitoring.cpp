#include "device/vextralremotecontrol.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/commandlog.h"
#include "device/protocol.h"
#include "widgets/map/azimuthalanimation.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QThread>

#include <cmath>

// The running heart: the synchronisation pass, the polls, and the rotations that polls see begin and end.

namespace {

constexpr char dashes[] = "---------------------------------------------------------------------------------";
constexpr char dots[] = "..................................";

constexpr double jumpDegreesPerTick = 2.0;
constexpr int afterFirstStatusMs = 100;
constexpr int afterAntennaReadMs = 500;
constexpr int afterRotorSwitchMs = 33;

} // namespace

bool CVextralRemoteControl::startMonitoring()
{
    qDebug("CVextralRemoteControl::startMonitoring() - IN");
    monitore();
    qDebug("CVextralRemoteControl::startMonitoring() - 1");
    m_monitorTimer.start(m_monitorInterval);
    qDebug("CVextralRemoteControl::startMonitoring() - OUT");
    return true;
}

bool CVextralRemoteControl::stopMonitoring()
{
    m_monitorTimer.stop();
    m_deviceResponding = false;
    return true;
}

void CVextralRemoteControl::monitore()
{
    if (m_monitorTimer.isActive())
        poll();
    else
        synchronise();
}

// ---- The synchronisation pass ----

void CVextralRemoteControl::synchronise()
{
    getStatus();
    QThread::msleep(afterFirstStatusMs);
    const int firstRotor = currentRotor(nullptr);
    if (firstRotor >= 0)
        synchroniseAntennas(firstRotor);
    qDebug("%s", dashes);
    synchroniseOtherRotor();
    if (m_map) {
        m_map->syncDisplays();
        m_map->update();
        CVextralAntenna *first = firstRotor >= 0 ? antennaOfRotor(firstRotor) : nullptr;
        if (first)
            m_map->setCurrentAntenna(first);
    }
    afterInitialSync();
    qDebug("%s", dashes);
}

void CVextralRemoteControl::synchroniseAntennas(int rotor)
{
    const QList<CVextralAntenna *> antennas = antennasOfRotor(rotor);
    for (CVextralAntenna *antenna : antennas) {
        antenna->setAngle(getCurrentAngle());
        antenna->clearTarget();
        antenna->setEnabled(true);
        QThread::msleep(afterAntennaReadMs);
    }
}

void CVextralRemoteControl::synchroniseOtherRotor()
{
    if (!toggleRotor()) {
        qDebug("erro ao tentar trocar de rotor");
        return;
    }
    const int otherRotor = currentRotor(nullptr);
    if (otherRotor < 0) {
        qDebug("CVextralRemoteControl::monitore() - Nao deu certo a troca de rotor");
        return;
    }
    synchroniseAntennas(otherRotor);
    toggleRotor();
    const int rotor = currentRotor(nullptr);
    if (CVextralAntenna *antenna = rotor >= 0 ? antennaOfRotor(rotor) : nullptr) {
        antenna->setAngle(getCurrentAngle());
        qDebug("x3");
        antenna->clearTarget();
        antenna->setEnabled(true);
    }
}

// ---- A poll ----

void CVextralRemoteControl::poll()
{
    m_angleValid = false;
    const CDeviceStatus status = readsAngleWithStatus() ? getStatusAndCurrentAngle() : getStatus();
    if (!status.valid) {
        qDebug("................. monitoring has fail");
        m_deviceResponding = false;
        noteAnswer(false);
        return;
    }
    m_deviceResponding = true;
    noteAnswer(true);
    if (status.relayBoxId != m_relayBoxId)
        emit onRelayBoxIdChanged(m_relayBoxId, status.relayBoxId);

    m_angleValid = readsAngleWithStatus();
    updateStatusDisplay(status);
    m_angleValid = true;
    for (CVextralAntenna *antenna : m_antennas)
        antenna->setStatus(status);
    for (CVextralAntenna *antenna : m_antennas) {
        if (!followAntenna(antenna, status))
            return;
    }
    m_angleValid = false;
    if (m_map)
        m_map->update();
}

bool CVextralRemoteControl::followAntenna(CVextralAntenna *antenna, const CDeviceStatus &status)
{
    if (!antenna->rotorStatusFlag()) {
        CRotationDigitalDisplayWidget *display = m_map ? m_map->displayOf(antenna) : nullptr;
        if (display && antenna->isRotorConnected())
            display->setValue(truncatedDegrees(antenna->angle()), false);
        return true;
    }
    antenna->setEnabled(true);
    const double angle = getCurrentAngle();
    if (!isKnownAngle(angle))
        return true;
    if (status.moving) {
        if (m_map && !animateTowards(antenna, angle))
            return false;
        antenna->setAngle(angle);
        antenna->setRotating(true);
        return true;
    }
    if (antenna->angle() != angle)
        finishRotation(antenna, angle);
    if (antenna->isRotating()) {
        antenna->setRotating(false);
        antenna->clearTarget();
        antenna->setAngle(angle);
        emit antenna->onRotationDone();
    }
    return true;
}

bool CVextralRemoteControl::animateTowards(CVextralAntenna *antenna, double angle)
{
    m_map->setAnimationTicks(AzimuthalAnimation::ticksIn(m_monitorInterval));
    if (!antenna->isRotating()) {
        m_map->startAnimation(antenna, angle, angle);
        return true;
    }
    const double previousStep = m_map->animationStep();
    m_map->startAnimation(antenna, antenna->angle(), angle);
    if (std::abs(m_map->animationStep()) <= jumpDegreesPerTick) {
        m_map->startAnimation(antenna, antenna->angle(), angle);
        return true;
    }

    // Too far for one period: go on as before and let the next poll correct.
    m_angleValid = false;
    qDebug("%s", dots);
    qDebug("................. Jump %3.2f interval %3.2f", m_map->animationTicks(), m_map->animationStep());
    qDebug("%s", dots);
    const double next = antenna->angle() + m_map->animationTicks() * previousStep;
    m_map->startAnimation(antenna, antenna->angle(), next);
    antenna->setAngle(next);
    antenna->setRotating(true);
    return false;
}

void CVextralRemoteControl::finishRotation(CVextralAntenna *antenna, double target)
{
    qDebug("................. finalizando tgt[%3.2f]ani[%3.2f]a[%3.2f]", target, antenna->rotation(),
           antenna->angle());
    antenna->setTarget(target);
}

// ---- Showing a status ----

void CVextralRemoteControl::updateStatusDisplay(CDeviceStatus status)
{
    if (m_map)
        m_map->refreshDisplays(true, true);
    if (!status.valid)
        return;
    const int rotor = currentRotor(&status);
    if (rotor >= 0 && rotor != m_lastRotor) {
        if (m_map)
            m_map->setCurrentAntenna(antennaOfRotor(rotor));
        m_lastRotor = rotor;
    }
    if (m_remoteControlWidget) {
        if (rotor >= 0)
            showSelectedRotor(rotor);
        m_remoteControlWidget->showStatus(status);
    }
    for (CVextralAntenna *antenna : m_antennas)
        antenna->refreshEditor();
}

void CVextralRemoteControl::showSelectedRotor(int rotor)
{
    const double angle = getCurrentAngle();
    const CVextralAntenna *current = m_map ? m_map->currentAntenna() : nullptr;
    if (current && isKnownAngle(angle) && current->rotorId() == rotor)
        m_remoteControlWidget->showAzimuth(angle);
    m_firstStatus = false;
}

void CVextralRemoteControl::noteAnswer(bool answered)
{
    if (answered) {
        m_lineState.kind = LineState::Kind::Answering;
        m_sinceAnswer.start();
    } else if (m_lineState.kind == LineState::Kind::Answering) {
        m_lineState.kind = LineState::Kind::Silent;
    }
    showPower(answered);
}

void CVextralRemoteControl::showPower(bool on)
{
    if (m_remoteControlWidget)
        m_remoteControlWidget->showPower(on);
    showLineState();
}

// ---- Rotors ----

bool CVextralRemoteControl::setCurrentRotor(int rotor)
{
    if (rotor >= rotorCount())
        return false;
    CDeviceStatus status = getStatus();
    if (!status.valid) {
        qDebug("CVextralRemoteControl::setCurrentRotor() - error ao tenter rotor corrente...");
        return false;
    }
    if (status.isRotorSelected(rotor)) {
        qDebug("CVextralRemoteControl::setCurrentRotor() - Ja era o rotor corrente...");
        return true;
    }
    if (status.moving) {
        qDebug("CVextralRemoteControl::setCurrentRotor() - Ha um outro rotor em uso girando");
        return false;
    }
    qDebug("CVextralRemoteControl::setCurrentRotor() - vai trocar rotor");
    logCommand("Comando K9");
    send(Protocol::selectOtherRotorCommand());
    logSeparator();
    QThread::msleep(afterRotorSwitchMs);
    status = getStatus();
    return status.valid && status.isRotorSelected(rotor);
}

void CVextralRemoteControl::onToggleRotorButtonChange(int index)
{
    const CDeviceStatus status = getStatus();
    qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - 1");
    if (status.valid && status.isRotorSelected(index)) {
        qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - Este rotor [%d] ja esta ativo", index);
    } else if (status.valid) {
        toggleRotor();
        const int rotor = currentRotor(nullptr);
        if (rotor < 0) {
            toggleRotor();
            qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - Nao foi possivel selecionar rotor");
        } else if (m_map) {
            // The rotor's number counts as the antenna's position here.
            m_map->setCurrentAntenna(antenna(rotor));
        }
    }
    qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - FIM");
}

void CVextralRemoteControl::turnAntennaFromCurrentToTarget(CVextralAntenna *antenna)
{
    qDebug("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - antena mudou para %3.2f",
           antenna ? antenna->target() : unknownAngle);
    if (!antenna || antenna->controller() != this)
        return;
    if (!antenna->isRotorConnected()) {
        antenna->setAngle(antenna->target());
        return;
    }
    // Selecting the rotor pumps events, and a poll among them may change the target.
    const double target = antenna->target();
    const int request = ++m_turnRequests;
    if (!setCurrentRotor(antenna->rotorId())) {
        qDebug("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - Rotor %d nao responde",
               antenna->rotorId());
        return;
    }
    if (request != m_turnRequests)
        return; // the operator has chosen another target meanwhile
    qDebug("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - Rotor %d sera controlado",
           antenna->rotorId());
    antenna->setTarget(target);
    rotateTo(target);
    showOnPanelDisplays(truncatedDegrees(target));
}
