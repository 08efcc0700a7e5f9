#include "device/devicekt240m.h"

#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "compass/degrees.h"
#include "settings/settings.h"
#include "widgets/4sanchorlayout.h"
#include "widgets/antennabutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCoreApplication>
#include <QSignalBlocker>

#include <algorithm>

// What the model answers, its panel, and what the operator does there. How it rotates stands in
// kt240mrotation.cpp.

namespace {

constexpr int pollMs = 500;
constexpr int antennasOnTheRotor = 4;

// The panel as it is drawn up; it scales from there.
const QSize designSize(200, 100);
const QRect displayPlace(115, 5, 80, 45);
const QRect ccwPlace(5, 15, 35, 75);
const QRect cwPlace(75, 15, 35, 75);
const QRect stopPlace(40, 15, 35, 75);
const QRect dialPlace(115, 50, 80, 45);

constexpr int smallestCaption = 9;
constexpr int largestCaption = 16;

/// No mode of the window; one that asks for it gets the mini mode.
constexpr int otherMiniMode = 3;
constexpr int panelHeight = 80;
constexpr int unlimitedHeight = 500000;

/// Takes no focus, so that the arrow keys and the space bar go on to the window.
CAntennaButton *createButton(const QString &text, const QString &name, const QString &keys, QWidget *panel)
{
    auto *button = new CAntennaButton(text, panel);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAccessibleName(name);
    button->setToolTip(keys.isEmpty() ? name : name + QLatin1Char('\t') + keys);
    return button;
}

/// The buttons' captions follow their width.
void fitCaption(CAntennaButton *button)
{
    if (!button)
        return;
    QFont font = button->font();
    font.setPixelSize(std::clamp(button->width() / 5, smallestCaption, largestCaption));
    button->setFont(font);
}

} // namespace

CDeviceKT240M::CDeviceKT240M(CSettings settings) : CVextralRemoteControl(&settings)
{
    setMonitorInterval(pollMs);
    CDeviceKT240M::createAntennas(&settings);
    startMonitoring();
}

CDeviceKT240M::~CDeviceKT240M() = default;

// ---- What the model answers ----

QString CDeviceKT240M::modelId()
{
    return QStringLiteral("KT240M");
}

QString CDeviceKT240M::modelName()
{
    return QStringLiteral("KT240M");
}

QString CDeviceKT240M::shortName()
{
    return QStringLiteral("KT240M");
}

QString CDeviceKT240M::alternateName()
{
    return QStringLiteral("KT240M");
}

int CDeviceKT240M::antennaCount()
{
    return 1;
}

int CDeviceKT240M::rotorCount()
{
    return 1;
}

bool CDeviceKT240M::setCurrentRotor(int rotor)
{
    Q_UNUSED(rotor)
    return true;
}

int CDeviceKT240M::txButtonCount()
{
    return 0;
}

bool CDeviceKT240M::hasOwnPanel()
{
    return true;
}

bool CDeviceKT240M::mapAnimationFlag()
{
    return false;
}

bool CDeviceKT240M::acceptsDirectionKeys()
{
    return true;
}

void CDeviceKT240M::createAntennas(const CSettings *settings)
{
    Q_UNUSED(settings)
    // The base has made them.
    if (CVextralAntenna *first = antenna(0))
        first->setRotorId(0);
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
        map->setCurrentAntenna(antenna(0));
        if (CRotationDigitalDisplayWidget *first = map->displayOf(map->antennaAt(0)))
            first->hide();
    }
    CVextralRemoteControlWidget *panel = remoteControlWidget();
    if (panel && !panel->antennaButtons().isEmpty())
        panel->antennaButtons().first()->hide();
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

// ---- The panel ----

void CDeviceKT240M::buildPanel(CVextralRemoteControlWidget *widget)
{
    {
        const QSignalBlocker blocker(widget);
        widget->resize(designSize);
    }
    m_panelLayout = std::make_unique<C4SAnchorLayout>(widget);

    m_digitalDisplay = new CRotationDigitalDisplayWidget(widget);
    placeOnPanel(m_digitalDisplay, displayPlace);
    using Display = CRotationDigitalDisplayWidget;
    connect(m_digitalDisplay, &Display::onRotationStarted, this, &CDeviceKT240M::onRotationStarted);
    connect(m_digitalDisplay, &Display::onRotationChanging, this, &CDeviceKT240M::onRotationChanging);
    connect(m_digitalDisplay, &Display::onRotationChanged, this, &CDeviceKT240M::onRotationChanged);

    m_ccwButton =
        createButton(QStringLiteral("CCW"), tr("Turn counter-clockwise"), tr("Left or F10"), widget);
    placeOnPanel(m_ccwButton, ccwPlace);
    connectDirectionButton(m_ccwButton);
    m_cwButton = createButton(QStringLiteral("CW"), tr("Turn clockwise"), tr("Right or F11"), widget);
    placeOnPanel(m_cwButton, cwPlace);
    connectDirectionButton(m_cwButton);
    m_stopButton = createButton(QStringLiteral("STOP"), tr("Stop"), QString(), widget);
    placeOnPanel(m_stopButton, stopPlace);
    connect(m_stopButton, &QAbstractButton::pressed, this, &CDeviceKT240M::onStopButtonPressed);
    connect(m_stopButton, &CAntennaButton::onMouseUp, this, &CDeviceKT240M::onStopButtonUp);

    m_dial = new CRotationDialWidget(widget);
    placeOnPanel(m_dial, dialPlace);
    connect(m_dial, &CRotationDialWidget::onRotationStarted, this, &CDeviceKT240M::onDialRotationStarted);
    connect(m_dial, &CRotationDialWidget::onRotationChanging, this, &CDeviceKT240M::onDialRotationChanging);
    connect(m_dial, &CRotationDialWidget::onRotationChanged, this, &CDeviceKT240M::onDialRotationChanged);
}

