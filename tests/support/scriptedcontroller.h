// SPDX-License-Identifier: MIT
#pragma once

#include "device/vextralremotecontrol.h"
#include "settings/settings.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <utility>

/// A controller without a line: statuses and angles come from scripts, and what would go out is noted. A
/// script that has run out repeats its last entry.
class ScriptedController : public CVextralRemoteControl
{
public:
    explicit ScriptedController(int rotors = 2, const CSettings &settings = CSettings())
        : CVextralRemoteControl(&settings), m_rotors(rotors)
    {}

    static CDeviceStatus status(int selectedRotor, bool moving = false)
    {
        CDeviceStatus status;
        status.valid = true;
        if (selectedRotor >= 0)
            status.rotorSelected[selectedRotor] = true;
        status.moving = moving;
        status.relayBoxId = 0;
        return status;
    }

    int antennaCount() override { return antennaTotal; }
    int rotorCount() override { return m_rotors; }
    int radioCount() override { return radios; }
    bool capabilityI() override { return labelEditor; }
    bool supportsAzimuthalMap() override { return mapSupport; }
    bool isOpen() override { return lineOpen; }
    bool open(const QString &portName) override
    {
        openedPorts << portName;
        return true;
    }
    CDeviceStatus getStatus() override
    {
        note("K0");
        if (const std::function<void()> pumped = std::exchange(duringStatus, nullptr))
            pumped();
        return next(statuses);
    }
    double getCurrentAngle() override { return next(angles); }
    bool toggleRX(int index) override { return note(QString("RX%1").arg(index)); }
    bool toggleTX(int index) override { return note(QString("TX%1").arg(index)); }
    bool toggleRadio(int index) override { return note(QString("radio%1").arg(index)); }
    bool toggleRotor() override { return note("K9"); }
    bool rotateTo(double angle) override
    {
        note(QString("M%1").arg(angle));
        emit onStartRotating(angle);
        return true;
    }
    bool stop() override { return note("S"); }

    QList<CDeviceStatus> statuses{CDeviceStatus()};
    QList<double> angles{-1.0};
    /// What the next status read finds in the event loop.
    std::function<void()> duringStatus;
    QStringList sent;
    QStringList openedPorts;
    int antennaTotal = 4;
    int radios = 0;
    bool labelEditor = false;
    bool mapSupport = true;
    bool lineOpen = true;

private:
    template <typename T>
    static T next(QList<T> &script)
    {
        return script.size() > 1 ? script.takeFirst() : script.first();
    }

    bool note(const QString &command)
    {
        sent << command;
        return true;
    }

    int m_rotors;
};
