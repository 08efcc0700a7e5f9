// SPDX-License-Identifier: MIT
#include "device/monitoring.h"

#include "antenna/vextralantenna.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <cmath>

namespace {

constexpr char dashes[] = "---------------------------------------------------------------------------------";
constexpr char dots[] = "..................................";

constexpr double jumpDegreesPerTick = 2.0;
constexpr int afterFirstStatusMs = 100;
constexpr int afterAntennaReadMs = 500;

} // namespace

Monitoring::Monitoring(CVextralRemoteControl &controller) : m_controller(controller)
{
    connect(&m_timer, &QTimer::timeout, this, &Monitoring::due);
}

bool Monitoring::start()
{
    const int run = ++m_run;
    qDebug("CVextralRemoteControl::startMonitoring() - IN");
    m_controller.monitore();
    if (isStopped(run))
        return false;
    qDebug("CVextralRemoteControl::startMonitoring() - 1");
    m_timer.start(m_interval);
    qDebug("CVextralRemoteControl::startMonitoring() - OUT");
    return true;
}

void Monitoring::stop()
{
    ++m_run;
    m_timer.stop();
}

// ---- The synchronisation pass ----

void Monitoring::synchronise()
{
    const int run = m_run;
    const int order = m_controller.lastOrder();
    m_controller.getStatus();
    if (isStopped(run))
        return;
    m_controller.pause(afterFirstStatusMs);
    const int firstRotor = m_controller.currentRotor(nullptr);
    if (isStopped(run))
        return;
    if (firstRotor >= 0)
        synchroniseAntennas(firstRotor);
    qDebug("%s", dashes);
    // A rotor that the operator has turned or selected meanwhile stays selected.
    if (order == m_controller.lastOrder())
        synchroniseOtherRotor(run);
    if (isStopped(run))
        return;
    if (CVextralAzimuthalWidget *map = m_controller.azimuthalWidget()) {
        map->syncDisplays();
        map->update();
        CVextralAntenna *first = firstRotor >= 0 ? m_controller.antennaOfRotor(firstRotor) : nullptr;
        if (first)
            map->setCurrentAntenna(first);
    }
    m_controller.afterInitialSync();
    qDebug("%s", dashes);
}

void Monitoring::synchroniseAntennas(int rotor)
{
    const QList<CVextralAntenna *> antennas = m_controller.antennasOfRotor(rotor);
    for (CVextralAntenna *antenna : antennas) {
        synchronise(antenna);
        m_controller.pause(afterAntennaReadMs);
    }
}

void Monitoring::synchronise(CVextralAntenna *antenna)
{
    antenna->setAngle(m_controller.getCurrentAngle());
    antenna->clearTarget();
    antenna->setEnabled(true);
}

void Monitoring::synchroniseOtherRotor(int run)
{
    if (!m_controller.toggleRotor()) {
        qDebug("erro ao tentar trocar de rotor");
        return;
    }
    const int order = m_controller.lastOrder();
    const int otherRotor = m_controller.currentRotor(nullptr);
    if (isStopped(run) || order != m_controller.lastOrder())
        return;
    if (otherRotor < 0) {
        qDebug("CVextralRemoteControl::monitore() - Nao deu certo a troca de rotor");
        return;
    }
    synchroniseAntennas(otherRotor);
    m_controller.toggleRotor();
    const int rotor = m_controller.currentRotor(nullptr);
    if (isStopped(run) || rotor < 0)
        return;
    if (CVextralAntenna *antenna = m_controller.antennaOfRotor(rotor)) {
        synchronise(antenna);
        qDebug("x3");
    }
}

// ---- A poll ----