void CDeviceKT240M::placeOnPanel(QWidget *widget, const QRect &place)
{
    widget->setGeometry(place);
    widget->show();
    using Layout = C4SAnchorLayout;
    m_panelLayout->addWidget(Layout::Scaled, Layout::Scaled, Layout::Scaled, Layout::Scaled, widget);
}

void CDeviceKT240M::connectDirectionButton(CAntennaButton *button)
{
    connect(button, &CAntennaButton::onMouseDown, this, &CDeviceKT240M::onCCWAndCWButtonsDown);
    connect(button, &CAntennaButton::onMouseUp, this, &CDeviceKT240M::onCCWAndCWButtonsUp);
}

void CDeviceKT240M::relayoutPanel(int width, int height)
{
    Q_UNUSED(width)
    Q_UNUSED(height)
    // The panel is resized while it is still being built.
    if (!m_panelLayout)
        return;
    m_panelLayout->relayout();
    for (CAntennaButton *button : {m_ccwButton.data(), m_stopButton.data(), m_cwButton.data()})
        fitCaption(button);
}

// ---- What the operator does ----

bool CDeviceKT240M::rotateByKey(int key)
{
    applyCCWandCW(key == ClockwiseKey ? m_cwButton : m_ccwButton);
    light(m_activeDirectionButton, true);
    return true;
}

void CDeviceKT240M::onCCWAndCWButtonsDown()
{
    applyCCWandCW(qobject_cast<CAntennaButton *>(sender()));
}

void CDeviceKT240M::onCCWAndCWButtonsUp()
{
    // The release has toggled the button.
    light(m_activeDirectionButton, true);
}

void CDeviceKT240M::onStopButtonPressed()
{
    qDebug("CDeviceKT240M::onStopButtonPressed() - IN");
    // Nothing may start after a STOP, also where the brake leaves what was pending, and where no poll has
    // seen the rotor move yet.
    m_scheduledTarget = unknownAngle;
    m_ccwPending = false;
    m_cwPending = false;
    if (m_rotating) {
        light(m_stopButton, true);
        QCoreApplication::processEvents();
        // A poll in there may have seen the rotor at rest.
        if (m_rotating)
            stop();
    }
    qDebug("CDeviceKT240M::onStopButtonPressed() - OUT");
}

void CDeviceKT240M::onStopButtonUp()
{
    light(m_stopButton, m_rotating);
    // A poll may run in here.
    QCoreApplication::processEvents();
    light(m_stopButton, m_rotating);
}

void CDeviceKT240M::editSender()
{
    if (auto *display = qobject_cast<CRotationDigitalDisplayWidget *>(sender())) {
        display->setEditing(true);
        display->setFixed(false);
    }
}

void CDeviceKT240M::onRotationStarted()
{
    m_dialEditsDisplay = false;
    editSender();
}

void CDeviceKT240M::onRotationChanging(int rotation)
{
    aimAntenna(rotation);
    updateMap();
}

void CDeviceKT240M::onRotationChanged(int rotation)
{
    if (m_rotating) {
        qDebug("CDeviceKT240M::onRotationChanged() Stop");
        stop();
        m_rotating = false;
    }
    qDebug("CDeviceKT240M::onRotationChanged() Rotation will change to %d A", rotation);
    rotateTo(rotation);
    qDebug("CDeviceKT240M::onRotationChanged() Rotation will change to %d B", rotation);
    m_rotating = false;
    if (m_dial) {
        const QSignalBlocker blocker(m_dial);
        m_dial->setValue(rotation, false);
        m_dial->update();
    }
    qDebug("CDeviceKT240M::onRotationChanged() Rotation will change to %d C", rotation);
    aimAntenna(rotation);
    updateMap();
}

void CDeviceKT240M::onDialRotationStarted()
{
    // Without a reading there is no azimuth to start from.
    if (m_dial && isKnownAngle(m_polledAngle))
        m_dial->setValue(truncatedDegrees(m_polledAngle), true);
    editSender();
}

void CDeviceKT240M::onDialRotationChanging(int rotation)
{
    if (m_digitalDisplay) {
        m_dialEditsDisplay = m_dialEditsDisplay || !m_digitalDisplay->isEditing();
        m_digitalDisplay->setValue(rotation, true);
        m_digitalDisplay->setEditing(true);
        m_digitalDisplay->update();
    }
    aimAntenna(rotation);
    updateMap();
}

void CDeviceKT240M::onDialRotationChanged(int rotation)
{
    qDebug("CDeviceKT240M::onDialRotationChanged() Rotation will change to %d", rotation);
    m_dialEditsDisplay = false;
    if (m_digitalDisplay)
        m_digitalDisplay->setEditing(false);
    rotateTo(rotation);
}

void CDeviceKT240M::aimAntenna(double azimuth)
{
    if (CVextralAntenna *first = antenna(0)) {
        first->setTarget(azimuth);
        first->setRotation(azimuth);
    }
}

void CDeviceKT240M::updateMap()
{
    if (CVextralAzimuthalWidget *map = azimuthalWidget())
        map->update();
}
