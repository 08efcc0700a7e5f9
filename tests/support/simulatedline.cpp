// SPDX-License-Identifier: MIT
#include "support/simulatedline.h"

#include <utility>

LineFactory SimulatedPort::factory()
{
    return [this](const QString &portName) {
        auto line = std::make_unique<SimulatedLine>(portName, *this);
        m_line = line.get();
        return line;
    };
}

void SimulatedPort::pullOut()
{
    m_plugged = false;
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
    for (const QByteArray &line : bytes.split('\n')) {
        const QByteArray command = line.trimmed();
        if (command.isEmpty())
            continue;
        m_commands << QString::fromLatin1(command);
        // A copy, because a listener may replace itself.
        if (const auto listener = onHeard)
            listener(command);
        const QByteArray reply = m_box.handle(command);
        if (reply.isEmpty() || !std::exchange(m_losesReply, false))
            m_delivered += reply;
    }
}

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
    if (m_open)
        m_port.receive(QByteArray(text).replace("\n", "\r\n"));
    return m_open;
}

QByteArray SimulatedLine::readLine(int)
{
    QByteArray &received = m_port.m_delivered;
    const int end = received.indexOf('\n') + 1;
    if (!m_open || end == 0)
        return QByteArray();
    const QByteArray line = received.left(end).replace("\r\n", "\n");
    received.remove(0, end);
    return line;
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
