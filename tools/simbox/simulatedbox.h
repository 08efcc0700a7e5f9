// SPDX-License-Identifier: MIT
#pragma once

#include "simbox/simulatedrotor.h"

#include <QByteArray>
#include <QList>

#include <array>

/// A controller box without a line: the bytes of one command go in, the bytes of its reply come out.
///
///     K1..K4   toggle a receive port            K0   "ST=" A B CR LF
///     K5..K8   toggle a transmit line           KG   "T=" A B ddd CR LF
///     K9       select the other rotor           C    "AZ=" ddd CR LF
///     Mddd     go to an azimuth, 000 to 360     L R S   turn left, turn right, stop
///
/// A: receive ports in bits 0-3, relay box id in bits 4-7. B: transmit lines in bits 0-3, aux in bit 4, rotor
/// 1 selected in bit 5, rotor 0 selected in bit 6, selected rotor moving in bit 7. ddd: whole degrees of the
/// selected rotor, 000 where there is none.
///
/// Commands of the two columns' left side and the M, L, R, S family never get a reply, also where the box has
/// nothing to switch or turn, or the azimuth is out of range. Everything else gets "?>" CR LF. Empty lines
/// are ignored.
///
/// The stack switch has four receive ports, four transmit lines and, when told so, a pair of rotors. The
/// rotator has one rotor, always selected, and no ports. Not thread-safe.
class SimulatedBox
{
public:
    enum class Model { StackSwitch, Rotator };

    static constexpr int PortCount = 4;
    static constexpr int RotorCount = 2;

    static QByteArray lineEnd() { return QByteArrayLiteral("\r\n"); }
    static QByteArray errorReply() { return QByteArrayLiteral("?>\r\n"); }

    explicit SimulatedBox(Model model = Model::StackSwitch);

    /// One command line, with or without its line end. Returns the reply with CR LF, empty when there is
    /// none.
    QByteArray handle(const QByteArray &line);
    /// Lets time pass for the rotors.
    void advance(int milliseconds);

    /// Ports and lines count from 0 to 3; others read false and are not set.
    bool receivePort(int index) const;
    void setReceivePort(int index, bool on);
    bool transmitLine(int index) const;
    void setTransmitLine(int index, bool on);

    bool aux() const { return m_aux; }
    void setAux(bool on) { m_aux = on; }
    int relayBoxId() const { return m_relayBoxId; }
    /// 0..15 (only the low four bits are kept); 1 at first, as in fresh settings.
    void setRelayBoxId(int id) { m_relayBoxId = id & 0x0F; }

    /// For the stack switch only: carries a pair of rotors, the first one selected.
    void setRotorPair(bool present);
    /// 0 or 1, or -1 when the box has no rotor.
    int selectedRotor() const { return m_selectedRotor; }
    /// Rotor 0 or 1. Both exist in every box, so that a test can prepare them; only a selected one is driven.
    SimulatedRotor &rotor(int index = 0) { return m_rotors.at(std::size_t(index)); }
    const SimulatedRotor &rotor(int index = 0) const { return m_rotors.at(std::size_t(index)); }

    /// The next `count` C queries stay without a reply.
    void failAngleReadings(int count) { m_failingReadings = count; }
    /// The next C query is answered with "AZ=" and this text. Calls queue up.
    void answerNextAngle(const QByteArray &digits) { m_literalAngles.append(digits); }
    /// While set, C and KG repeat the angle of this moment although the rotor turns.
    void setReadingsStuck(bool stuck);

    quint8 statusA() const;
    quint8 statusB() const;

private:
    void toggle(int key);
    void drive(const QByteArray &command);
    QByteArray angleReply();
    QByteArray angleDigits() const;
    int wholeDegrees() const;

    Model m_model;
    quint8 m_receivePorts = 0;
    quint8 m_transmitLines = 0;
    bool m_aux = false;
    int m_relayBoxId = 1;
    bool m_rotorPair = false;
    int m_selectedRotor = -1;
    std::array<SimulatedRotor, RotorCount> m_rotors;

    int m_failingReadings = 0;
    QList<QByteArray> m_literalAngles;
    int m_stuckReading = -1;
};
