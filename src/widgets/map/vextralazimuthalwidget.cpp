// SPDX-License-Identifier: MIT
#include "widgets/map/vextralazimuthalwidget.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/azimuthalanimation.h"
#include "widgets/map/azimuthalgeometry.h"
#include "widgets/map/azimuthalview.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QPainter>
#include <QVariant>

#include <algorithm>

namespace {

constexpr char antennaProperty[] = "antenna";

constexpr QSize extendedHint(672, 480);
constexpr QSize extendedMinimum(200, 140);
constexpr QSize rowCellHint(90, 65);
constexpr QSize rowCellMinimum(60, 45);

} // namespace

CVextralAzimuthalWidget::CVextralAzimuthalWidget(QWidget *parent)
    : QWidget(parent), m_view(std::make_unique<AzimuthalView>())
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Azimuthal map"));
    connect(&m_animationTimer, &QTimer::timeout, this, QOverload<>::of(&CVextralAzimuthalWidget::animate));
    updateDescription();
}

CVextralAzimuthalWidget::~CVextralAzimuthalWidget() = default;

// ---- Antennas and their displays ----

void CVextralAzimuthalWidget::addAntenna(CVextralAntenna *antenna)
{
    CRotationDigitalDisplayWidget *display = createDisplay(antenna);
    m_shown.push_back({antenna, display});
    using Display = CRotationDigitalDisplayWidget;
    connect(display, &Display::onRotationStarted, this, &CVextralAzimuthalWidget::onRotationStarted);
    connect(display, &Display::onRotationChanging, this, &CVextralAzimuthalWidget::onRotationChanging);
    connect(display, &Display::onRotationChanged, this, &CVextralAzimuthalWidget::onRotationChanged);

    layoutDisplays();
    display->show();
    if (!m_currentAntenna)
        setCurrentAntenna(antenna);
    else
        update();
    antenna->setMap(this);
}

CRotationDigitalDisplayWidget *CVextralAzimuthalWidget::createDisplay(CVextralAntenna *antenna)
{
    auto *display = new CRotationDigitalDisplayWidget(this);
    display->setProperty(antennaProperty, QVariant::fromValue<QObject *>(antenna));
    connect(antenna, &QObject::destroyed, display, [display] { display->setProperty(antennaProperty, {}); });
    display->setFixed(!antenna->isRotorConnected());
    display->setAccessibleName(tr("Azimuth of antenna %1").arg(m_shown.size() + 1));
    return display;
}

void CVextralAzimuthalWidget::setDevice(CVextralRemoteControl *controller)
{
    m_controller = controller;
    if (controller && !controller->supportsAzimuthalMap())
        hide();
    layoutDisplays();
}

void CVextralAzimuthalWidget::hideDisplays()
{
    for (const Shown &shown : m_shown)
        shown.display->hide();
}

void CVextralAzimuthalWidget::layoutDisplays()
{
    const int count = antennaCount();
    const int rotors = m_controller ? m_controller->rotorCount() : 0;
    const std::vector<QRect> rects = isExtended() ? AzimuthalGeometry::cornerDisplayRects(size(), count)
                                                  : AzimuthalGeometry::rowDisplayRects(size(), count, rotors);
    for (std::size_t i = 0; i < rects.size(); ++i)
        m_shown[i].display->setGeometry(rects[i]);
}

void CVextralAzimuthalWidget::resizeEvent(QResizeEvent *)
{
    layoutDisplays();
}

CVextralRemoteControl *CVextralAzimuthalWidget::controllerFor(const CVextralAntenna *antenna) const
{
    return m_controller ? m_controller.data() : antenna->controller();
}

CVextralAntenna *CVextralAzimuthalWidget::currentAntenna() const
{
    return m_currentAntenna;
}

int CVextralAzimuthalWidget::antennaCount() const
{
    return static_cast<int>(m_shown.size());
}

CVextralAntenna *CVextralAzimuthalWidget::antennaAt(int index) const
{
    return m_shown[index].antenna;
}

std::vector<CVextralAntenna *> CVextralAzimuthalWidget::antennas() const
{
    std::vector<CVextralAntenna *> present;
    for (const Shown &shown : m_shown) {
        if (shown.antenna)
            present.push_back(shown.antenna);
    }
    return present;
}

CVextralAntenna *CVextralAzimuthalWidget::antennaOf(const QObject *display) const
{
    const auto found = std::find_if(m_shown.begin(), m_shown.end(),
                                    [display](const Shown &shown) { return shown.display == display; });
    return found == m_shown.end() ? nullptr : found->antenna.data();
}

