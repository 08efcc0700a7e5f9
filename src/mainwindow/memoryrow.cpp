// SPDX-License-Identifier: MIT
#include "mainwindow/memoryrow.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/memorybutton.h"

#include <QToolTip>

#include <algorithm>
#include <optional>

namespace {

/// Degrees folded once into 0..359; none when they are more than one turn outside.
std::optional<int> foldedAzimuth(int degrees)
{
    const int folded = foldedDegrees(degrees);
    return folded >= 0 && folded < 360 ? std::optional<int>(folded) : std::nullopt;
}

/// The azimuth of a memory; none while it has a label.
std::optional<int> azimuthOfMemory(const QString &text)
{
    bool isNumber = false;
    const int degrees = text.toInt(&isNumber);
    return isNumber ? foldedAzimuth(degrees) : std::nullopt;
}

/// Without a rotor and without a map there is neither a turn nor a direction to show.
bool canPoint(const CVextralAntenna &antenna)
{
    return antenna.controller()
        && (antenna.isRotorConnected() || antenna.controller()->supportsAzimuthalMap());
}

} // namespace

MemoryRow::MemoryRow(std::vector<CMemoryButton *> memories, QPushButton *opposite,
                     CVextralAzimuthalWidget *map)
    : m_memories(std::move(memories)), m_opposite(opposite), m_map(map)
{
    for (std::size_t i = 0; i < m_memories.size(); ++i)
        m_memories[i]->setAccessibleName(tr("Memory %1").arg(i + 1));
    m_opposite->setAccessibleName(tr("Opposite bearing"));
}

void MemoryRow::showTexts(const CSettings::Elements<QString> &texts)
{
    for (std::size_t i = 0; i < m_memories.size() && i < texts.size(); ++i)
        m_memories[i]->setText(texts[i]);
}

int MemoryRow::positionOf(const QObject *memory) const
{
    const auto found = std::find(m_memories.begin(), m_memories.end(), memory);
    return found == m_memories.end() ? -1 : static_cast<int>(found - m_memories.begin());
}

void MemoryRow::click(const QObject *memory)
{
    const int position = positionOf(memory);
    if (position < 0)
        return;
    CMemoryButton *button = m_memories[std::size_t(position)];
    if (button->isLongPressed())
        button->setChecked(!button->isChecked()); // the press opened the editor; its release is no recall
    else
        recall(position);
}

void MemoryRow::recall(int position)
{
    if (position < 0 || position >= int(m_memories.size()))
        return;
    CMemoryButton *memory = m_memories[std::size_t(position)];
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

void MemoryRow::recallOpposite()
{
    light(nullptr);
    const CVextralAntenna *antenna = m_map->currentAntenna();
    if (!antenna)
        return;
    const double bearing = antenna->target() >= 0.0 ? antenna->target() : antenna->angle();
    if (bearing >= 0.0 && bearing < 360.0)
        approach(m_opposite, foldedDegrees(truncatedDegrees(bearing) + 180));
}

void MemoryRow::approach(QPushButton *button, int azimuth)
{
    light(nullptr);
    CVextralAntenna *antenna = m_map->currentAntenna();
    if (!antenna || !canPoint(*antenna))
        return;
    m_recalled = button;
    m_recalledAzimuth = azimuth;
    antenna->controller()->turnTo(antenna, azimuth);
}

void MemoryRow::store(const QObject *memory, int azimuth)
{
    const int position = positionOf(memory);
    if (position < 0)
        return;
    // The antenna may be on its way to what the button held before.
    if (m_recalled == memory && azimuth != m_recalledAzimuth)
        giveUpRecall();
    CSettings settings;
    settings.memories[std::size_t(position)] = QString::number(azimuth);
    settings.save();
}

void MemoryRow::showStart(double angle)
{
    // A target that waits for the rotor to rest starts later than it was asked for; another target puts the
    // lamp out.
    const CVextralAntenna *antenna = m_map->currentAntenna();
    const bool isRecalled = truncatedDegrees(angle) == m_recalledAzimuth;
    const bool isThere = antenna && truncatedDegrees(antenna->angle()) == m_recalledAzimuth;
    const bool canTurn = antenna && antenna->controller() && antenna->controller()->isOpen();
    light(isRecalled && canTurn && !isThere ? m_recalled : nullptr);
}

void MemoryRow::light(const QPushButton *approached)
{
    for (CMemoryButton *memory : m_memories)
        memory->setChecked(approached && memory == approached);
    m_opposite->setChecked(approached && m_opposite == approached);
}

void MemoryRow::giveUpRecall()
{
    m_recalled = nullptr;
    light(nullptr);
}

void MemoryRow::finishEdits()
{
    for (CMemoryButton *memory : m_memories)
        memory->finishEdit();
}

void MemoryRow::giveUp()
{
    for (CMemoryButton *memory : m_memories)
        memory->abandonEdit();
    giveUpRecall();
}
