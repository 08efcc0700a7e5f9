#include "widgets/map/vextralazimuthalwidget.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "widgets/map/azimuthalanimation.h"
#include "widgets/map/azimuthalgeometry.h"
#include "widgets/map/azimuthalpicture.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QVariant>

#include <algorithm>

namespace {

constexpr char antennaProperty[] = "antenna";

constexpr QSize extendedHint(672, 480);
constexpr QSize extendedMinimum(200, 140);
constexpr QSize rowCellHint(90, 65);
constexpr QSize rowCellMinimum(60, 45);

CVextralAntenna *antennaOf(const QObject *display)
{
    return display ? qobject_cast<CVextralAntenna *>(display->property(antennaProperty).value<QObject *>())
                   : nullptr;
}

} // namespace

CVextralAzimuthalWidget::CVextralAzimuthalWidget(QWidget *parent)
    : QWidget(parent), m_picture(std::make_unique<AzimuthalPicture>())
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
    m_antennas.push_back(antenna);
    CRotationDigitalDisplayWidget *display = createDisplay(antenna);
    m_displays.push_back(display);
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
    display->setFixed(!antenna->isRotorConnected());
    display->setAccessibleName(tr("Azimuth of antenna %1").arg(m_antennas.size()));
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
    for (CRotationDigitalDisplayWidget *display : m_displays)
        display->hide();
}

void CVextralAzimuthalWidget::layoutDisplays()
{
    const int count = static_cast<int>(m_displays.size());
    const int rotors = m_controller ? m_controller->rotorCount() : 0;
    const std::vector<QRect> rects = isExtended() ? AzimuthalGeometry::cornerDisplayRects(size(), count)
                                                  : AzimuthalGeometry::rowDisplayRects(size(), count, rotors);
    for (std::size_t i = 0; i < rects.size(); ++i)
        m_displays[i]->setGeometry(rects[i]);
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
    return static_cast<int>(m_antennas.size());
}

CVextralAntenna *CVextralAzimuthalWidget::antennaAt(int index) const
{
    return m_antennas[index];
}

CRotationDigitalDisplayWidget *CVextralAzimuthalWidget::displayOf(const CVextralAntenna *antenna) const
{
    if (!antenna)
        return nullptr;
    const auto found = std::find_if(m_displays.begin(), m_displays.end(),
                                    [antenna](const auto *display) { return antennaOf(display) == antenna; });
    return found == m_displays.end() ? nullptr : *found;
}

void CVextralAzimuthalWidget::showInDisplay(const CVextralAntenna *antenna, int degrees)
{
    CRotationDigitalDisplayWidget *display = displayOf(antenna);
    if (!display)
        return;
    display->setValue(degrees, true);
    display->update();
}

void CVextralAzimuthalWidget::refreshDisplays(bool fixedFlags, bool enabledFlags)
{
    for (std::size_t i = 0; i < m_antennas.size(); ++i) {
        if (fixedFlags)
            m_displays[i]->setFixed(!m_antennas[i]->isRotorConnected());
        if (enabledFlags)
            m_displays[i]->setEnabled(m_antennas[i]->isEnabled());
        if (fixedFlags || enabledFlags)
            m_displays[i]->update();
    }
    updateDescription();
    update();
}

void CVextralAzimuthalWidget::syncDisplays()
{
    if (m_displays.size() != m_antennas.size())
        return;
    for (std::size_t i = 0; i < m_antennas.size(); ++i) {
        m_displays[i]->setValue(truncatedDegrees(m_antennas[i]->angle()), false);
        m_displays[i]->update();
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
    const auto found = std::find_if(m_antennas.begin(), m_antennas.end(),
                                    [rotorId](const auto *antenna) { return antenna->rotorId() == rotorId; });
    if (found == m_antennas.end())
        return nullptr;
    CVextralAntenna *antenna = *found;
    setCurrentAntenna(antenna);
    return antenna;
}

void CVextralAzimuthalWidget::selectCurrent()
{
    const int index = m_currentAntenna->index();
    CRotationDigitalDisplayWidget *shown =
        index >= 0 && index < static_cast<int>(m_displays.size()) ? m_displays[index] : nullptr;
    CVextralRemoteControl *controller = controllerFor(m_currentAntenna);
    if (shown && controller)
        controller->setLiveDisplay(shown);
    for (CRotationDigitalDisplayWidget *display : m_displays)
        display->setHighlighted(display == shown);
    updateDescription();
    update();
    emit onCurrentAntennaChanged(m_currentAntenna);
}

void CVextralAzimuthalWidget::setCurrentRotorByAntenna(CVextralAntenna *antenna)
{
    if (!antenna || !antenna->isRotorConnected())
        return;
    if (takeOver(antenna, displayOf(antenna), "setCurrentRotorByAntenna"))
        controllerFor(antenna)->startMonitoring();
}

bool CVextralAzimuthalWidget::takeOver(CVextralAntenna *antenna, CRotationDigitalDisplayWidget *display,
                                       const char *operation)
{
    setCurrentAntenna(antenna);
    antenna->setTarget(antenna->angle());
    if (!antenna->isRotorConnected())
        return true;

    // Asking the box pumps events: a poll or another click may make another antenna current meanwhile.
    const QPointer<CRotationDigitalDisplayWidget> liveDisplay(display);
    CVextralRemoteControl *controller = controllerFor(antenna);
    if (!controller->setCurrentRotor(antenna->rotorId())) {
        setCurrentAntenna(antenna);
        qDebug("CVextralAzimuthalWidget::%s() - Nao foi possivel trocar de rotor. Mas antena e [%d]",
               operation, antenna->index());
        return false;
    }
    if (m_currentAntenna != antenna)
        return false;

    if (liveDisplay)
        controller->setLiveDisplay(liveDisplay);
    const double angle = controller->getCurrentAngle();
    antenna->setAngle(angle);
    antenna->setTarget(angle);
    updateDescription();
    update();
    return true;
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
    auto *display = qobject_cast<CRotationDigitalDisplayWidget *>(sender());
    CVextralAntenna *antenna = antennaOf(display);
    if (!antenna || !takeOver(antenna, display, "onRotationStarted"))
        return;
    if (CVextralRemoteControl *controller = controllerFor(antenna))
        controller->onRotationStarted();
}

void CVextralAzimuthalWidget::onRotationChanging(int rotation)
{
    const CVextralAntenna *antenna = antennaOf(qobject_cast<CRotationDigitalDisplayWidget *>(sender()));
    if (antenna && antenna->controller())
        antenna->controller()->onRotationTargetChanging(rotation);
}

void CVextralAzimuthalWidget::onRotationChanged(int rotation)
{
    CVextralAntenna *antenna = antennaOf(qobject_cast<CRotationDigitalDisplayWidget *>(sender()));
    if (!antenna)
        return;
    // The controller turns the current antenna, and the wheel reports a second late.
    if (antenna != m_currentAntenna)
        setCurrentAntenna(antenna);
    if (antenna->controller())
        antenna->controller()->onRotationTargetChanged(rotation);
    if (!antenna->isRotorConnected())
        CSettings::storeAngle(antenna->index(), rotation);
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
        updateDescription();
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
    m_mapImage.reset();
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
