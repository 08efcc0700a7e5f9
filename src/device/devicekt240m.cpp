// SPDX-License-Identifier: MIT
#include "device/devicekt240m.h"

#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "settings/interfacemode.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/rotatorpanel.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCoreApplication>
#include <QSignalBlocker>

#include <algorithm>

using Order = RotatorMotion::Order;
using Direction = RotatorMotion::Direction;

namespace {

constexpr char arrow[] = "......................................>>";

constexpr int pollMs = 500;
constexpr int afterBrakeMs = 50;
constexpr int antennasOnTheRotor = 4;

// The panel as it is drawn up; it scales from there.
const QSize designSize(200, 100);

/// No mode of the window; one that asks for it gets the mini mode.
constexpr int otherMiniMode = 3;
constexpr int panelHeight = 80;
constexpr int unlimitedHeight = 500000;

} // namespace

CDeviceKT240M::CDeviceKT240M(CSettings settings) : CVextralRemoteControl(&settings)
{
    setMonitorInterval(pollMs);
    CDeviceKT240M::createAntennas(&settings);
    startMonitoring();
}

// ---- What the model answers ----

void CDeviceKT240M::createAntennas(const CSettings *)
{
    // The base has made them.
    first().setRotorId(0);
    first().setReadingKnown(false);
}

void CDeviceKT240M::applyRotorAssignment(const CSettings *settings)
{
    createAntennas(settings);
    CSettings assigned(*settings);
    std::fill_n(assigned.rotorIds.begin(), antennasOnTheRotor, 0);
    assigned.save();
}

void CDeviceKT240M::setupAntennaEditor(CVextralAntennaUI *editor)
{
    if (editor)
        editor->setRotorSelectorEnabled(false);
}

void CDeviceKT240M::hideUnusedWidgets()
{
    CVextralAzimuthalWidget *map = azimuthalWidget();
    if (map && map->antennaCount() > 0) {
        map->setCurrentAntenna(&first());
        map->displayOf(&first())->hide();
    }
    if (CVextralRemoteControlWidget *panel = remoteControlWidget())
        panel->hideAntenna(0);
}

void CDeviceKT240M::applyInterfaceMode(int mode)
{
    if (mode != ExtendedMode && mode != MiniMode && mode != otherMiniMode)
        return;
    const bool extended = mode == ExtendedMode;
    if (CVextralAzimuthalWidget *map = azimuthalWidget())
        map->setVisible(extended);
    CVextralRemoteControlWidget *panel = remoteControlWidget();
    if (!panel)
        return;
    for (QWidget *widget : {static_cast<QWidget *>(panel), panel->parentWidget()}) {
        if (!widget)
            continue;
        widget->setMaximumHeight(extended ? panelHeight : unlimitedHeight);
        widget->setMinimumHeight(panelHeight);
    }
}

void CDeviceKT240M::buildPanel(CVextralRemoteControlWidget *widget)
{
    {
        const QSignalBlocker blocker(widget);
        widget->resize(designSize);
    }
    m_panel = new RotatorPanel(widget);
    using Display = CRotationDigitalDisplayWidget;
    connect(m_panel->display(), &Display::onRotationStarted, this, &CDeviceKT240M::onRotationStarted);
    connect(m_panel->display(), &Display::onRotationChanging, this, &CDeviceKT240M::onRotationChanging);
    connect(m_panel->display(), &Display::onRotationChanged, this, &CDeviceKT240M::onRotationChanged);
    connect(m_panel->display(), &Display::onRotationGivenUp, this, &CDeviceKT240M::showTarget);
    for (const CAntennaButton *button : {m_panel->ccwButton(), m_panel->cwButton()}) {
        connect(button, &CAntennaButton::onMouseDown, this, &CDeviceKT240M::onCCWAndCWButtonsDown);
        connect(button, &CAntennaButton::onMouseUp, this, &CDeviceKT240M::onCCWAndCWButtonsUp);
        connect(button, &QAbstractButton::clicked, this,
                &CDeviceKT240M::showLamps); // toggled without a mouse
    }
    connect(m_panel, &RotatorPanel::onStopPressed, this, &CDeviceKT240M::onStopButtonPressed);
    connect(m_panel, &RotatorPanel::onStopReleased, this, &CDeviceKT240M::onStopButtonUp);
    connect(m_panel, &RotatorPanel::onStopKey, this, &CDeviceKT240M::halt);
    using Dial = CRotationDialWidget;
    connect(m_panel->dial(), &Dial::onRotationStarted, this, &CDeviceKT240M::onDialRotationStarted);
    connect(m_panel->dial(), &Dial::onRotationChanging, this, &CDeviceKT240M::onDialRotationChanging);
    connect(m_panel->dial(), &Dial::onRotationChanged, this, &CDeviceKT240M::onDialRotationChanged);
    connect(m_panel->dial(), &Dial::onRotationGivenUp, this, &CDeviceKT240M::showTarget);
}

