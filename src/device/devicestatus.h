// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// What the box said about itself in one status reply. A plain value, copied between the controller,
/// the antennas and the front panel. Its default state is "nothing known".
struct CDeviceStatus
{
    /// True once a status reply passed its prefix test; nothing else counts while it is false.
    bool valid = false;
    /// Receive port i is switched on.
    bool antennaRx[8] = {};
    /// Transmit line i is switched on.
    bool antennaTx[8] = {};
    bool radio[8] = {};
    /// The box transmits: the panel's antenna buttons turn red and show antennaTx.
    bool auxFlag = false;
    bool rotorSelected[2] = {};
    /// The selected rotor is turning.
    bool moving = false;
    /// Entry 0 lights "SEND", entry 1 lights "SPLIT".
    bool modelFlags[2] = {};
    /// Relay box number 0..15, -1 while unknown.
    int relayBoxId = -1;
    bool extraFlags[8] = {};
    bool extraFlag = false;
    /// Azimuth in degrees that came with the status, 0 when the reply carries none.
    double angle = 0.0;

    /// Whether `rotor` (any number) is one of the two the box can select, and is selected.
    bool isRotorSelected(int rotor) const { return rotor >= 0 && rotor < 2 && rotorSelected[rotor]; }
};
