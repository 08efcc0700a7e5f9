#include "settings/settingsfile.h"

#include "settings/settings.h"
#include "settings/wholefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>
#include <filesystem>

namespace {

const QLatin1String draftEnding(".draft");
/// Far more than a save takes.
constexpr int abandonedAfterSeconds = 10;

/// Whether the file holds so many keys; QSettings does not notice when the disk takes only a part of it.
bool isWhole(const QString &path, int keyCount)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray contents = file.readAll();
    const QList<QByteArray> lines = contents.split('\n');
    const auto isKey = [](const QByteArray &line) {
        return !line.trimmed().isEmpty() && !line.startsWith('[');
    };
    return contents.endsWith('\n') && std::count_if(lines.begin(), lines.end(), isKey) == keyCount;
}

bool writeValues(const QString &path, const QSettings &present, const std::function<void(QSettings &)> &write)
{
    QSettings values(path, QSettings::IniFormat);
    write(values);
    const QStringList presentKeys = present.allKeys();
    for (const QString &key : presentKeys) {
        if (!values.contains(key))
            values.setValue(key, present.value(key));
    }
    values.sync();
    return values.status() == QSettings::NoError && isWhole(path, values.allKeys().size());
}

/// QSettings remembers a file by size and time of change, and would go on with the old values where the new
/// file agrees in both. An empty line is no value.
bool makeLonger(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::Append | QIODevice::Unbuffered) && file.write("\n") == 1;
}

/// In one step, over the file that is there.
bool rename(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return !error;
}

/// The present configuration, or the one that was kept for another box, becomes that of box `next`.
void storeId(int next, bool isNew)
{
    CSettings settings;
    if (settings.relayBoxId == next && !isNew)
        return;
    settings.relayBoxId = next;
    if (isNew)
        settings.relayBoxName = QString::number(next);
    settings.save();
}

} // namespace

/// A program that was killed while saving leaves its draft, and the lock that QSettings has for it.
SettingsFile::SettingsFile()
{
    const QFileInfo file(path());
    const QDateTime limit = QDateTime::currentDateTime().addSecs(-abandonedAfterSeconds);
    const QFileInfoList drafts = file.dir().entryInfoList({file.fileName() + draftEnding + QLatin1Char('*')});
    for (const QFileInfo &draft : drafts) {
        if (draft.lastModified() < limit)
            QFile::remove(draft.filePath());
    }
}

SettingsFile &SettingsFile::ofThisProgram()
{
    static SettingsFile file;
    return file;
}

QString SettingsFile::path()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/VextralRemoteControl.ini");
}

QString SettingsFile::keptPath(int relayBoxId)
{
    return path() + QLatin1Char('.') + QString::number(relayBoxId);
}

SettingsFile::State SettingsFile::stateOf(const QString &path)
{
    const QFileInfo file(path);
    return {file.size(), file.lastModified()};
}

bool SettingsFile::isChangedByOthers() const
{
    return m_lastSeen && !(*m_lastSeen == stateOf(path()));
}

void SettingsFile::load(const std::function<void(const QSettings &)> &read)
{
    read(QSettings(path(), QSettings::IniFormat));
    m_lastSeen = stateOf(path());
}

bool SettingsFile::save(const std::function<void(QSettings &)> &write)
{
    return replace([&write](const QString &draft, const QSettings &present) {
        return writeValues(draft, present, write);
    });
}

bool SettingsFile::replace(const std::function<bool(const QString &, const QSettings &)> &makeDraft)
{
    QFile file(path());
    QDir().mkpath(QFileInfo(file).path());
    if (file.exists() && !file.open(QIODevice::ReadWrite))
        return false;

    const bool isNew = !file.isOpen();
    const QString target = isNew ? path() : QFileInfo(file).canonicalFilePath();
    const QString draft = target + draftEnding + QString::number(QCoreApplication::applicationPid());
    // QSettings would wait half a minute for a lock that does not name its owner.
    QFile::remove(draft);
    QFile::remove(draft + QLatin1String(".lock"));
    const QSettings present(path(), QSettings::IniFormat);
    bool isReplaced = makeDraft(draft, present);
    if (isReplaced && !isNew)
        QFile::setPermissions(draft, file.permissions());
    if (isReplaced && stateOf(draft) == stateOf(target))
        isReplaced = makeLonger(draft);
    isReplaced = isReplaced && rename(draft, target);
    if (!isReplaced)
        QFile::remove(draft);
    m_lastSeen = stateOf(path());
    return isReplaced;
}

CSettings SettingsFile::exchange(int current, int next)
{
    const int owner = m_boxThatStayed == CSettings().relayBoxId ? *m_boxThatStayed : current;
    m_boxThatStayed.reset();
    const QString wanted = keptPath(next);
    const bool isKnown = QFileInfo(wanted).isFile();
    if (owner != next) {
        const bool isKept = !QFile::exists(path()) || copyWholeFile(path(), keptPath(owner));
        if (isKept && (!isKnown || bringBack(wanted))) {
            storeId(next, !isKnown);
        } else {
            qDebug("SettingsFile::exchange() - the settings could not be exchanged, those of box %d stay",
                   owner);
            m_boxThatStayed = owner;
        }
    }
    CSettings settings;
    settings.relayBoxId = next;
    return settings;
}

bool SettingsFile::bringBack(const QString &kept)
{
    return replace([&kept](const QString &draft, const QSettings &) { return copyWholeFile(kept, draft); });
}
