// SPDX-License-Identifier: MIT
#include "support/simulatedline.h"

#include <algorithm>
#include <utility>

LineFactory SimulatedPort::factory()
{
    return [this](const QString &portName) {
        auto line = std::make_unique<SimulatedLine>(portName, *this);
        m_line = line.get();
        return line;
    };
}

void SimulatedPort::pass(int milliseconds)
{
    m_time += milliseconds;
    deliver();
}

void SimulatedPort::pullOut()
{
    m_plugged = false;
    m_outgoing.clear();
    m_delivered.clear();
    if (m_line && m_line->isOpen())
        m_line->lose();
}

QString SimulatedPort::heard()
{
    return std::exchange(m_commands, QStringList()).join(' ');
}

void SimulatedPort::receive(const QByteArray &bytes)
{
    m_receivedBytes += bytes;
    for (const QByteArray &line : m_box.receive(bytes)) {
        if (!FaultyBox::withoutLineEnd(line).isEmpty())
            handle(line);
    }
}

void SimulatedPort::handle(const QByteArray &line)
{
    const QByteArray command = FaultyBox::withoutLineEnd(line);
    m_commands << QString::fromLatin1(command);
    // A copy, because a listener may replace itself.
    if (const auto listener = onHeard)
        listener(command);
    send(m_box.answer(line));
}

void SimulatedPort::send(const QVector<LineFault::Portion> &portions)
{
    for (const LineFault::Portion &portion : portions) {
        if (portion.hangUpAfter)
            return pullOut();
        const int earliest = m_outgoing.empty() ? m_time : m_outgoing.back().due;
        m_outgoing.push_back({std::max(earliest, m_time) + portion.pauseMs, portion.bytes});
    }
    deliver();
}

void SimulatedPort::deliver()
{
    while (!m_outgoing.empty() && m_outgoing.front().due <= m_time) {
        m_delivered += m_outgoing.front().bytes;
        m_outgoing.pop_front();
    }
}

void SimulatedPort::waitForLine(int waitMs)
{
    const int until = m_time + waitMs;
    while (!m_delivered.contains('\n') && m_time < until) {
        const int next = m_outgoing.empty() ? until : std::min(until, m_outgoing.front().due);
        pass(next - m_time);
    }
}

SimulatedLine::SimulatedLine(const QString &portName, SimulatedPort &port) : Line(portName), m_port(port) {}

bool SimulatedLine::open()
{
    m_open = m_port.m_plugged;
    if (m_open)
        begin();
    else
        setState(LineState::Kind::NoSuchPort);
    return m_open;
}

void SimulatedLine::close()
{
    m_open = false;
    setState(LineState::Kind::Closed);
}

bool SimulatedLine::write(const QByteArray &text, int)
{
    if (!m_open)
        return false;
    m_port.receive(QByteArray(text).replace("\n", "\r\n"));
    return m_open;
}

QByteArray SimulatedLine::readLine(int waitMs)
{
    if (m_open)
        m_port.waitForLine(waitMs);
    if (bytesAvailable() > floodBytes)
        discard();
    QByteArray &received = m_port.m_delivered;
    const int end = received.indexOf('\n') + 1;
    if (!m_open || end == 0)
        return QByteArray();
    QByteArray line = received.left(end);
    received.remove(0, end);
    if (line.endsWith("\r\n"))
        line.replace(line.size() - 2, 2, "\n");
    return line;
}

void SimulatedLine::discard()
{
    m_port.m_delivered.clear();
}

void SimulatedLine::pause(int milliseconds)
{
    m_port.pass(milliseconds);
}

void SimulatedLine::tend()
{
    if (kind() != LineState::Kind::Lost || !m_port.m_plugged)
        return;
    m_open = true;
    begin();
    emitLater(&Line::back);
}

void SimulatedLine::lose()
{
    m_open = false;
    setState(LineState::Kind::Lost);
    emitLater(&Line::lost);
}
