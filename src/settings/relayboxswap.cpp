#include "settings/relayboxswap.h"

#include <QFile>
#include <QSettings>

namespace {

/// Copies the settings file to `kept`. True when the present configuration is safe there, or there is none.
bool keepPresent(const QString &kept)
{
    const QString present = CSettings::settingsFilePath();
    if (!QFile::exists(present))
        return true;
    QFile::remove(kept);
    return QFile::copy(present, kept);
}

/// Lets QSettings see that the file is gone. It remembers a file by size and time of change, and would serve
/// the old content of another one that agrees in both.
void forgetRememberedFile()
{
    const QSettings missing(CSettings::settingsFilePath(), QSettings::IniFormat);
}

/// Puts `wanted` in the place of the settings file, or the present configuration back from `kept`.
bool bringBack(const QString &wanted, const QString &kept)
{
    const QString present = CSettings::settingsFilePath();
    if (!QFile::exists(wanted))
        return false;
    QFile::remove(present);
    forgetRememberedFile();
    if (QFile::copy(wanted, present))
        return true;
    QFile::copy(kept, present);
    return false;
}

/// The present configuration goes over to a box that has none of its own.
void carryOver(int next)
{
    CSettings settings;
    settings.relayBoxId = next;
    settings.relayBoxName = QString::number(next);
    settings.save();
}

/// A kept file may name another box than the one it was kept for.
void correctId(int next)
{
    CSettings settings;
    if (settings.relayBoxId == next)
        return;
    settings.relayBoxId = next;
    settings.save();
}

} // namespace

CSettings swapRelayBoxSettings(int current, int next)
{
    const QString kept = CSettings::relayBoxFilePath(current);
    if (keepPresent(kept)) {
        if (bringBack(CSettings::relayBoxFilePath(next), kept))
            correctId(next);
        else
            carryOver(next);
    }
    CSettings settings;
    settings.relayBoxId = next;
    return settings;
}
