// SPDX-License-Identifier: MIT
#include "widgets/vextralremotecontrolwidget.h"

#include "compass/degrees.h"
#include "device/devicestatus.h"
#include "device/vextralremotecontrol.h"
#include "line/linestate.h"
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/ledbutton.h"
#include "widgets/panelelements.h"
#include "widgets/panelface.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

// Captions grow with their buttons.
constexpr int usualCaption = 11;
constexpr int largestCaption = 22;
constexpr int captionsInAButton = 5;

/// For a logo that cannot be read.
constexpr QSize logoSize(80, 36);

PanelTraits traitsOf(CVextralRemoteControl &model)
{
    PanelTraits traits;
    traits.antennas = model.antennaCount();
    traits.transmitLines = model.txButtonCount();
    traits.radios = model.radioCount();
    traits.hasSendAndPower = model.hasSendAndPower();
    traits.hasSplit = model.hasSplit();
    traits.hasInfoLabels = model.hasInfoLabels();
    traits.hasTitle = model.hasTitleLabel();
    return traits;
}

/// What has no place is not shown.
void placeOrHide(QWidget *element, const QRect &place)
{
    if (!element)
        return;
    if (place.isNull())
        element->hide();
    else
        element->setGeometry(place);
}

template <typename Button>
void placeAll(const QList<Button *> &buttons, const std::vector<QRect> &places)
{
    const int count = std::min<int>(buttons.size(), static_cast<int>(places.size()));
    for (int i = 0; i < count; ++i)
        buttons[i]->setGeometry(places[i]);
}

/// Entry of a status array for a button's position; the arrays are shorter than a list may be.
template <std::size_t size>
bool flagAt(const bool (&flags)[size], int index)
{
    return index >= 0 && index < static_cast<int>(size) && flags[index];
}

} // namespace

CVextralRemoteControlWidget::CVextralRemoteControlWidget(QWidget *parent)
    : QWidget(parent), m_digitalDisplay(new CRotationDigitalDisplayWidget(this)),
      m_dial(new CRotationDialWidget(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_digitalDisplay->hide();
    m_dial->hide();
}

CVextralRemoteControlWidget::~CVextralRemoteControlWidget() = default;

void CVextralRemoteControlWidget::bindController(CVextralRemoteControl *controller)
{
    if (m_controller || !controller)
        return;
    m_controller = controller;
    m_traits = traitsOf(*controller);
    createButtons();
    createIndicators();
    createLabels();
    update();
}

void CVextralRemoteControlWidget::createButtons()
{
    for (int n = 1; n <= m_traits.antennas; ++n) {
        CAntennaButton *button = PanelElements::antennaButton(QStringLiteral("Ant %1").arg(n), this);
        button->setAccessibleName(tr("Antenna %1").arg(n));
        connect(button, &QAbstractButton::clicked, this,
                &CVextralRemoteControlWidget::onAntennaButtonStatusChange);
        m_antennaButtons << button;
    }
    // After the antennas, because models place them on top of the antenna buttons.
    for (int n = 1; n <= m_traits.transmitLines; ++n) {
        CLedButton *button = PanelElements::led(QStringLiteral("TX"), tr("Transmit line %1").arg(n), this);
        connect(button, &QAbstractButton::clicked, this,
                &CVextralRemoteControlWidget::onAntennaTXButtonPressed);
        m_txButtons << button;
    }
    for (int n = 1; n <= m_traits.radios; ++n) {
        CAntennaButton *button = PanelElements::antennaButton(QStringLiteral("Radio %1").arg(n), this);
        button->setAccessibleName(tr("Radio %1").arg(n));
        connect(button, &QAbstractButton::toggled, this,
                &CVextralRemoteControlWidget::onRadioButtonStatusChange);
        m_radioButtons << button;
    }
}

void CVextralRemoteControlWidget::createIndicators()
{
    if (m_traits.hasSendAndPower) {
        PanelElements::hiddenLabel(QStringLiteral("Send"), this);
        m_sendIndicator = PanelElements::indicator(QStringLiteral("SEND"), tr("Send"), this);
        m_sendIndicator->setEnabled(false);
        PanelElements::hiddenLabel(QStringLiteral("Power"), this);
        m_powerIndicator = PanelElements::indicator(QStringLiteral("POWER"), tr("Power"), this);
    }
    if (m_traits.hasSplit) {
        PanelElements::hiddenLabel(QStringLiteral("Split"), this);
        m_splitIndicator = PanelElements::indicator(QStringLiteral("SPLIT"), tr("Split"), this);
    }
}

void CVextralRemoteControlWidget::createLabels()
{
    if (m_controller->hasLogo()) {
        m_logoLabel = PanelElements::smallLabel(this);
        const QPixmap logo(QStringLiteral(":/images/logo.png"));
        m_logoLabel->setPixmap(logo);
        m_logoLabel->setScaledContents(true);
        m_traits.logo = logo.isNull() ? logoSize : logo.size() / logo.devicePixelRatio();
    }
    if (m_traits.hasInfoLabels) {
        m_largeInfoLabel = PanelElements::largeInfoLabel(this);
        m_smallInfoLabel = PanelElements::smallInfoLabel(this);
    }
    if (m_traits.hasTitle)
        m_titleLabel = PanelElements::titleLabel(this);
}

// ---- The layout ----

void CVextralRemoteControlWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void CVextralRemoteControlWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    fitCaptions();
}