void Monitoring::poll()
{
    m_holdsAngle = false;
    const bool withAngle = m_controller.readsAngleWithStatus();
    const int line = m_controller.lineOpening();
    const CDeviceStatus status =
        withAngle ? m_controller.getStatusAndCurrentAngle() : m_controller.getStatus();
    if (!status.valid) {
        qDebug("................. monitoring has fail");
        // A line that was opened meanwhile has not been asked.
        if (line == m_controller.lineOpening())
            m_controller.noteAnswer(false);
        return;
    }
    m_controller.noteAnswer(true);
    if (status.relayBoxId != m_controller.relayBoxId())
        emit m_controller.onRelayBoxIdChanged(m_controller.relayBoxId(), status.relayBoxId);

    m_holdsAngle = withAngle;
    m_controller.updateStatusDisplay(status);
    m_holdsAngle = true;
    for (CVextralAntenna *antenna : m_controller.antennas())
        antenna->setStatus(status);
    for (CVextralAntenna *antenna : m_controller.antennas()) {
        if (!follow(antenna, status))
            return;
    }
    m_holdsAngle = false;
    if (CVextralAzimuthalWidget *map = m_controller.azimuthalWidget())
        map->update();
}

void Monitoring::show(const CDeviceStatus &status)
{
    CVextralAzimuthalWidget *map = m_controller.azimuthalWidget();
    if (map)
        map->refreshDisplays(true, true);
    if (!status.valid)
        return;
    const int rotor = m_controller.currentRotor(&status);
    if (rotor >= 0 && rotor != m_lastRotor) {
        if (map)
            map->setCurrentAntenna(m_controller.antennaOfRotor(rotor));
        m_lastRotor = rotor;
    }
    if (CVextralRemoteControlWidget *panel = m_controller.remoteControlWidget()) {
        if (rotor >= 0)
            showSelectedRotor(rotor);
        panel->showStatus(status);
    }
    for (CVextralAntenna *antenna : m_controller.antennas())
        antenna->refreshEditor();
}

void Monitoring::showSelectedRotor(int rotor)
{
    const double angle = m_controller.getCurrentAngle();
    const CVextralAzimuthalWidget *map = m_controller.azimuthalWidget();
    const CVextralAntenna *current = map ? map->currentAntenna() : nullptr;
    if (current && isKnownAngle(angle) && current->rotorId() == rotor)
        m_controller.showLiveAzimuth(angle);
}

bool Monitoring::follow(CVextralAntenna *antenna, const CDeviceStatus &status)
{
    CVextralAzimuthalWidget *map = m_controller.azimuthalWidget();
    if (!antenna->rotorStatusFlag()) {
        CRotationDigitalDisplayWidget *display = map ? map->displayOf(antenna) : nullptr;
        if (display && antenna->isRotorConnected())
            display->setValue(truncatedDegrees(antenna->angle()), false);
        return true;
    }
    antenna->setEnabled(true);
    const double angle = m_controller.getCurrentAngle();
    if (!isKnownAngle(angle))
        return true;
    if (status.moving) {
        if (map && !animateTowards(antenna, angle))
            return false;
        antenna->setAngle(angle);
        antenna->setRotating(true);
        return true;
    }
    if (antenna->angle() != angle)
        m_controller.finishRotation(antenna, angle);
    if (antenna->isRotating()) {
        antenna->setRotating(false);
        antenna->clearTarget();
        antenna->setAngle(angle);
        emit antenna->onRotationDone();
    }
    return true;
}

bool Monitoring::animateTowards(CVextralAntenna *antenna, double angle)
{
    CVextralAzimuthalWidget *map = m_controller.azimuthalWidget();
    const double previousStep = map->animationStep();
    const double from = antenna->isRotating() ? antenna->angle() : angle;
    map->animate(antenna, from, angle, m_interval);
    if (!antenna->isRotating() || std::abs(map->animationStep()) <= jumpDegreesPerTick)
        return true;

    // Too far for one period: go on as before and let the next poll correct.
    m_holdsAngle = false;
    qDebug("%s", dots);
    qDebug("................. Jump %3.2f interval %3.2f", map->animationTicks(), map->animationStep());
    qDebug("%s", dots);
    const double next = from + map->animationTicks() * previousStep;
    map->animate(antenna, from, next, m_interval);
    antenna->setAngle(next);
    antenna->setRotating(true);
    return false;
}