CRotationDigitalDisplayWidget *CVextralAzimuthalWidget::displayOf(const CVextralAntenna *antenna) const
{
    if (!antenna)
        return nullptr;
    const auto found = std::find_if(m_shown.begin(), m_shown.end(),
                                    [antenna](const Shown &shown) { return shown.antenna == antenna; });
    return found == m_shown.end() ? nullptr : found->display;
}

void CVextralAzimuthalWidget::showInDisplay(const CVextralAntenna *antenna, int degrees)
{
    CRotationDigitalDisplayWidget *display = displayOf(antenna);
    if (!display)
        return;
    display->setValue(degrees, true);
    display->update();
    updateDescription();
}

void CVextralAzimuthalWidget::refreshDisplays(bool fixedFlags, bool enabledFlags)
{
    for (const Shown &shown : m_shown) {
        if (!shown.antenna)
            continue;
        if (fixedFlags)
            shown.display->setFixed(!shown.antenna->isRotorConnected());
        if (enabledFlags)
            shown.display->setEnabled(shown.antenna->isEnabled());
        if (fixedFlags || enabledFlags)
            shown.display->update();
    }
    updateDescription();
    update();
}

void CVextralAzimuthalWidget::syncDisplays()
{
    for (const Shown &shown : m_shown) {
        if (!shown.antenna)
            continue;
        shown.display->setValue(truncatedDegrees(shown.antenna->angle()), false);
        shown.display->update();
    }
    updateDescription();
}

// ---- The current antenna ----

void CVextralAzimuthalWidget::setCurrentAntenna(CVextralAntenna *antenna)
{
    m_currentAntenna = antenna;
    if (antenna) {
        selectCurrent();
        return;
    }
    updateDescription();
    update();
}

CVextralAntenna *CVextralAzimuthalWidget::setCurrentAntennaByRotorId(int rotorId)
{
    const auto found = std::find_if(m_shown.begin(), m_shown.end(), [rotorId](const Shown &shown) {
        return shown.antenna && shown.antenna->rotorId() == rotorId;
    });
    if (found == m_shown.end())
        return nullptr;
    CVextralAntenna *antenna = found->antenna;
    setCurrentAntenna(antenna);
    return antenna;
}

void CVextralAzimuthalWidget::selectCurrent()
{
    const int index = m_currentAntenna->index();
    CRotationDigitalDisplayWidget *current =
        index >= 0 && index < antennaCount() ? m_shown[index].display : nullptr;
    CVextralRemoteControl *controller = controllerFor(m_currentAntenna);
    if (current && controller)
        controller->setLiveDisplay(current);
    for (const Shown &shown : m_shown)
        shown.display->setHighlighted(shown.display == current);
    updateDescription();
    update();
    emit onCurrentAntennaChanged(m_currentAntenna);
}

void CVextralAzimuthalWidget::setCurrentRotorByAntenna(CVextralAntenna *antenna)
{
    if (!antenna || !antenna->isRotorConnected())
        return;
    if (takeOver(antenna, "setCurrentRotorByAntenna"))
        controllerFor(antenna)->startMonitoring();
}

bool CVextralAzimuthalWidget::takeOver(CVextralAntenna *antenna, const char *operation)
{
    CVextralRemoteControl *controller = controllerFor(antenna);
    const bool isTaken = controller && controller->takeOver(antenna, operation);
    updateDescription();
    update();
    return isTaken;
}

void CVextralAzimuthalWidget::updateDescription()
{
    const QString text =
        m_currentAntenna
            ? tr("Current antenna: %1, azimuth %2 degrees")
                  .arg(m_currentAntenna->name(), QString::number(truncatedDegrees(m_currentAntenna->angle())))
            : tr("No current antenna");
    if (text != accessibleDescription())
        setAccessibleDescription(text);
}

// ---- What the operator does ----

void CVextralAzimuthalWidget::onRotationStarted()
{
    CVextralAntenna *antenna = antennaOf(sender());
    if (antenna && takeOver(antenna, "onRotationStarted"))
        controllerFor(antenna)->onRotationStarted();
}

void CVextralAzimuthalWidget::onRotationChanging(int rotation)
{
    const CVextralAntenna *antenna = antennaOf(sender());
    if (antenna && antenna->controller())
        antenna->controller()->onRotationTargetChanging(rotation);
}

void CVextralAzimuthalWidget::onRotationChanged(int rotation)
{
    CVextralAntenna *antenna = antennaOf(sender());
    if (!antenna)
        return;
    // The controller turns the current antenna, and the wheel reports a second late.
    if (antenna != m_currentAntenna)
        setCurrentAntenna(antenna);
    if (antenna->controller())
        antenna->controller()->onRotationTargetChanged(rotation);
    updateDescription();
}

