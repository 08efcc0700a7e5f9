// SPDX-License-Identifier: MIT
#include "simbox/simulatedbox.h"

namespace {

const QByteArray AnglePrefix = QByteArrayLiteral("AZ=");

constexpr int MaxAzimuth = 360;
// Short steps add up to a whole degree only nearly; 90 must not read as 89.
constexpr double ReadingTolerance = 1e-6;

enum StatusBBit : quint8 { AuxBit = 0x10, Rotor1Bit = 0x20, Rotor0Bit = 0x40, MovingBit = 0x80 };

QByteArray withoutLineEnds(const QByteArray &line)
{
    QByteArray command = line;
    command.replace('\r', QByteArray()).replace('\n', QByteArray());
    return command;
}

bool bit(quint8 bits, int index)
{
    return index >= 0 && index < SimulatedBox::PortCount && (bits >> index & 1) != 0;
}

void setBit(quint8 &bits, int index, bool on)
{
    if (index < 0 || index >= SimulatedBox::PortCount)
        return;
    const auto mask = quint8(1 << index);
    bits = on ? quint8(bits | mask) : quint8(bits & ~mask);
}

bool isToggle(const QByteArray &command)
{
    return command.size() == 2 && command.at(0) == 'K' && command.at(1) >= '1' && command.at(1) <= '9';
}

bool isMovement(const QByteArray &command)
{
    return command.startsWith('M') || command == "L" || command == "R" || command == "S";
}

} // namespace

SimulatedBox::SimulatedBox(Model model) : m_model(model), m_selectedRotor(model == Model::Rotator ? 0 : -1) {}

QByteArray SimulatedBox::handle(const QByteArray &line)
{
    const QByteArray command = withoutLineEnds(line);
    if (command.isEmpty())
        return QByteArray();
    if (command == "K0")
        return "ST=" + QByteArray(1, char(statusA())) + char(statusB()) + lineEnd();
    if (command == "KG")
        return "T=" + QByteArray(1, char(statusA())) + char(statusB()) + angleDigits() + lineEnd();
    if (command == "C")
        return angleReply();
    if (isToggle(command))
        toggle(command.at(1) - '0');
    else if (isMovement(command))
        drive(command);
    else
        return errorReply();
    return QByteArray();
}

void SimulatedBox::advance(int milliseconds)
{
    for (SimulatedRotor &rotor : m_rotors)
        rotor.advance(milliseconds);
}

bool SimulatedBox::receivePort(int index) const
{
    return bit(m_receivePorts, index);
}

void SimulatedBox::setReceivePort(int index, bool on)
{
    setBit(m_receivePorts, index, on);
}

bool SimulatedBox::transmitLine(int index) const
{
    return bit(m_transmitLines, index);
}

void SimulatedBox::setTransmitLine(int index, bool on)
{
    setBit(m_transmitLines, index, on);
}

void SimulatedBox::setRotorPair(bool present)
{
    if (m_model != Model::StackSwitch || m_rotorPair == present)
        return;
    m_rotorPair = present;
    m_selectedRotor = present ? 0 : -1;
}

void SimulatedBox::setReadingsStuck(bool stuck)
{
    m_stuckReading = -1;
    if (stuck)
        m_stuckReading = wholeDegrees();
}

quint8 SimulatedBox::statusA() const
{
    return quint8(m_receivePorts | m_relayBoxId << 4);
}

quint8 SimulatedBox::statusB() const
{
    quint8 status = m_transmitLines;
    if (m_aux)
        status |= AuxBit;
    if (m_selectedRotor >= 0) {
        status |= m_selectedRotor == 0 ? Rotor0Bit : Rotor1Bit;
        if (rotor(m_selectedRotor).isMoving())
            status |= MovingBit;
    }
    return status;
}

void SimulatedBox::toggle(int key)
{
    if (m_model == Model::Rotator)
        return;
    if (key <= PortCount)
        setReceivePort(key - 1, !receivePort(key - 1));
    else if (key <= 2 * PortCount)
        setTransmitLine(key - PortCount - 1, !transmitLine(key - PortCount - 1));
    else if (m_rotorPair)
        m_selectedRotor = 1 - m_selectedRotor;
}

void SimulatedBox::drive(const QByteArray &command)
{
    if (m_selectedRotor < 0)
        return;
    SimulatedRotor &selected = rotor(m_selectedRotor);
    if (command == "L") {
        selected.turn(SimulatedRotor::Direction::CounterClockwise);
    } else if (command == "R") {
        selected.turn(SimulatedRotor::Direction::Clockwise);
    } else if (command == "S") {
        selected.stop();
    } else {
        bool isNumber = false;
        const int azimuth = command.mid(1).toInt(&isNumber);
        if (isNumber && azimuth >= 0 && azimuth <= MaxAzimuth)
            selected.goTo(azimuth);
    }
}

QByteArray SimulatedBox::angleReply()
{
    if (m_failingReadings > 0) {
        --m_failingReadings;
        return QByteArray();
    }
    if (!m_literalAngles.isEmpty())
        return AnglePrefix + m_literalAngles.takeFirst() + lineEnd();
    return AnglePrefix + angleDigits() + lineEnd();
}

QByteArray SimulatedBox::angleDigits() const
{
    return QByteArray::number(wholeDegrees()).rightJustified(3, '0');
}

int SimulatedBox::wholeDegrees() const
{
    if (m_stuckReading >= 0)
        return m_stuckReading;
    return m_selectedRotor < 0 ? 0 : int(rotor(m_selectedRotor).position() + ReadingTolerance) % 360;
}
