#include "fuzzing.h"

#include "settings/settings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

#include <cmath>

// Any bytes as the settings file, or as the values of its keys: it loads, and what was loaded is what a save
// and another load bring back.

namespace {

/// One key of each kind.
const char *const keys[] = {"relayBoxId", "Color_1", "Enabled1",     "Angles1",    "RotorID_1",
                            "Names1",     "Names2",  "extendedSize", "comPortName"};

/// An input that begins like a settings file is one; of another one each line is the value of a key.
QByteArray settingsFile(const QByteArray &input)
{
    if (input.startsWith('['))
        return input;
    const QList<QByteArray> values = input.split('\n');
    QByteArray file = "[General]\n";
    int line = 0;
    for (const char *key : keys)
        file += QByteArray(key) + '=' + values.value(line++) + '\n';
    return file;
}

/// QSettings remembers a file by size and time of change, so each file is a second younger than the last.
void writeSettingsFile(const QByteArray &bytes)
{
    static qint64 age = 1'000'000'000;
    QFile file(CSettings::settingsFilePath());
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush(),
            "the settings file can be written");
    require(file.setFileTime(QDateTime::fromSecsSinceEpoch(++age), QFileDevice::FileModificationTime),
            "the settings file can be dated");
}

bool isSame(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

void checkSame(const CSettings &left, const CSettings &right)
{
    require(left.comPortName == right.comPortName, "the port's name comes back");
    require(left.interfaceMode == right.interfaceMode, "the interface mode comes back");
    require(left.relayBoxId == right.relayBoxId, "the box's number comes back");
    require(left.relayBoxName == right.relayBoxName, "the box's name comes back");
    require(left.extendedSize == right.extendedSize && left.miniSize == right.miniSize
                && left.superMiniSize == right.superMiniSize,
            "the sizes come back");
    require(left.enabled == right.enabled, "what is enabled comes back");
    require(left.rotorIds == right.rotorIds, "the rotors come back");
    require(left.names == right.names, "the names come back");
    require(left.memories == right.memories, "the memories come back");
    require(left.radioNames == right.radioNames, "the radios' names come back");
    for (std::size_t i = 0; i < CSettings::elementCount; ++i) {
        require(left.colors[i].rgba() == right.colors[i].rgba(), "the colours come back");
        require(isSame(left.angles[i], right.angles[i]), "the angles come back");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    writeSettingsFile(settingsFile(bytesOf(data, size)));
    const CSettings loaded;
    loaded.save();
    const CSettings again;
    checkSame(loaded, again);
    return 0;
}
