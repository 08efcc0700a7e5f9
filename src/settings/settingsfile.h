// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>

class CSettings;
class QSettings;

/// The settings file beside the executable, and in the same folder the configurations of the relay boxes that
/// are not connected now.
///
/// The file is replaced as a whole, never written in place:
///
///     values  ──QSettings──>  draft  ──is it whole?──>  renamed to the settings file
///
/// So a program that is killed, or that finds the disk full, leaves either the former file or the new one.
/// Several copies of the program may share the file. Each writes a draft of its own, whose name ends in the
/// number of its process.
class SettingsFile
{
public:
    static SettingsFile &ofThisProgram();

    static QString path();
    /// Where the configuration of a relay box is kept while another box is connected.
    static QString keptPath(int relayBoxId);

    /// Calls `read` with the values of the file; a missing file has none. A file that cannot be decoded
    /// safely has none either: it is renamed to `<its name>.unreadable` and logged.
    void load(const std::function<void(const QSettings &)> &read);
    /// Replaces the file by one with the values that `write` sets; the values of other keys stay. False when
    /// the file could not be replaced and is as it was before.
    bool save(const std::function<void(QSettings &)> &write);
    /// Whether the file has changed since this program loaded or saved it last.
    bool isChangedByOthers() const;

    /// Replaces the configuration of relay box `current` in the settings file by that of box `next`:
    ///
    ///     settings file        ──copy──>  kept file of `current`
    ///     kept file of `next`  ──copy──>  settings file          (a box seen before)
    ///     settings file gets id and name of `next`               (a new box)
    ///
    /// Returns the settings that are valid then. Their relayBoxId is always `next`, even if the file could
    /// not be written; otherwise each poll would report another box and start the exchange again. When the
    /// configuration of `current` could not be kept, it is not replaced, and this is logged.
    CSettings exchange(int current, int next);

private:
    /// Size and time of change, by which a changed file is noticed. A missing file has the default values.
    struct State
    {
        qint64 size = 0;
        QDateTime changed;
        bool operator==(const State &other) const { return size == other.size && changed == other.changed; }
    };

    SettingsFile();
    static State stateOf(const QString &path);
    bool replace(const std::function<bool(const QString &draft)> &makeDraft);
    bool bringBack(const QString &kept);

    /// The state after the last load or save; none before the first one.
    std::optional<State> m_lastSeen;
    /// After an exchange that failed: the box whose configuration is still in the file although another box
    /// is connected.
    std::optional<int> m_boxThatStayed;
};
