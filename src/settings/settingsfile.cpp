// SPDX-License-Identifier: MIT
#include "settings/settingsfile.h"

#include "settings/settings.h"
#include "settings/wholefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
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

/// Renames a file that cannot be decoded, without replacing one that was kept before. False when it is still
/// there.
bool keepUnreadable(const QString &path)
{
    const QString first = path + QLatin1String(".unreadable");
    QString kept = first;
    for (int n = 2; QFileInfo::exists(kept); ++n)
        kept = first + QString::number(n);
    const bool isKept = QFile::rename(path, kept);
    qDebug("SettingsFile::keepUnreadable() - %s cannot be read, it is kept as %s", qUtf8Printable(path),
           qUtf8Printable(isKept ? kept : path));
    return isKept;
}

/// Without quotation marks and continued lines, and with each escape sequence replaced by its character, as
/// QSettings does it. An escaped control character or quotation mark becomes a backslash.
QString unescaped(const QString &escaped)
{
    static const QRegularExpression markOrEscape(
        QStringLiteral(R"("|\\(?:x([0-9A-Fa-f]+)|([0-7]+)|(["\\abfnrtv?'])|\r\n|\n\r|.))"),
        QRegularExpression::DotMatchesEverythingOption);
    QString plain;
    int end = 0;
    for (auto matches = markOrEscape.globalMatch(escaped); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        plain += escaped.mid(end, match.capturedStart() - end);
        if (match.capturedLength(1) > 0)
            plain += QChar(match.captured(1).right(4).toUShort(nullptr, 16));
        else if (match.capturedLength(2) > 0)
            plain += QChar(match.captured(2).right(5).toUShort(nullptr, 8));
        else if (match.capturedLength(3) > 0)
            plain += QLatin1Char('\\');
        end = match.capturedEnd();
    }
    return plain + escaped.mid(end);
}

/// Whether the file holds an object that Qt would have to decode. This program writes none, and a damaged one
/// can end the program: Qt may ask for more memory than there is, or read past what it decoded.
bool holdsSerializedObject(const QString &path)
{
    static const QRegularExpression object(QStringLiteral(R"([=,]\s*@(Variant|DateTime)\()"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray contents = file.readAll();
    return unescaped(QString::fromLatin1(contents.constData(), contents.size())).contains(object);
}

/// Lets `read` take the values out of a file. A file that cannot be decoded has none and is kept aside. False
/// when it could not be kept aside.
bool readFile(const QString &path, const std::function<void(const QSettings &)> &read)
{
    const bool isReadable = !holdsSerializedObject(path);
    const bool isKept = isReadable || keepUnreadable(path);
    read(QSettings(isReadable ? path : QStringLiteral(":/no-settings"), QSettings::IniFormat));
    return isKept;
}

QVariantMap allValues(const QSettings &file)
{
    QVariantMap values;
    const QStringList keys = file.allKeys();
    for (const QString &key : keys)
        values.insert(key, file.value(key));
    return values;
}

bool writeValues(const QString &path, const QVariantMap &present,
                 const std::function<void(QSettings &)> &write)
{
    QSettings values(path, QSettings::IniFormat);
    write(values);
    for (auto value = present.begin(); value != present.end(); ++value) {
        if (!values.contains(value.key()))
            values.setValue(value.key(), value.value());
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
    readFile(path(), read);
    m_lastSeen = stateOf(path());
}

bool SettingsFile::save(const std::function<void(QSettings &)> &write)
{
    QVariantMap present;
    return readFile(path(), [&present](const QSettings &file) { present = allValues(file); })
        && replace([&](const QString &draft) { return writeValues(draft, present, write); });
}

bool SettingsFile::replace(const std::function<bool(const QString &)> &makeDraft)
{
    QFile file(path());
    QDir().mkpath(QFileInfo(file).path());
    if (file.exists() && !file.open(QIODevice::ReadWrite))
        return false;

    const bool isNew = !file.isOpen();
    file.close(); // Windows replaces no file that is open
    const QString target = isNew ? path() : QFileInfo(file).canonicalFilePath();
    const QString draft = target + draftEnding + QString::number(QCoreApplication::applicationPid());
    // QSettings would wait half a minute for a lock that does not name its owner.
    QFile::remove(draft);
    QFile::remove(draft + QLatin1String(".lock"));
    bool isReplaced = makeDraft(draft);
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
    return replace([&kept](const QString &draft) { return copyWholeFile(kept, draft); });
}