void CDeviceKT240M::relayoutPanel(int, int)
{
    // The panel is resized while it is still being built.
    if (m_panel)
        m_panel->relayout();
}

// ---- A poll ----

void CDeviceKT240M::monitore()
{
    if (isOpen())
        m_motion.lineOpened();
    const double azimuth = getCurrentAngle();
    if (isOpen())
        noteAnswer(isKnownAngle(azimuth));
    if (m_motion.hasReading()) {
        const CVextralAzimuthalWidget *map = azimuthalWidget();
        const CVextralAntenna *current = map ? map->currentAntenna() : nullptr;
        qDebug("rotating last [%3.2f] to current [%3.2f] target[%3.2f] isRotating[%d]", m_motion.azimuth(),
               azimuth, current ? current->target() : unknownAngle, m_motion.isTurning());
    }
    const RotatorMotion::Seen seen = m_motion.poll(azimuth);
    if (m_motion.isFirstReading()) {
        first().setAngle(azimuth);
        showTarget();
    }
    showLamps();
    updateStatusDisplay(CDeviceStatus());
    if (seen != RotatorMotion::Seen::Nothing)
        endRotation(seen);
}

void CDeviceKT240M::endRotation(RotatorMotion::Seen end)
{
    qDebug("%s", arrow);
    qDebug("%s Rotacao encerrou!", arrow);
    qDebug("%s Desliguei botoes", arrow);
    restAntenna();
    if (isKnownAngle(m_motion.azimuth()))
        aimAntenna(m_motion.azimuth());
    const CVextralAzimuthalWidget *map = azimuthalWidget();
    if (CVextralAntenna *current = map ? map->currentAntenna() : nullptr)
        current->clearTarget();
    emit onStopRotating();

    const bool resumes = end == RotatorMotion::Seen::EndOfTurn;
    if (resumes)
        obey(m_motion.resumeDirection());
    qDebug("%s Agendado para ir: %3.2f", arrow, m_motion.target());
    if (m_motion.forgetReachedTarget()) {
        qDebug("%s", arrow);
        qDebug("%s Agendadamento cancelado", arrow);
        qDebug("%s", arrow);
    }
    if (resumes)
        obey(m_motion.resumeTarget());
    qDebug("%s", arrow);
}

void CDeviceKT240M::updateStatusDisplay(CDeviceStatus)
{
    if (!m_panel)
        return;
    const bool isKnown = isKnownAngle(m_motion.azimuth());
    m_panel->showAzimuth(truncatedDegrees(m_motion.azimuth()));
    first().setReadingKnown(isKnown); // a grey arrow, as the digits are grey
    if (isKnown)
        moveAntenna();
    repaintMap();
}

void CDeviceKT240M::moveAntenna()
{
    const double azimuth = m_motion.azimuth();
    const bool wasRotating = first().isRotating();
    first().setRotating(m_motion.isTurning());
    CVextralAzimuthalWidget *map = azimuthalWidget();
    if (m_motion.isTurning()) {
        if (map)
            map->animate(&first(), wasRotating ? first().angle() : azimuth, azimuth, monitorInterval());
        first().setAngle(azimuth);
        // Somebody else may turn the antenna, and then nobody knows where it goes.
        if (!m_panel->isChoosing())
            first().setTarget(m_motion.target());
    } else if (azimuth != first().angle() && !m_panel->isChoosing()) {
        aimAntenna(azimuth);
    } else if (map) {
        map->stopAnimation();
    }
}

void CDeviceKT240M::lineWentAway()
{
    const bool wasUnderWay = m_motion.lineWentAway();
    showLamps();
    restAntenna();
    if (wasUnderWay)
        emit onStopRotating();
}

// ---- Orders and lamps ----

bool CDeviceKT240M::rotateTo(double azimuth)
{
    endChoice();
    if (!takesOrders()) {
        showTarget(); // the antenna may have the refused one already
        return false;
    }
    const bool waits = m_motion.isTurning();
    const bool isSent = obey(m_motion.goTo(azimuth));
    first().setTarget(azimuth);
    return isSent && !waits;
}

bool CDeviceKT240M::takesOrders() const
{
    // The loss of a line is told a little later than it is closed.
    return CVextralRemoteControl::takesOrders() && m_motion.state() != RotatorMotion::State::Away;
}

bool CDeviceKT240M::stop()
{
    return obey(m_motion.stop());
}

void CDeviceKT240M::halt()
{
    forget();
    obey(m_motion.stopTurning());
    m_motion.letGoOfStop();
    showLamps();
}

void CDeviceKT240M::forget()
{
    endChoice();
    m_motion.pressStop();
    showLamps();
}

void CDeviceKT240M::follow(double azimuth)
{
    if (!takesOrders())
        return;
    obey(m_motion.redirect(azimuth));
    first().setTarget(azimuth);
    repaintMap();
}

