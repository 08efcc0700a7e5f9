// SPDX-License-Identifier: MIT
#include "settings/settings.h"

#include "settings/interfacemode.h"
#include "settings/settingsfile.h"

#include <QSettings>
#include <QVariant>

namespace {

const QLatin1String comPortNameKey("comPortName");
const QLatin1String interfaceModeKey("interfaceMode");
const QLatin1String relayBoxIdKey("relayBoxId");
const QLatin1String relayBoxNameKey("relayBoxName");
constexpr char colorPrefix[] = "Color_";
constexpr char enabledPrefix[] = "Enabled";
constexpr char anglePrefix[] = "Angles";
constexpr char rotorIdPrefix[] = "RotorID_";
constexpr char namePrefix[] = "Names";
constexpr char memoryPrefix[] = "Memories";
constexpr char radioNamePrefix[] = "RadioNames";

constexpr QRgb defaultColor = qRgb(0, 0, 255);
constexpr int noRotor = -1;

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
    SettingsFile &file = SettingsFile::ofThisProgram();
    if (file.isChangedByOthers())
        qDebug("CSettings::load() - %s was changed by another program", qUtf8Printable(SettingsFile::path()));
    file.load([this](const QSettings &values) { read(values); });
}

void CSettings::save() const
{
    if (!SettingsFile::ofThisProgram().save([this](QSettings &values) { write(values); }))
        qDebug("CSettings::save() - %s could not be written", qUtf8Printable(SettingsFile::path()));
}

void CSettings::read(const QSettings &file)
{
    comPortName = file.value(comPortNameKey, QStringLiteral("COM1")).toString();
    interfaceMode = file.value(interfaceModeKey, interfaceModes[ExtendedMode].word).toString();
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
    for (const InterfaceModeTraits &mode : interfaceModes)
        this->*mode.size = file.value(mode.sizeKey, mode.defaultSize).toSize();
}

/// In the order that a text editor shows.
void CSettings::write(QSettings &file) const
{
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
    for (const InterfaceModeTraits &mode : interfaceModes)
        file.setValue(mode.sizeKey, this->*mode.size);
}

void CSettings::storeAngle(int antennaIndex, double degrees)
{
    if (antennaIndex < 0 || antennaIndex >= elementCount)
        return;
    CSettings settings;
    settings.angles[std::size_t(antennaIndex)] = degrees;
    settings.save();
}
