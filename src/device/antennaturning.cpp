// SPDX-License-Identifier: MIT
#include "device/antennaturning.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/boxlink.h"
#include "device/commandlog.h"
#include "device/protocol.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QPointer>

namespace {

constexpr int afterRotorSwitchMs = 33;

} // namespace

// ---- Selecting a rotor ----

bool AntennaTurning::select(int rotor)
{
    if (rotor >= m_controller.rotorCount())
        return false;
    const int order = begin();
    CDeviceStatus status = m_controller.getStatus();
    if (isOvertaken(order))
        return false;
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
    m_link.send("Comando K9", Protocol::selectOtherRotorCommand());
    logSeparator();
    m_link.pause(afterRotorSwitchMs);
    status = m_controller.getStatus();
    return !isOvertaken(order) && status.isRotorSelected(rotor);
}

void AntennaTurning::toggleTo(int rotor)
{
    const int order = begin();
    const CDeviceStatus status = m_controller.getStatus();
    qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - 1");
    if (status.isRotorSelected(rotor))
        qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - Este rotor [%d] ja esta ativo", rotor);
    else if (status.valid && !isOvertaken(order))
        toggle();
    qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - FIM");
}

void AntennaTurning::toggle()
{
    m_controller.toggleRotor();
    const int order = begin();
    const int selected = m_controller.currentRotor(nullptr);
    if (isOvertaken(order))
        return;
    if (selected < 0) {
        m_controller.toggleRotor();
        qDebug("CVextralRemoteControl::onToggleRotorButtonChange() - Nao foi possivel selecionar rotor");
    } else if (CVextralAzimuthalWidget *map = m_controller.azimuthalWidget()) {
        // The rotor's number counts as the antenna's position here.
        map->setCurrentAntenna(m_controller.antenna(selected));
    }
}

// ---- Turning an antenna ----

bool AntennaTurning::turnTo(CVextralAntenna *antenna, double degrees)
{
    if (!antenna || antenna->controller() != &m_controller)
        return false;
    const bool isFixed = !antenna->isRotorConnected();
    antenna->setTarget(degrees);
    m_controller.turnAntennaFromCurrentToTarget(antenna);
    if (isFixed)
        pointFixed(antenna, degrees);
    if (CVextralAzimuthalWidget *map = antenna->map())
        map->update();
    return isFixed || m_controller.isOpen();
}

void AntennaTurning::turnToTarget(CVextralAntenna *antenna)
{
    qDebug("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - antena mudou para %3.2f",
           antenna ? antenna->target() : unknownAngle);
    if (!antenna || antenna->controller() != &m_controller)
        return;
    const double target = antenna->target();
    if (!antenna->isRotorConnected()) {
        antenna->setAngle(target);
        return;
    }
    // Selecting the rotor runs the event loop, in which a poll may change the target.
    if (!m_controller.setCurrentRotor(antenna->rotorId())) {
        qDebug("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - Rotor %d nao responde",
               antenna->rotorId());
        return;
    }
    qDebug("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - Rotor %d sera controlado",
           antenna->rotorId());
    antenna->setTarget(target);
    m_controller.rotateTo(target);
    if (CVextralRemoteControlWidget *panel = m_controller.remoteControlWidget())
        panel->showTarget(truncatedDegrees(target));
}

void AntennaTurning::pointFixed(CVextralAntenna *antenna, double degrees)
{
    antenna->setAngle(degrees);
    antenna->setTarget(degrees);
    if (CVextralAzimuthalWidget *map = antenna->map()) {
        map->showInDisplay(antenna, truncatedDegrees(degrees));
        map->update();
    }
    CSettings::storeAngle(antenna->index(), degrees);
}

bool AntennaTurning::takeOver(CVextralAntenna *antenna, const char *operation)
{
    const QPointer<CVextralAzimuthalWidget> map = antenna->map();
    if (!map)
        return false;
    const int press = ++m_press;
    map->setCurrentAntenna(antenna);
    antenna->setTarget(antenna->angle());
    if (!antenna->isRotorConnected())
        return true;

    // Asking the box pumps events: a poll may make another antenna current, or the operator press another
    // one.
    const bool isSelected = m_controller.setCurrentRotor(antenna->rotorId());
    if (press != m_press || !map)
        return false;
    if (!isSelected || map->currentAntenna() != antenna)
        map->setCurrentAntenna(antenna);
    if (!isSelected) {
        qDebug("CVextralAzimuthalWidget::%s() - Nao foi possivel trocar de rotor. Mas antena e [%d]",
               operation, antenna->index());
        return false;
    }
    m_controller.setLiveDisplay(map->displayOf(antenna));
    const double angle = m_controller.getCurrentAngle();
    antenna->setAngle(angle);
    antenna->setTarget(angle);
    return true;
}
