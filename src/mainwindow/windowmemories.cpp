#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "widgets/memorybutton.h"
#include "widgets/vextralazimuthalwidget.h"

#include <QToolTip>

#include <algorithm>
#include <optional>

// The ten memories and the opposite bearing.

namespace {

/// Degrees folded once into 0..359; nothing when one turn does not reach there.
std::optional<int> foldedAzimuth(int degrees)
{
    if (degrees >= 360)
        degrees -= 360;
    else if (degrees < 0)
        degrees += 360;
    return degrees >= 0 && degrees < 360 ? std::optional<int>(degrees) : std::nullopt;
}

/// What a memory holds; nothing while it carries a label.
std::optional<int> azimuthOfMemory(const QString &text)
{
    bool isNumber = false;
    const int degrees = text.toInt(&isNumber);
    return isNumber ? foldedAzimuth(degrees) : std::nullopt;
}

} // namespace

void CMainWindow::onMemoryButtonClicked(bool b)
{
    Q_UNUSED(b)
    auto *memory = qobject_cast<CMemoryButton *>(sender());
    const auto found = std::find(m_memoryButtons.begin(), m_memoryButtons.end(), memory);
    if (!memory || found == m_memoryButtons.end())
        return;
    if (memory->isLongPressed()) {
        // The press opened the editor; its release is no recall.
        memory->setChecked(!memory->isChecked());
        return;
    }
    recallMemory(static_cast<int>(found - m_memoryButtons.begin()));
}

void CMainWindow::recallMemory(int position)
{
    QPushButton *memory = m_memoryButtons[position];
    const std::optional<int> azimuth = azimuthOfMemory(memory->text());
    if (!azimuth) {
        showApproachedMemory(nullptr);
        QToolTip::showText(
            memory->mapToGlobal(memory->rect().bottomLeft()),
            tr("This memory holds no azimuth yet. Press it for a second and a half to enter one."), memory);
        return;
    }
    const bool turning = turnCurrentAntennaTo(*azimuth);
    showApproachedMemory(turning ? memory : nullptr);
}

void CMainWindow::on_plus180Button_clicked()
{
    const CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
    if (!antenna) {
        showApproachedMemory(nullptr);
        return;
    }
    const double bearing = antenna->target() >= 0.0 ? antenna->target() : antenna->angle();
    const std::optional<int> opposite = foldedAzimuth(static_cast<int>(bearing) + 180);
    const bool turning = opposite && turnCurrentAntennaTo(*opposite);
    showApproachedMemory(turning ? m_ui->plus180Button : nullptr);
}

bool CMainWindow::turnCurrentAntennaTo(int azimuth)
{
    CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
    if (!antenna)
        return false;
    bool started = false;
    const QMetaObject::Connection watching =
        connect(m_controller, &CVextralRemoteControl::onStartRotating, this, [&started] { started = true; });
    antenna->setTarget(azimuth);
    m_controller->turnAntennaFromCurrentToTarget(antenna);
    disconnect(watching);
    m_ui->azimuthalWidget->update();
    return started;
}

void CMainWindow::showApproachedMemory(const QPushButton *approached)
{
    for (QPushButton *button : m_memoryButtons)
        button->setChecked(button == approached);
}

void CMainWindow::onMemoryValueChanged(int value)
{
    auto *memory = qobject_cast<CMemoryButton *>(sender());
    const auto found = std::find(m_memoryButtons.begin(), m_memoryButtons.end(), memory);
    if (!memory || found == m_memoryButtons.end())
        return;
    CSettings settings;
    settings.memories[found - m_memoryButtons.begin()] = QString::number(value);
    settings.save();
}
