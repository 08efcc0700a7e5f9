#include "settings/settings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QSettings>
#include <QVariant>

#include <optional>

namespace {

constexpr char comPortNameKey[] = "comPortName";
constexpr char interfaceModeKey[] = "interfaceMode";
constexpr char relayBoxIdKey[] = "relayBoxId";
constexpr char relayBoxNameKey[] = "relayBoxName";
constexpr char extendedSizeKey[] = "extendedSize";
constexpr char miniSizeKey[] = "miniSize";
constexpr char superMiniSizeKey[] = "superMiniSize";
constexpr char colorPrefix[] = "Color_";
constexpr char enabledPrefix[] = "Enabled";
constexpr char anglePrefix[] = "Angles";
constexpr char rotorIdPrefix[] = "RotorID_";
constexpr char namePrefix[] = "Names";
constexpr char memoryPrefix[] = "Memories";
constexpr char radioNamePrefix[] = "RadioNames";

constexpr QRgb defaultColor = qRgb(0, 0, 255);
constexpr int noRotor = -1;

/// More than the file ever takes.
constexpr int triedBytes = 64 * 1024;
/// Far more than a save takes.
constexpr int abandonedLockMs = 1000;

/// What tells a changed file from an unchanged one; all alike for missing ones.
struct FileState
{
    qint64 size = 0;
    QDateTime changed;

    bool operator!=(const FileState &other) const { return size != other.size || changed != other.changed; }
};

/// How this program saw the settings file last; nothing before its first load.
std::optional<FileState> lastSeen;

FileState stateOfFile()
{
    const QFileInfo file(CSettings::settingsFilePath());
    return {file.size(), file.lastModified()};
}

/// A program that was killed in the middle of a save may leave a lock that does not say whose it is, and
/// QSettings would wait half a minute for it.
void removeAbandonedLock()
{
    const QString path = CSettings::settingsFilePath() + QLatin1String(".lock");
    if (!QFileInfo::exists(path))
        return;
    QLockFile lock(path);
    lock.setStaleLockTime(abandonedLockMs);
    lock.tryLock(2 * abandonedLockMs);
}

/// Whether a new file can be written whole. QSettings does not notice when the disk takes only a part of it,
/// and would put that in the place of the good file.
bool canBeReplaced()
{
    const QFileInfo present(CSettings::settingsFilePath());
    if (present.exists() && !present.isWritable())
        return false;
    QDir().mkpath(present.path());
    QSaveFile trial(present.filePath() + QLatin1String(".trial"));
    if (!trial.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const bool fits = trial.write(QByteArray(triedBytes, ' ')) == triedBytes;
    trial.cancelWriting();
    return fits;
}

int defaultRotorId(int index)
{
    return index < 2 ? index : noRotor;
}

QString numbered(const char *prefix, int index)
{
    return QString::fromLatin1(prefix) + QString::number(index + 1);
}

/// Calls `read(key, index)` for each element and stores what it returns.
template <typename T, typename Read>
void loadElements(CSettings::Elements<T> &elements, const char *prefix, Read read)
{
    for (int i = 0; i < CSettings::elementCount; ++i)
        elements[std::size_t(i)] = read(numbered(prefix, i), i);
}

template <typename T>
void saveElements(QSettings &file, const CSettings::Elements<T> &elements, const char *prefix)
{
    for (int i = 0; i < CSettings::elementCount; ++i)
        file.setValue(numbered(prefix, i), elements[std::size_t(i)]);
}

void loadTexts(const QSettings &file, CSettings::Elements<QString> &elements, const char *prefix,
               const char *defaultPrefix)
{
    loadElements(elements, prefix, [&](const QString &key, int i) {
        return file.value(key, numbered(defaultPrefix, i)).toString();
    });
}

CSettings::Elements<uint> colorValues(const CSettings::Elements<QColor> &colors)
{
    CSettings::Elements<uint> values{};
    for (std::size_t i = 0; i < colors.size(); ++i)
        values[i] = colors[i].rgba();
    return values;
}

} // namespace

CSettings::CSettings()
{
    load();
}

void CSettings::load()
{
    if (lastSeen && *lastSeen != stateOfFile())
        qDebug("CSettings::load() - %s was changed by another program", qUtf8Printable(settingsFilePath()));
    const QSettings file(settingsFilePath(), QSettings::IniFormat);
    comPortName = file.value(comPortNameKey, QStringLiteral("COM1")).toString();
    interfaceMode = file.value(interfaceModeKey, QStringLiteral("extended")).toString();
    relayBoxId = file.value(relayBoxIdKey, 1).toInt();
    relayBoxName = file.value(relayBoxNameKey, QString()).toString();
    loadElements(colors, colorPrefix, [&](const QString &key, int) {
        return QColor::fromRgba(file.value(key, defaultColor).toUInt());
    });
    loadElements(enabled, enabledPrefix,
                 [&](const QString &key, int) { return file.value(key, false).toBool(); });
    loadElements(angles, anglePrefix,
                 [&](const QString &key, int) { return file.value(key, 0.0).toDouble(); });
    loadElements(rotorIds, rotorIdPrefix,
                 [&](const QString &key, int i) { return file.value(key, defaultRotorId(i)).toInt(); });
    loadTexts(file, names, namePrefix, "Antena");
    loadTexts(file, memories, memoryPrefix, "M");
    loadTexts(file, radioNames, radioNamePrefix, "Radio ");
    extendedSize = file.value(extendedSizeKey, defaultExtendedSize).toSize();
    miniSize = file.value(miniSizeKey, defaultMiniSize).toSize();
    superMiniSize = file.value(superMiniSizeKey, defaultSuperMiniSize).toSize();
    rememberFile();
}

void CSettings::save() const
{
    removeAbandonedLock();
    if (!canBeReplaced() || !writeFile())
        qDebug("CSettings::save() - %s could not be written", qUtf8Printable(settingsFilePath()));
    rememberFile();
}

bool CSettings::writeFile() const
{
    // Where QSettings remembers an order, a fresh file shows this one.
    QSettings file(settingsFilePath(), QSettings::IniFormat);
    file.setValue(comPortNameKey, comPortName);
    file.setValue(interfaceModeKey, interfaceMode);
    file.setValue(relayBoxIdKey, relayBoxId);
    file.setValue(relayBoxNameKey, relayBoxName);
    saveElements(file, colorValues(colors), colorPrefix);
    saveElements(file, enabled, enabledPrefix);
    saveElements(file, angles, anglePrefix);
    saveElements(file, names, namePrefix);
    saveElements(file, radioNames, radioNamePrefix);
    saveElements(file, rotorIds, rotorIdPrefix);
    saveElements(file, memories, memoryPrefix);
    file.setValue(extendedSizeKey, extendedSize);
    file.setValue(miniSizeKey, miniSize);
    file.setValue(superMiniSizeKey, superMiniSize);
    file.sync();
    return file.status() != QSettings::AccessError;
}

void CSettings::rememberFile()
{
    lastSeen = stateOfFile();
}

void CSettings::storeAngle(int antennaIndex, double degrees)
{
    if (antennaIndex < 0 || antennaIndex >= elementCount)
        return;
    CSettings settings;
    settings.angles[std::size_t(antennaIndex)] = degrees;
    settings.save();
}

QString CSettings::settingsFilePath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/VextralRemoteControl.ini");
}

QString CSettings::relayBoxFilePath(int relayBoxId)
{
    return settingsFilePath() + QLatin1Char('.') + QString::number(relayBoxId);
}
