// SPDX-License-Identifier: MIT
#include "antenna/vextralantennaui.h"

#include "antenna/colorwidget.h"
#include "antenna/spinbox.h"
#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "ui_vextralantennaui.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotorselectorwidget.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace {

constexpr int focusRingDistance = 2;
constexpr double focusRingRadius = 4.0;

/// Loads the settings, changes what they hold of one antenna and saves them. Antennas beyond the ten of the
/// file are not saved.
template <typename Change>
void changeSettings(const CVextralAntenna *antenna, Change change)
{
    const int index = antenna->index();
    if (index < 0 || index >= CSettings::elementCount)
        return;
    CSettings settings;
    change(settings, index);
    settings.save();
}

/// An antenna without a rotor points where the operator says.
void pointAt(CVextralAntenna *antenna, int angle)
{
    qDebug("oaaoaoo6: %d", angle);
    if (CVextralRemoteControl *controller = antenna->controller())
        controller->pointFixedAntenna(antenna, angle);
}

/// Selecting the rotor runs the event loop, so pointers are tested again after it.
void turnByRotor(CVextralAntenna *turned, int angle)
{
    const QPointer<CVextralAntenna> antenna = turned;
    const QPointer<CVextralRemoteControl> controller = antenna->controller();
    if (!controller->setCurrentRotor(antenna->rotorId()) || !antenna || !controller)
        return;
    qDebug("tab vaio rodar para");
    controller->turnTo(antenna, angle);
}

} // namespace

CVextralAntennaUI::CVextralAntennaUI(int rotorCount, QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::Form>())
{
    m_ui->setupUi(this);
    m_ui->rotorSelector->setCount(rotorCount);
    m_ui->rotorSelector->installEventFilter(this);
    m_ui->turnToSpinBox->installEventFilter(this);

    // Connected twice on purpose: listeners of the map have always got two signals for a change.
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    connect(m_ui->turnToSpinBox, valueChanged, this, &CVextralAntennaUI::onTargetAngleValueChanged);
    connect(m_ui->turnToSpinBox, valueChanged, this, &CVextralAntennaUI::onTargetAngleValueChanged);
    connect(m_ui->turnToSpinBox, &CSpinBox::onConfirm, this, &CVextralAntennaUI::onTargetConfirm);
    connect(m_ui->colorWidget, &CColorWidget::onColorChanged, this, &CVextralAntennaUI::onColorChanged);
    connect(m_ui->rotorSelector, &CRotorSelectorWidget::onCurrentIndexChanged, this,
            &CVextralAntennaUI::onRotorSelectorIndexChanged);
}

CVextralAntennaUI::~CVextralAntennaUI() = default;

CVextralAntenna *CVextralAntennaUI::antenna() const
{
    return m_antenna;
}

void CVextralAntennaUI::setAntenna(CVextralAntenna *antenna)
{
    m_antenna = antenna;
    showName();
}

void CVextralAntennaUI::setRotorSelectorEnabled(bool enabled)
{
    m_ui->rotorSelector->setEnabled(enabled);
}

// ---- Showing the antenna ----

void CVextralAntennaUI::bind(CVextralAntenna *antenna)
{
    m_ui->angleSpinBox->setValue(truncatedDegrees(antenna->angle()));
    showTurnTo(0);
    m_ui->colorWidget->setColor(antenna->color());
    setAntenna(antenna);
    explainTurnTo();
}

void CVextralAntennaUI::refresh()
{
    if (!m_antenna)
        return;
    if (m_antenna->isRotorConnected())
        m_ui->enabledCheckBox->setChecked(m_antenna->isEnabled());
    m_ui->rotorSelector->setCurrentIndex(m_antenna->rotorId());
    m_ui->angleSpinBox->setValue(truncatedDegrees(m_antenna->angle()));
    explainTurnTo();
}

void CVextralAntennaUI::showSettings()
{
    if (!m_antenna)
        return;
    refresh();
    m_ui->enabledCheckBox->setChecked(m_antenna->isEnabled());
    const int degrees = shownDegrees(m_antenna->angle());
    m_ui->angleSpinBox->setValue(degrees);
    showTurnTo(degrees);
    m_ui->colorWidget->setColor(m_antenna->color());
    showName();
}

void CVextralAntennaUI::showName()
{
    m_ui->nameEdit->setText(m_antenna ? m_antenna->name() : QString());
    m_ui->nameEdit->setCursorPosition(0);
}

void CVextralAntennaUI::showTurnTo(int degrees)
{
    // Only the operator previews a direction.
    const QSignalBlocker blocker(m_ui->turnToSpinBox);
    m_ui->turnToSpinBox->setValue(degrees);
}

void CVextralAntennaUI::explainTurnTo()
{
    const bool isRefused = m_antenna && m_antenna->isRotorConnected() && !m_antenna->isEnabled();
    const QString toolTip =
        isRefused ? tr("Return turns nothing: the antenna is not in use. Tick \"%1\" below to turn it.")
                        .arg(m_ui->enabledCheckBox->text())
                  : tr("Direction in degrees, Return turns the antenna to it");
    if (m_ui->turnToSpinBox->toolTip() != toolTip)
        m_ui->turnToSpinBox->setToolTip(toolTip);
}

// ---- What the operator does ----

