// SPDX-License-Identifier: MIT
#include "simbox/faultybox.h"

#include <utility>

namespace {

/// No command is this long. What has no line end by then is noise, which must not fill the memory.
constexpr int LongestLine = 65536;

} // namespace

void FaultyBox::setFault(const LineFault &fault, int replies)
{
    m_fault = fault;
    m_faultCount = replies;
}

QList<QByteArray> FaultyBox::receive(const QByteArray &bytes)
{
    m_partialLine += bytes;
    QList<QByteArray> lines;
    int start = 0;
    for (int end = 0; (end = m_partialLine.indexOf('\n', start) + 1) > 0; start = end)
        lines << m_partialLine.mid(start, end - start);
    m_partialLine.remove(0, start);
    if (m_partialLine.size() > LongestLine)
        m_partialLine.clear();
    return lines;
}

QVector<LineFault::Portion> FaultyBox::answer(const QByteArray &line)
{
    const QByteArray reply = m_box.handle(line);
    if (m_faultCount == 0 || !m_fault.actsOn(reply)) {
        if (reply.isEmpty())
            return {};
        return {{0, std::exchange(m_held, QByteArray()) + reply, false}};
    }
    if (m_faultCount > 0)
        --m_faultCount;
    if (m_fault.isLate()) {
        m_held += reply;
        return {};
    }
    // Asked of a copy: the box has not heard that query, so it must not use up a prepared angle.
    const QByteArray other = SimulatedBox(m_box).handle(withoutLineEnd(line) == "C" ? "K0" : "C");
    return m_fault.portions(line, reply, other);
}

void FaultyBox::forgetDialogue()
{
    m_held.clear();
    m_partialLine.clear();
}

QByteArray FaultyBox::withoutLineEnd(const QByteArray &line)
{
    int length = line.size();
    while (length > 0 && (line.at(length - 1) == '\r' || line.at(length - 1) == '\n'))
        --length;
    return line.left(length);
}