void CVextralRemoteControlWidget::relayout()
{
    if (!m_controller)
        return;
    if (m_controller->hasOwnPanel()) {
        const QSize before = size();
        m_controller->relayoutPanel(before.width(), before.height());
        // The model may have set a minimum size that made the panel grow under its layout.
        if (size() != before)
            m_controller->relayoutPanel(width(), height());
    } else {
        place(PanelGeometry::inRows(size(), m_traits));
    }
    // It takes time to find the fonts, and an unseen panel may not have its size yet.
    if (isVisible())
        fitCaptions();
}

void CVextralRemoteControlWidget::fitCaptions()
{
    for (CAntennaButton *button : m_antennaButtons + m_radioButtons) {
        const int growing = std::min(button->width(), button->height()) / captionsInAButton;
        button->fitCaption(std::clamp(growing, usualCaption, largestCaption));
    }
}

void CVextralRemoteControlWidget::place(const PanelGeometry &geometry)
{
    placeAll(m_antennaButtons, geometry.antennas);
    placeAll(m_txButtons, geometry.transmitLines);
    placeAll(m_radioButtons, geometry.radios);
    placeOrHide(m_powerIndicator, geometry.power);
    placeOrHide(m_sendIndicator, geometry.send);
    placeOrHide(m_splitIndicator, geometry.split);
    placeOrHide(m_logoLabel, geometry.logo);
    placeOrHide(m_largeInfoLabel, geometry.largeInfo);
    placeOrHide(m_smallInfoLabel, geometry.smallInfo);
    placeOrHide(m_titleLabel, geometry.title);
}

void CVextralRemoteControlWidget::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    paintPanelFace(painter, rect(), PanelGeometry::screen(size(), m_traits));
}

// ---- What is shown ----

void CVextralRemoteControlWidget::showAntennaName(int index, const QString &name)
{
    CAntennaButton *button = m_antennaButtons.value(index);
    if (!button)
        return;
    button->setText(captionOfName(QString(name).replace(QLatin1Char('/'), QLatin1Char('\n'))));
    button->setAccessibleDescription(name);
}

void CVextralRemoteControlWidget::showRadioNames(const QStringList &names)
{
    for (int i = 0; i < std::min(m_radioButtons.size(), names.size()); ++i)
        m_radioButtons[i]->setText(captionOfName(names[i]));
}

bool CVextralRemoteControlWidget::isAntennaEnabled(int index) const
{
    const CAntennaButton *button = m_antennaButtons.value(index);
    return button && button->isEnabled();
}

void CVextralRemoteControlWidget::setAntennaEnabled(int index, bool enabled)
{
    if (CAntennaButton *button = m_antennaButtons.value(index))
        button->setEnabled(enabled);
}

void CVextralRemoteControlWidget::hideAntenna(int index)
{
    if (CAntennaButton *button = m_antennaButtons.value(index))
        button->hide();
}

void CVextralRemoteControlWidget::showRadio(int index)
{
    for (int i = 0; i < m_radioButtons.size(); ++i) {
        const QSignalBlocker blocker(m_radioButtons[i]);
        m_radioButtons[i]->setChecked(i == index);
    }
}

void CVextralRemoteControlWidget::showTexts(const QString &title, const QString &largeInfo,
                                            const QString &smallInfo)
{
    if (m_titleLabel)
        m_titleLabel->setText(title);
    if (m_largeInfoLabel)
        m_largeInfoLabel->setText(largeInfo);
    if (m_smallInfoLabel)
        m_smallInfoLabel->setText(smallInfo);
}

void CVextralRemoteControlWidget::showStatus(const CDeviceStatus &status)
{
    for (int i = 0; i < m_antennaButtons.size(); ++i) {
        const bool receives = flagAt(status.antennaRx, i);
        const bool transmits = flagAt(status.antennaTx, i);
        m_antennaButtons[i]->setChecked(receives);
        qDebug("ANTENA [%d] = > %d", i, receives);
        if (i < m_txButtons.size())
            m_txButtons[i]->setChecked(transmits);
        m_antennaButtons[i]->setRedState(status.auxFlag);
        if (status.auxFlag)
            m_antennaButtons[i]->setChecked(transmits);
    }
    for (int i = 0; i < m_radioButtons.size(); ++i) {
        const QSignalBlocker blocker(m_radioButtons[i]);
        m_radioButtons[i]->setChecked(flagAt(status.radio, i));
    }
    if (m_sendIndicator)
        m_sendIndicator->setChecked(status.modelFlags[0]);
    if (m_splitIndicator)
        m_splitIndicator->setChecked(status.modelFlags[1]);
}

