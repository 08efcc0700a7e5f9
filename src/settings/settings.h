// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QSize>
#include <QString>

#include <array>

class QSettings;

/// The whole configuration, as a plain record. Constructing one loads the settings file beside the
/// executable; whoever changes fields calls save() at once. Nothing is kept between loads, so the file is
/// what all users share, other copies of the program included: of two changes in one moment the later one
/// wins, and a change by another copy is logged.
///
/// Element i of colors, enabled, rotorIds, angles and names belongs to antenna i.
class CSettings
{
public:
    static constexpr int elementCount = 10;
    template <typename T>
    using Elements = std::array<T, elementCount>;

    /// Loads the file; missing keys get their defaults.
    CSettings();

    void load();
    /// Writes every key. A file that cannot be written whole stays as it was, which is logged.
    void save() const;

    /// Loads the file, sets one antenna's direction in degrees, and saves it. Antennas beyond the ten of the
    /// file are ignored.
    static void storeAngle(int antennaIndex, double degrees);

    qint32 relayBoxId = 0;
    /// The window's size in each interface mode, in pixels.
    QSize extendedSize;
    QSize miniSize;
    QSize superMiniSize;
    QString relayBoxName;
    QString comPortName;
    /// The word of an InterfaceMode.
    QString interfaceMode;
    Elements<QColor> colors;
    Elements<bool> enabled{};
    /// -1 is an antenna on no rotor.
    Elements<qint32> rotorIds{};
    /// Last known directions, in compass degrees.
    Elements<double> angles{};
    Elements<QString> names;
    /// Preset azimuths in whole degrees as text, or the label of a preset that was never set.
    Elements<QString> memories;
    Elements<QString> radioNames;

private:
    void read(const QSettings &file);
    void write(QSettings &file) const;
};