void CVextralAzimuthalWidget::doChangeTargetAngleValue(int angle)
{
    if (!m_currentAntenna || m_currentAntenna->isRotating())
        return;
    qDebug("CVextralAzimuthalWidget::doChangeTargetAngleValue() : %d", angle);
    m_currentAntenna->setTarget(angle);
    if (m_currentAntenna->isRotorConnected()) {
        qDebug("CVextralAzimuthalWidget::doChangeTargetAngleValue() rotor: yes");
    } else {
        qDebug("CVextralAzimuthalWidget::doChangeTargetAngleValue() rotor: no");
        m_currentAntenna->setAngle(angle);
        showInDisplay(m_currentAntenna, angle);
    }
    update();
}

void CVextralAzimuthalWidget::setTargetOfCurrent(int angle)
{
    if (m_currentAntenna && m_currentAntenna->hasPendingTarget())
        m_currentAntenna->setTarget(angle);
    emit onAntennaTargetChanged(m_currentAntenna);
}

// ---- Animation ----

void CVextralAzimuthalWidget::setAnimationTicks(double ticks)
{
    m_animationTicks = ticks;
    m_animationTimer.start(AzimuthalAnimation::tickMs);
}

void CVextralAzimuthalWidget::startAnimation(CVextralAntenna *antenna, double from, double to)
{
    m_animatedAntenna = antenna;
    if (!antenna) {
        m_animationStep = AzimuthalAnimation::restingStep;
        return;
    }
    antenna->setRotation(from);
    m_animationStep = AzimuthalAnimation::stepFor(from, to, m_animationTicks);
}

void CVextralAzimuthalWidget::stopAnimation()
{
    if (!m_animationTimer.isActive())
        return;
    m_animationTimer.stop();
    m_animatedAntenna = nullptr;
    m_animationStep = AzimuthalAnimation::restingStep;
    updateDescription();
    update();
}

void CVextralAzimuthalWidget::animate(CVextralAntenna *antenna, double from, double to, int periodMs)
{
    setAnimationTicks(AzimuthalAnimation::ticksIn(periodMs));
    startAnimation(antenna, from, to);
}

void CVextralAzimuthalWidget::animate()
{
    if ((m_controller && !m_controller->isOpen()) || !m_animatedAntenna)
        return;
    CVextralRemoteControl *controller = controllerFor(m_animatedAntenna);
    const bool guarded = !controller || controller->mapAnimationFlag();
    const AzimuthalAnimation::Tick tick =
        AzimuthalAnimation::nextTick({m_animatedAntenna->rotation(), m_animatedAntenna->target(),
                                      m_animationStep, m_animatedAntenna->isRotating(), guarded});
    if (tick.drawn != m_animatedAntenna->rotation()) {
        m_animatedAntenna->setRotation(tick.drawn);
        update();
    }
    if (tick.ends)
        stopAnimation();
}

// ---- Looks ----

void CVextralAzimuthalWidget::paintEvent(QPaintEvent *)
{
    AzimuthalView::Content content;
    content.zoom = m_zoom;
    for (const Shown &shown : m_shown) {
        if (!shown.antenna)
            continue;
        const bool isCurrent = shown.antenna == m_currentAntenna;
        const bool isAnimated = m_animationTimer.isActive() && shown.antenna == m_animatedAntenna;
        if (isCurrent)
            content.current = static_cast<int>(content.antennas.size());
        content.antennas.push_back(
            AzimuthalView::seen(*shown.antenna, *shown.display, isCurrent, isAnimated));
    }

    QPainter painter(this);
    if (!isExtended())
        m_view->paintRow(painter, rect(), content);
    else if (m_view->paintMap(painter, size(), content))
        update();
}

void CVextralAzimuthalWidget::setZoom(double zoom)
{
    if (zoom == m_zoom)
        return;
    m_zoom = zoom;
    update();
}

void CVextralAzimuthalWidget::setInterfaceMode(int mode)
{
    if (mode == m_interfaceMode)
        return;
    m_interfaceMode = mode;
    layoutDisplays();
    updateGeometry();
    update();
}

void CVextralAzimuthalWidget::reloadMap()
{
    m_view->reloadMap();
    update();
}

QSize CVextralAzimuthalWidget::sizeHint() const
{
    if (isExtended())
        return extendedHint;
    const int cells = m_controller ? std::max(1, m_controller->rotorCount()) : 1;
    return {cells * rowCellHint.width(), rowCellHint.height()};
}

QSize CVextralAzimuthalWidget::minimumSizeHint() const
{
    return isExtended() ? extendedMinimum : rowCellMinimum;
}
