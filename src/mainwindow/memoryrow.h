// SPDX-License-Identifier: MIT
#pragma once

#include "settings/settings.h"

#include <QCoreApplication>
#include <QPointer>

#include <vector>

class CMemoryButton;
class CVextralAzimuthalWidget;
class QPushButton;

/// The row of memories and the opposite bearing beside it: what they hold, the recall of it for the map's
/// current antenna, and the lamp of the one that the antenna is on its way to.
///
/// A memory's text is its azimuth in whole degrees, or a label while it holds none. Positions count from 0.
/// Buttons and map are not owned.
class MemoryRow
{
    Q_DECLARE_TR_FUNCTIONS(MemoryRow)

public:
    MemoryRow(std::vector<CMemoryButton *> memories, QPushButton *opposite, CVextralAzimuthalWidget *map);

    const std::vector<CMemoryButton *> &memories() const { return m_memories; }
    void showTexts(const CSettings::Elements<QString> &texts);

    /// The operator clicked on a memory: recalls it, unless the press opened its editor.
    void click(const QObject *memory);
    /// Turns the current antenna to what the memory holds; one that holds nothing says so.
    void recall(int position);
    /// Turns the current antenna to the opposite of its target, or of its angle when it has no target.
    void recallOpposite();
    /// Keeps in the settings what was entered into a memory, in degrees.
    void store(const QObject *memory, int azimuth);

    /// The controller starts to rotate to an angle, in degrees.
    void showStart(double angle);
    /// The antenna no longer turns to any of them.
    void showRest() { light(nullptr); }
    /// Closes open editors and takes their values.
    void finishEdits();
    /// Closes open editors without taking their values, and forgets where the antenna is on its way to.
    void giveUp();

private:
    int positionOf(const QObject *memory) const;
    /// Turns the current antenna; the button is lit while the antenna is under way.
    void approach(QPushButton *button, int azimuth);
    void light(const QPushButton *approached);
    /// A target that still waits does not light a button.
    void giveUpRecall();

    std::vector<CMemoryButton *> m_memories;
    QPointer<QPushButton> m_opposite;
    QPointer<CVextralAzimuthalWidget> m_map;
    /// The button recalled last and its azimuth in degrees.
    QPointer<QPushButton> m_recalled;
    int m_recalledAzimuth = 0;
};