bool CDeviceKT240M::obey(const RotatorMotion::MaybeOrder &order)
{
    showLamps();
    if (!order || !isOpen())
        return false;
    bool isSent = false;
    switch (order->kind) {
    case Order::GoTo:
        aimAntenna(order->azimuth);
        [[fallthrough]];
    case Order::RunOut:
        return CVextralRemoteControl::rotateTo(order->azimuth);
    case Order::Brake:
        isSent = CVextralRemoteControl::stop();
        pause(afterBrakeMs);
        restAntenna();
        break;
    case Order::TurnCounterClockwise:
    case Order::TurnClockwise:
        first().clearTarget(); // it turns until it is told otherwise
        isSent = order->kind == Order::TurnClockwise ? rotateCW() : rotateCCW();
    }
    return isSent;
}

void CDeviceKT240M::showLamps()
{
    if (m_panel)
        m_panel->showLamps({m_motion.litDirection() == Direction::CounterClockwise, m_motion.isStopLit(),
                            m_motion.litDirection() == Direction::Clockwise, m_motion.isStopUnheeded()});
}

void CDeviceKT240M::aimAntenna(double azimuth)
{
    first().setTarget(azimuth);
    first().setRotation(azimuth);
    repaintMap();
}

void CDeviceKT240M::showTarget()
{
    aimAntenna(first().angle());
    if (m_motion.isTurning() || isKnownAngle(m_motion.target()))
        first().setTarget(m_motion.target());
}

void CDeviceKT240M::restAntenna()
{
    first().setRotating(false);
    aimAntenna(first().angle());
    if (CVextralAzimuthalWidget *map = azimuthalWidget())
        map->stopAnimation();
}

void CDeviceKT240M::repaintMap()
{
    if (CVextralAzimuthalWidget *map = azimuthalWidget())
        map->update();
}

// ---- What the operator does ----

bool CDeviceKT240M::rotateByKey(int key)
{
    if (m_panel) {
        applyCCWandCW(key == ClockwiseKey ? m_panel->cwButton() : m_panel->ccwButton());
        onCCWAndCWButtonsUp();
    }
    return true;
}

void CDeviceKT240M::applyCCWandCW(CAntennaButton *button)
{
    const bool isCcw = button == m_panel->ccwButton();
    endChoice();
    if (takesOrders())
        obey(m_motion.turn(isCcw ? Direction::CounterClockwise : Direction::Clockwise));
}

void CDeviceKT240M::onCCWAndCWButtonsDown()
{
    applyCCWandCW(qobject_cast<CAntennaButton *>(sender()));
}

void CDeviceKT240M::onCCWAndCWButtonsUp()
{
    // The release has toggled a button.
    m_motion.letGoOfDirection();
    showLamps();
}

void CDeviceKT240M::onStopButtonPressed()
{
    qDebug("CDeviceKT240M::onStopButtonPressed() - IN");
    forget();
    if (m_motion.isTurning()) {
        QCoreApplication::processEvents();
        // A poll in there may have seen the rotor at rest.
        obey(m_motion.stopTurning());
    }
    qDebug("CDeviceKT240M::onStopButtonPressed() - OUT");
}

void CDeviceKT240M::onStopButtonUp()
{
    m_motion.letGoOfStop();
    showLamps();
    // A poll may run in here.
    QCoreApplication::processEvents();
    m_motion.letGoOfStop();
    showLamps();
}

void CDeviceKT240M::endChoice()
{
    if (!m_panel)
        return;
    m_panel->dial()->giveUp();
    m_panel->display()->giveUp();
}

void CDeviceKT240M::onRotationStarted()
{
    m_panel->display()->setEditing(true);
    m_panel->display()->setFixed(false);
}

void CDeviceKT240M::onRotationChanging(int rotation)
{
    aimAntenna(rotation);
}

void CDeviceKT240M::onRotationChanged(int rotation)
{
    // Unlike other targets, the digits' one does not wait for the rotor to rest.
    if (m_motion.isTurning()) {
        qDebug("CDeviceKT240M::onRotationChanged() Stop");
        obey(m_motion.cutShort());
    }
    qDebug("CDeviceKT240M::onRotationChanged() Rotation will change to %d A", rotation);
    rotateTo(rotation);
    qDebug("CDeviceKT240M::onRotationChanged() Rotation will change to %d B", rotation);
    m_panel->dial()->setValue(rotation, false);
    m_panel->dial()->update();
    qDebug("CDeviceKT240M::onRotationChanged() Rotation will change to %d C", rotation);
}

void CDeviceKT240M::onDialRotationStarted()
{
    // Without a reading there is no azimuth to start from.
    if (isKnownAngle(m_motion.azimuth()))
        m_panel->dial()->setValue(truncatedDegrees(m_motion.azimuth()), true);
}

void CDeviceKT240M::onDialRotationChanging(int rotation)
{
    m_panel->display()->setValue(rotation, true);
    m_panel->display()->setEditing(true);
    m_panel->display()->update();
    onRotationChanging(rotation);
}

void CDeviceKT240M::onDialRotationChanged(int rotation)
{
    qDebug("CDeviceKT240M::onDialRotationChanged() Rotation will change to %d", rotation);
    rotateTo(rotation);
}
