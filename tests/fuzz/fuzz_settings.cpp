// SPDX-License-Identifier: MIT
#include "fuzzing.h"

#include "settings/settings.h"
#include "settings/settingsfile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <tuple>

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
    QList<QByteArray> values = input.split('\n');
    QByteArray file = "[General]\n";
    for (const char *key : keys)
        file += QByteArray(key) + '=' + (values.isEmpty() ? "" : values.takeFirst()) + '\n';
    return file;
}

/// QSettings remembers a file by size and time of change, so each file is a second younger than the last.
void writeSettingsFile(const QByteArray &bytes)
{
    static qint64 age = 1'000'000'000;
    QFile file(SettingsFile::path());
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush(),
            "the settings file can be written");
    require(file.setFileTime(QDateTime::fromSecsSinceEpoch(++age), QFileDevice::FileModificationTime),
            "the settings file can be dated");
}

bool isSame(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// All that compares alike.
auto plainValues(const CSettings &s)
{
    return std::tie(s.comPortName, s.interfaceMode, s.relayBoxId, s.relayBoxName, s.extendedSize, s.miniSize,
                    s.superMiniSize, s.enabled, s.rotorIds, s.names, s.memories, s.radioNames, s.colors);
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
    QFile::remove(SettingsFile::path() + QLatin1String(".unreadable"));
    require(plainValues(loaded) == plainValues(again), "the values come back");
    require(std::equal(loaded.angles.begin(), loaded.angles.end(), again.angles.begin(), isSame),
            "the angles come back");
    return 0;
}
