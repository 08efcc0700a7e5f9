#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/memorybutton.h"

#include <QToolTip>

#include <algorithm>
#include <optional>

// The ten memories and the opposite bearing.

namespace {

/// Degrees folded once into 0..359; nothing when one turn does not reach there.
std::optional<int> foldedAzimuth(int degrees)
{
    const int folded = foldedDegrees(degrees);
    return folded >= 0 && folded < 360 ? std::optional<int>(folded) : std::nullopt;
}

/// What a memory holds; nothing while it carries a label.
std::optional<int> azimuthOfMemory(const QString &text)
{
    bool isNumber = false;
    const int degrees = text.toInt(&isNumber);
    return isNumber ? foldedAzimuth(degrees) : std::nullopt;
}

} // namespace

int CMainWindow::memoryPositionOf(const QObject *button) const
{
    const auto found = std::find(m_memoryButtons.begin(), m_memoryButtons.end(), button);
    return found == m_memoryButtons.end() ? -1 : static_cast<int>(found - m_memoryButtons.begin());
}

void CMainWindow::onMemoryButtonClicked(bool b)
{
    Q_UNUSED(b)
    auto *memory = qobject_cast<CMemoryButton *>(sender());
    const int position = memoryPositionOf(memory);
    if (position < 0)
        return;
    if (memory->isLongPressed()) {
        // The press opened the editor; its release is no recall.
        memory->setChecked(!memory->isChecked());
        return;
    }
    recallMemory(position);
}

void CMainWindow::recallMemory(int position)
{
    QPushButton *memory = m_memoryButtons[position];
    if (const std::optional<int> azimuth = azimuthOfMemory(memory->text())) {
        approach(memory, *azimuth);
        return;
    }
    // The click has lit it; the lamp of the memory that the antenna is on its way to stays.
    memory->setChecked(false);
    if (memory->isVisible())
        QToolTip::showText(
            memory->mapToGlobal(memory->rect().bottomLeft()),
            tr("This memory holds no azimuth yet. Press it for a second and a half to enter one."), memory);
}

void CMainWindow::on_plus180Button_clicked()
{
    light(nullptr);
    const CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
    if (!antenna)
        return;
    const double bearing = antenna->target() >= 0.0 ? antenna->target() : antenna->angle();
    if (bearing >= 0.0 && bearing < 360.0)
        approach(m_ui->plus180Button, foldedDegrees(truncatedDegrees(bearing) + 180));
}

void CMainWindow::approach(QPushButton *button, int azimuth)
{
    light(nullptr);
    CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
    if (!antenna)
        return;
    m_recalled = button;
    m_recalledAzimuth = azimuth;
    m_controller->turnTo(antenna, azimuth);
}

void CMainWindow::onStartRotating(double angle)
{
    // A target that waits for the rotor to rest starts later than it was asked for; another target puts the
    // lamp out.
    const CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
    const bool isRecalled = truncatedDegrees(angle) == m_recalledAzimuth;
    const bool isThere = antenna && truncatedDegrees(antenna->angle()) == m_recalledAzimuth;
    light(isRecalled && !isThere && m_controller->isOpen() ? m_recalled : nullptr);
}

void CMainWindow::light(const QPushButton *approached)
{
    for (QPushButton *button : m_memoryButtons)
        button->setChecked(approached && button == approached);
}

void CMainWindow::forgetRecall()
{
    m_recalled = nullptr;
    light(nullptr);
}

void CMainWindow::onMemoryValueChanged(int value)
{
    const int position = memoryPositionOf(qobject_cast<CMemoryButton *>(sender()));
    if (position < 0)
        return;
    // The antenna may be on its way to what the button held before.
    if (m_recalled == m_memoryButtons[position] && value != m_recalledAzimuth)
        forgetRecall();
    CSettings settings;
    settings.memories[position] = QString::number(value);
    settings.save();
}