bool CVextralAntennaUI::eventFilter(QObject *watched, QEvent *event)
{
    // The ring around the selector is painted here, outside of it.
    if (watched == m_ui->rotorSelector
        && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut))
        update();
    if (watched == m_ui->turnToSpinBox
        && (event->type() == QEvent::FocusOut || event->type() == QEvent::Hide))
        takePreviewBack();
    return QWidget::eventFilter(watched, event);
}

void CVextralAntennaUI::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Otherwise a dialog around the editor would take the key as its OK.
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (m_ui->rotorSelector->hasFocus()) {
            stepRotor(event->key() == Qt::Key_Left ? -1 : 1);
            return;
        }
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(event);
}

void CVextralAntennaUI::paintEvent(QPaintEvent *)
{
    if (!m_ui->rotorSelector->hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(foregroundRole()));
    const int d = focusRingDistance;
    painter.drawRoundedRect(QRectF(m_ui->rotorSelector->geometry().adjusted(-d, -d, d, d)), focusRingRadius,
                            focusRingRadius);
}

void CVextralAntennaUI::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_antenna || !m_antenna->map())
        return;
    m_antenna->map()->setCurrentAntenna(m_antenna);
    m_antenna->map()->update();
}

void CVextralAntennaUI::stepRotor(int step)
{
    if (!m_antenna)
        return;
    const int rotorCount = m_antenna->controller() ? m_antenna->controller()->rotorCount() : 0;
    int index = m_ui->rotorSelector->currentIndex() + step;
    if (step < 0)
        index = std::min(index, rotorCount - 1);
    if (index < -1 || index >= rotorCount)
        return;
    m_ui->rotorSelector->setCurrentIndex(index);
    onRotorSelectorIndexChanged(index);
}

void CVextralAntennaUI::onTargetAngleValueChanged(int value)
{
    if (!m_antenna || !m_antenna->map())
        return;
    m_antenna->map()->setCurrentAntenna(m_antenna);
    const double present = m_antenna->target();
    if (!m_antenna->isRotorConnected())
        m_preview.reset();
    else if (!m_preview || m_preview->shown != present)
        m_preview = Preview{present, present};
    m_antenna->map()->doChangeTargetAngleValue(value);
    if (m_preview)
        m_preview->shown = m_antenna->target();
}

void CVextralAntennaUI::takePreviewBack()
{
    const std::optional<Preview> preview = std::exchange(m_preview, std::nullopt);
    // The antenna may have been given another target meanwhile.
    if (!preview || !m_antenna || !m_antenna->map() || m_antenna->target() != preview->shown)
        return;
    m_antenna->setTarget(preview->before);
    m_antenna->map()->update();
}

void CVextralAntennaUI::onTargetConfirm()
{
    m_preview.reset();
    if (!m_antenna || !m_antenna->map())
        return;
    const int value = m_ui->turnToSpinBox->value();
    m_antenna->map()->setCurrentAntenna(m_antenna);
    m_antenna->map()->setTargetOfCurrent(value);

    if (!m_antenna->isRotorConnected())
        pointAt(m_antenna, value);
    else if (m_antenna->isEnabled())
        turnByRotor(m_antenna, value);
    else
        qDebug("ROTOR NAO CONECTADO");
}

void CVextralAntennaUI::onColorChanged(QColor color)
{
    if (!m_antenna || !m_antenna->map())
        return;
    m_antenna->setColor(color);
    m_antenna->map()->update();
    changeSettings(m_antenna, [color](CSettings &settings, int i) { settings.colors[i] = color; });
}

void CVextralAntennaUI::onRotorSelectorIndexChanged(int currentIndex)
{
    if (!m_antenna || m_antenna->rotorId() == currentIndex)
        return;
    m_antenna->setRotorId(currentIndex);
    m_antenna->refreshEditor();

    const double angle = m_antenna->angle();
    CVextralAzimuthalWidget *map = m_antenna->map();
    if (map)
        map->refreshDisplays(true, false);
    m_antenna->setAngle(angle);
    m_antenna->setTarget(angle);
    if (map)
        map->showInDisplay(m_antenna, roundedDegrees(angle));
    changeSettings(m_antenna, [=](CSettings &settings, int i) { settings.rotorIds[i] = currentIndex; });
}

void CVextralAntennaUI::on_nameEdit_returnPressed()
{
    if (!m_antenna || !m_antenna->map())
        return;
    const QString name = m_ui->nameEdit->text();
    m_antenna->setName(name);
    m_antenna->map()->update();
    changeSettings(m_antenna, [&name](CSettings &settings, int i) { settings.names[i] = name; });
    emit onNameEdited();
}

void CVextralAntennaUI::finishName(bool keep)
{
    if (!m_antenna || m_ui->nameEdit->text() == m_antenna->name())
        return;
    if (keep)
        on_nameEdit_returnPressed();
    else
        showName();
}

void CVextralAntennaUI::giveUp()
{
    m_ui->colorWidget->abandonChoice();
    m_preview.reset();
}

void CVextralAntennaUI::on_enabledCheckBox_clicked(bool checked)
{
    if (!m_antenna)
        return;
    m_antenna->setEnabled(checked);
    explainTurnTo();
    changeSettings(m_antenna, [checked](CSettings &settings, int i) { settings.enabled[i] = checked; });
    if (m_antenna->map())
        m_antenna->map()->refreshDisplays(false, true);
}
