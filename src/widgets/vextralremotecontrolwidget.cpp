#include "widgets/vextralremotecontrolwidget.h"

#include "compass/degrees.h"
#include "device/devicestatus.h"
#include "device/vextralremotecontrol.h"
#include "line/linestate.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPixmap>
#include <QSignalBlocker>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr int ledFontSize = 9;
constexpr int ledRadius = 4;

constexpr int captionSize = 11;
constexpr int infoIndent = 3;

const QSize usualSize(418, 100);
const QSize logoSize(80, 36);

const QLatin1String indicatorLabelSheet("background-color: transparent; font-size: 10px;");
const QLatin1String largeInfoSheet("background-color: transparent; font-size: 16px; color: white;");
const QLatin1String smallInfoSheet("background-color: transparent; font-size: 11px; color: white;");
const QLatin1String titleSheet("background-color: transparent; font-size: 20px; color: white;");

/// A panel that is not seen yet shows its children with itself. Showing them before would polish and measure
/// each of them for nothing.
void showOnSeenPanel(QWidget *child)
{
    if (child->parentWidget()->isVisible())
        child->show();
}

QLabel *createLabel(const QLatin1String &sheet, QWidget *panel)
{
    auto *label = new QLabel(panel);
    label->setStyleSheet(sheet);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    showOnSeenPanel(label);
    return label;
}

/// A narrow one, because models place it where the display ends, with little room to the right.
QLabel *createInfoLabel(const QLatin1String &sheet, QWidget *panel)
{
    QLabel *label = createLabel(sheet, panel);
    label->setIndent(infoIndent);
    QFont narrow = label->font();
    narrow.setStretch(QFont::SemiCondensed);
    label->setFont(narrow);
    return label;
}

QLabel *createHiddenLabel(const QString &text, QWidget *panel)
{
    QLabel *label = createLabel(indicatorLabelSheet, panel);
    label->setText(text);
    label->hide();
    return label;
}

CAntennaButton *createAntennaButton(const QString &text, QWidget *panel)
{
    auto *button = new CAntennaButton(text, panel);
    QFont font = button->font();
    font.setPixelSize(captionSize);
    button->setFont(font);
    button->setFocusPolicy(Qt::NoFocus);
    showOnSeenPanel(button);
    return button;
}

CLedButton *createLed(const QString &text, const QString &spokenName, QWidget *panel)
{
    auto *led = new CLedButton(text, panel);
    led->setFontSize(ledFontSize);
    led->setRadius(ledRadius);
    led->setFocusPolicy(Qt::NoFocus);
    led->setAccessibleName(spokenName);
    showOnSeenPanel(led);
    return led;
}

CLedButton *createIndicator(const QString &text, const QString &spokenName, QWidget *panel)
{
    CLedButton *led = createLed(text, spokenName, panel);
    led->setAttribute(Qt::WA_TransparentForMouseEvents);
    return led;
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
    createButtons();
    createIndicators();
    createLabels();
    update();
}

void CVextralRemoteControlWidget::createButtons()
{
    for (int n = 1; n <= m_controller->antennaCount(); ++n) {
        CAntennaButton *button = createAntennaButton(QStringLiteral("Ant %1").arg(n), this);
        button->setAccessibleName(tr("Antenna %1").arg(n));
        connect(button, &QAbstractButton::clicked, this,
                &CVextralRemoteControlWidget::onAntennaButtonStatusChange);
        m_antennaButtons << button;
    }
    // After the antennas, because models place them on top of the antenna buttons.
    for (int n = 1; n <= m_controller->txButtonCount(); ++n) {
        CLedButton *button = createLed(QStringLiteral("TX"), tr("Transmit line %1").arg(n), this);
        connect(button, &QAbstractButton::clicked, this,
                &CVextralRemoteControlWidget::onAntennaTXButtonPressed);
        m_txButtons << button;
    }
    for (int n = 1; n <= m_controller->radioCount(); ++n) {
        CAntennaButton *button = createAntennaButton(QStringLiteral("Radio %1").arg(n), this);
        button->setAccessibleName(tr("Radio %1").arg(n));
        connect(button, &QAbstractButton::toggled, this,
                &CVextralRemoteControlWidget::onRadioButtonStatusChange);
        m_radioButtons << button;
    }
}

void CVextralRemoteControlWidget::createIndicators()
{
    if (m_controller->hasSendAndPower()) {
        m_sendLabel = createHiddenLabel(QStringLiteral("Send"), this);
        m_sendIndicator = createIndicator(QStringLiteral("SEND"), tr("Send"), this);
        m_sendIndicator->setEnabled(false);
        m_powerLabel = createHiddenLabel(QStringLiteral("Power"), this);
        m_powerIndicator = createIndicator(QStringLiteral("POWER"), tr("Power"), this);
    }
    if (m_controller->hasSplit()) {
        m_splitLabel = createHiddenLabel(QStringLiteral("Split"), this);
        m_splitIndicator = createIndicator(QStringLiteral("SPLIT"), tr("Split"), this);
    }
}

void CVextralRemoteControlWidget::createLabels()
{
    if (m_controller->hasLogo()) {
        m_logoLabel = createLabel(indicatorLabelSheet, this);
        m_logoLabel->setPixmap(QPixmap(QStringLiteral(":/images/logo.png")));
        m_logoLabel->setScaledContents(true);
        m_logoLabel->resize(logoSize);
    }
    if (m_controller->hasInfoLabels()) {
        m_largeInfoLabel = createInfoLabel(largeInfoSheet, this);
        m_smallInfoLabel = createInfoLabel(smallInfoSheet, this);
    }
    if (m_controller->hasTitleLabel())
        m_titleLabel = createLabel(titleSheet, this);
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
    // A screen reader need not hear each second of a silence, nor the same at each poll.
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
    return usualSize.expandedTo(minimumSize());
}

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
