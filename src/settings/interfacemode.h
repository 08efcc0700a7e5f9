// SPDX-License-Identifier: MIT
#pragma once

#include "settings/settings.h"

#include <QLatin1String>
#include <QSize>
#include <QString>

#include <array>

/// How much the window shows. The models of the controller know the modes by these numbers.
enum InterfaceMode { ExtendedMode = 0, MiniMode = 1, SuperMiniMode = 2 };

struct InterfaceModeTraits
{
    /// Its name in the settings.
    QLatin1String word;
    /// Where the settings keep the window's size in this mode.
    QLatin1String sizeKey;
    QSize CSettings::*size = nullptr;
    /// In pixels.
    QSize defaultSize;
};

/// By InterfaceMode.
inline const std::array<InterfaceModeTraits, 3> interfaceModes{
    {{QLatin1String("extended"), QLatin1String("extendedSize"), &CSettings::extendedSize, {441, 473}},
     {QLatin1String("mini"), QLatin1String("miniSize"), &CSettings::miniSize, {371, 160}},
     {QLatin1String("supermini"), QLatin1String("superMiniSize"), &CSettings::superMiniSize, {371, 110}}}};

/// ExtendedMode for any word that names no mode.
inline InterfaceMode interfaceModeOf(const QString &word)
{
    for (std::size_t mode = 0; mode < interfaceModes.size(); ++mode) {
        if (word == interfaceModes[mode].word)
            return InterfaceMode(mode);
    }
    return ExtendedMode;
}

/// Whether `mode` is an InterfaceMode; the models know further numbers.
inline bool isInterfaceMode(int mode)
{
    return mode >= 0 && mode < int(interfaceModes.size());
}
