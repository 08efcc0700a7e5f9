#include "settings/relayboxswap.h"

#include "settings/wholefile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <optional>

namespace {

/// The box whose configuration is in the settings file although another one is connected, after an exchange
/// that failed.
std::optional<int> boxThatStayed;

/// True when the present configuration is safe in `kept`, or there is none.
bool keepPresent(const QString &kept)
{
    const QString present = CSettings::settingsFilePath();
    return !QFile::exists(present) || copyWholeFile(present, kept);
}

/// Makes `wanted` the settings file.
bool bringBack(const QString &wanted)
{
    const QString path = CSettings::settingsFilePath();
    const QDateTime before = QFileInfo(path).lastModified();
    if (!copyWholeFile(wanted, path))
        return false;
    // QSettings remembers a file by size and time of change, and would serve the old content of another one
    // that agrees in both.
    QFile present(path);
    if (present.open(QIODevice::ReadWrite))
        present.setFileTime(qMax(before, QDateTime::currentDateTime()).addSecs(1),
                            QFileDevice::FileModificationTime);
    CSettings::rememberFile();
    return true;
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

void stayWith(int owner)
{
    qDebug("swapRelayBoxSettings() - the settings could not be exchanged, those of box %d stay", owner);
    boxThatStayed = owner;
}

} // namespace

CSettings swapRelayBoxSettings(int current, int next)
{
    const int owner = boxThatStayed == CSettings().relayBoxId ? *boxThatStayed : current;
    boxThatStayed.reset();
    const QString wanted = CSettings::relayBoxFilePath(next);
    const bool isKnown = QFileInfo(wanted).isFile();
    if (owner != next) {
        if (!keepPresent(CSettings::relayBoxFilePath(owner)) || (isKnown && !bringBack(wanted)))
            stayWith(owner);
        else if (isKnown)
            correctId(next);
        else
            carryOver(next);
    }
    CSettings settings;
    settings.relayBoxId = next;
    return settings;
}
