#pragma once

#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>

class CSettings;
class QSettings;

/// The settings file beside the executable, and beside it the kept configurations of the relay boxes that are
/// not connected now.
///
/// The file is replaced as a whole, never written in place:
///
///     values  ──QSettings──>  draft  ──is it whole?──>  renamed to the settings file
///
/// Killed at any moment, or on a full disk, the program leaves the former file or the new one. Several copies
/// of the program may share the file: each has a draft of its own, which carries its process number.
class SettingsFile
{
public:
    static SettingsFile &ofThisProgram();

    static QString path();
    /// Where the configuration of a relay box is kept while another box is connected.
    static QString keptPath(int relayBoxId);

    /// Lets `read` take values out of the file; a missing file has none. A file that cannot be decoded is
    /// renamed to `<its name>.unreadable`, logged, and counts as missing; `read` is then called twice.
    void load(const std::function<void(const QSettings &)> &read);
    /// Replaces the file by one with what `write` sets; the values of other keys stay. False when the file
    /// stayed as it was.
    bool save(const std::function<void(QSettings &)> &write);
    /// Whether the file is another one than this program loaded or saved last.
    bool isChangedByOthers() const;

    /// Puts the configuration of relay box `next` in the place of the one of box `current`:
    ///
    ///     settings file        ──copy──>  kept file of `current`
    ///     kept file of `next`  ──copy──>  settings file          (a box seen before)
    ///     settings file gets id and name of `next`               (a new box)
    ///
    /// Returns the settings that are valid then. Their relayBoxId is always `next`, even where the file could
    /// not be written, so that the caller never takes a box for another one again and again. A configuration
    /// that could not be kept is not replaced, which is logged.
    CSettings exchange(int current, int next);

private:
    /// What distinguishes a changed file from an unchanged one; a missing file compares equal.
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

    /// None before the first load.
    std::optional<State> m_lastSeen;
    /// The box whose configuration is in the file although another one is connected, after an exchange that
    /// failed.
    std::optional<int> m_boxThatStayed;
};