void CVextralRemoteControlWidget::showPower(bool on)
{
    if (m_powerIndicator)
        m_powerIndicator->setChecked(on);
}

void CVextralRemoteControlWidget::showLine(const LineState &state)
{
    QWidget *lamp = this;
    if (m_powerIndicator)
        lamp = m_powerIndicator;
    lamp->setToolTip(describe(state));
    // A screen reader should not announce each second of a silence, nor the same text at each poll.
    LineState described = state;
    described.silentSeconds = 0;
    const QString description = describe(described);
    if (lamp->accessibleDescription() != description)
        lamp->setAccessibleDescription(description);
}

void CVextralRemoteControlWidget::showAzimuth(double degrees)
{
    if (!m_digitalDisplay)
        return;
    m_digitalDisplay->setValue(truncatedDegrees(degrees), false);
    m_digitalDisplay->update();
}

void CVextralRemoteControlWidget::showTarget(int degrees)
{
    if (m_digitalDisplay) {
        m_digitalDisplay->setValue(degrees, true);
        m_digitalDisplay->update();
    }
    if (m_dial) {
        m_dial->setValue(degrees, true);
        m_dial->update();
    }
}

void CVextralRemoteControlWidget::setEditing(bool editing)
{
    if (m_digitalDisplay)
        m_digitalDisplay->setEditing(editing);
    if (m_dial)
        m_dial->setPressed(editing);
}

CVextralRemoteControl *CVextralRemoteControlWidget::controller() const
{
    return m_controller;
}

CRotationDigitalDisplayWidget *CVextralRemoteControlWidget::digitalDisplay() const
{
    return m_digitalDisplay;
}

void CVextralRemoteControlWidget::setDigitalDisplay(CRotationDigitalDisplayWidget *display)
{
    m_digitalDisplay = display;
}

CRotationDialWidget *CVextralRemoteControlWidget::dial() const
{
    return m_dial;
}

void CVextralRemoteControlWidget::setDial(CRotationDialWidget *dial)
{
    m_dial = dial;
}

QSize CVextralRemoteControlWidget::sizeHint() const
{
    return PanelGeometry::smallestInColumns.expandedTo(minimumSize());
}

// ---- What the operator does ----

void CVextralRemoteControlWidget::onAntennaButtonStatusChange()
{
    auto *button = qobject_cast<CAntennaButton *>(sender());
    const int index = m_antennaButtons.indexOf(button);
    if (index < 0)
        return;
    const bool ownPanel = m_controller && m_controller->hasOwnPanel();
    // Only the box switches an antenna off.
    if (ownPanel && !button->isChecked())
        button->setChecked(true);
    if (ownPanel && m_exclusiveAntennas) {
        for (CAntennaButton *other : std::as_const(m_antennaButtons)) {
            if (other != button)
                other->setChecked(false);
        }
        update();
    }
    emit onAtennaButtonChange(index, button->isChecked());
}

void CVextralRemoteControlWidget::onRadioButtonStatusChange()
{
    auto *button = qobject_cast<CAntennaButton *>(sender());
    const int index = m_radioButtons.indexOf(button);
    if (index >= 0)
        emit onRadioButtonChange(index, button->isChecked());
}

void CVextralRemoteControlWidget::onAntennaTXButtonPressed(bool b)
{
    Q_UNUSED(b)
    const int index = m_txButtons.indexOf(qobject_cast<CLedButton *>(sender()));
    if (index >= 0)
        emit onAtennaTXButtonChange(index);
}

bool CVextralRemoteControlWidget::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && showIndicatorToolTip(*static_cast<QHelpEvent *>(event)))
        return true;
    return QWidget::event(event);
}

/// The indicators take no mouse, so their tool tips are asked of the panel.
bool CVextralRemoteControlWidget::showIndicatorToolTip(const QHelpEvent &event)
{
    const auto indicators = {m_sendIndicator, m_powerIndicator, m_splitIndicator};
    const auto *const pointed =
        std::find_if(indicators.begin(), indicators.end(), [&event](const CLedButton *led) {
            return led && led->isVisible() && led->geometry().contains(event.pos());
        });
    if (pointed == indicators.end())
        return false;
    QToolTip::showText(event.globalPos(), (*pointed)->toolTip(), this, (*pointed)->geometry());
    return true;
}
