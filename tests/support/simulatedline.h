// SPDX-License-Identifier: MIT
#pragma once

#include "line/line.h"
#include "simbox/simulatedbox.h"

#include <QByteArray>
#include <QPointer>
#include <QStringList>

#include <functional>

class SimulatedLine;

/// A simulated box and the port that it is plugged into, without a pseudo-terminal: the lines of factory()
/// pass bytes straight to it. Waits and pauses take no time, so a dialogue comes out the same on every run.
/// It must outlive its lines.
class SimulatedPort
{
public:
    explicit SimulatedPort(SimulatedBox::Model model = SimulatedBox::Model::StackSwitch) : m_box(model) {}

    LineFactory factory();

    SimulatedBox &box() { return m_box; }
    /// Lets the rotors turn for so long.
    void advance(int milliseconds) { m_box.advance(milliseconds); }

    /// The next reply gets lost.
    void loseReply() { m_losesReply = true; }
    /// The adapter is pulled out: the line is lost at its next use. plugIn() puts it back.
    void pullOut();
    void plugIn() { m_plugged = true; }
    /// The line stays open but takes no orders, as a network line does while the box is silent.
    void setOutage(bool outage) { m_outage = outage; }

    /// The commands since the last call of heard().
    QStringList commands() const { return m_commands; }
    /// The same, divided by blanks; forgets them.
    QString heard();
    /// Every byte since the port was made.
    QByteArray receivedBytes() const { return m_receivedBytes; }
    /// Called with each command as the box hears it.
    std::function<void(const QByteArray &command)> onHeard;

private:
    friend class SimulatedLine;

    void receive(const QByteArray &bytes);

    SimulatedBox m_box;
    QPointer<SimulatedLine> m_line;
    bool m_plugged = true;
    bool m_outage = false;
    bool m_losesReply = false;
    QByteArray m_delivered;
    QByteArray m_receivedBytes;
    QStringList m_commands;
};

/// One of the lines to a SimulatedPort.
class SimulatedLine : public Line
{
    Q_OBJECT

public:
    SimulatedLine(const QString &portName, SimulatedPort &port) : Line(portName), m_port(port) {}

    bool open() override;
    void close() override;
    bool isOpen() const override { return m_open; }
    bool takesOrders() const override { return m_open && !m_port.m_outage; }
    bool write(const QByteArray &text, int waitMs) override;
    QByteArray readLine(int waitMs) override;
    qint64 bytesAvailable() const override { return m_port.m_delivered.size(); }
    void discard() override { m_port.m_delivered.clear(); }
    void pause(int) override {}
    void tend() override;

    void lose();

private:
    SimulatedPort &m_port;
    bool m_open = false;
};
