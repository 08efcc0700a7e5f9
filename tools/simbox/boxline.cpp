// SPDX-License-Identifier: MIT
#include "simbox/boxline.h"

#include <chrono>

namespace {

using Lock = std::unique_lock<std::mutex>;

bool isCommand(const BoxLine::Traffic &piece)
{
    return piece.fromProgram && !FaultyBox::withoutLineEnd(piece.bytes).isEmpty();
}

} // namespace

BoxLine::BoxLine(SimulatedBox::Model model, Clock clock) : m_clock(clock), m_box(model)
{
    m_time.start();
}

// Up and down

bool BoxLine::isUp() const
{
    const Lock lock(m_mutex);
    return m_up;
}

bool BoxLine::waitUntilDown(int timeoutMs) const
{
    Lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return !m_up; });
}

QString BoxLine::place() const
{
    const Lock lock(m_mutex);
    return m_place;
}

QString BoxLine::errorText() const
{
    const Lock lock(m_mutex);
    return m_errorText;
}

void BoxLine::setUp(const QString &place)
{
    const Lock lock(m_mutex);
    m_up = true;
    m_place = place;
    m_errorText.clear();
}

void BoxLine::setDown()
{
    forgetDialogue();
    const Lock lock(m_mutex);
    m_up = false;
    m_place.clear();
    m_changed.notify_all();
}

void BoxLine::setErrorText(const QString &text)
{
    const Lock lock(m_mutex);
    m_errorText = text;
}

void BoxLine::forgetDialogue()
{
    const Lock lock(m_mutex);
    m_box.forgetDialogue();
    m_outgoing.clear();
}

// Box, faults and record

void BoxLine::withBox(const std::function<void(SimulatedBox &)> &function)
{
    const Lock lock(m_mutex);
    catchUp();
    function(m_box.box());
}

void BoxLine::advance(int milliseconds)
{
    withBox([milliseconds](SimulatedBox &box) { box.advance(milliseconds); });
}

void BoxLine::setFault(const LineFault &fault, int replies)
{
    const Lock lock(m_mutex);
    m_box.setFault(fault, replies);
}

QList<QByteArray> BoxLine::received() const
{
    const Lock lock(m_mutex);
    QList<QByteArray> lines;
    for (const Traffic &piece : m_traffic) {
        if (isCommand(piece))
            lines.append(piece.bytes);
    }
    return lines;
}

QList<QByteArray> BoxLine::commands() const
{
    QList<QByteArray> lines = received();
    for (QByteArray &line : lines)
        line = FaultyBox::withoutLineEnd(line);
    return lines;
}

QByteArray BoxLine::receivedBytes() const
{
    const Lock lock(m_mutex);
    return m_receivedBytes;
}

QVector<BoxLine::Traffic> BoxLine::traffic() const
{
    const Lock lock(m_mutex);
    return m_traffic;
}

void BoxLine::clearReceived()
{
    const Lock lock(m_mutex);
    m_traffic.clear();
    m_receivedBytes.clear();
    m_commandCount = 0;
}

bool BoxLine::waitForReceived(int count, int timeoutMs) const
{
    Lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                              [this, count] { return m_commandCount >= count; });
}

void BoxLine::record(bool fromProgram, const QByteArray &bytes)
{
    const Traffic piece{m_time.elapsed(), fromProgram, bytes};
    m_traffic.append(piece);
    if (m_listener)
        m_untold.append(piece);
    if (isCommand(piece)) {
        ++m_commandCount;
        m_changed.notify_all();
    }
}

void BoxLine::tellListener()
{
    QVector<Traffic> news;
    {
        const Lock lock(m_mutex);
        news.swap(m_untold);
    }
    for (const Traffic &piece : qAsConst(news))
        m_listener(piece);
}

// The rotors need no timer: nobody sees them but through a command or withBox(), and both come by here first.
void BoxLine::catchUp()
{
    const qint64 now = m_time.elapsed();
    if (m_clock == Clock::Real)
        m_box.box().advance(int(now - m_boxTime));
    m_boxTime = now;
}

// The dialogue, in the line's thread

void BoxLine::receive(const QByteArray &bytes)
{
    {
        const Lock lock(m_mutex);
        m_receivedBytes += bytes;
        for (const QByteArray &line : m_box.receive(bytes))
            handleLine(line);
    }
    tellListener();
}

void BoxLine::handleLine(const QByteArray &line)
{
    record(true, line);
    if (FaultyBox::withoutLineEnd(line).isEmpty())
        return;
    catchUp();
    send(m_box.answer(line));
}

void BoxLine::send(const QVector<LineFault::Portion> &portions)
{
    for (const LineFault::Portion &portion : portions) {
        const qint64 earliest = m_outgoing.empty() ? m_time.elapsed() : m_outgoing.back().due;
        m_outgoing.push_back(
            {qMax(earliest, m_time.elapsed()) + portion.pauseMs, portion.bytes, 0, portion.hangUpAfter});
    }
}

bool BoxLine::sendDue()
{
    bool goesOn = false;
    {
        const Lock lock(m_mutex);
        goesOn = writeReplies();
    }
    tellListener();
    return goesOn;
}

bool BoxLine::writeReplies()
{
    while (!m_outgoing.empty() && m_outgoing.front().due <= m_time.elapsed()) {
        Outgoing &front = m_outgoing.front();
        while (front.written < front.bytes.size()) {
            const qint64 count =
                deliver(front.bytes.constData() + front.written, front.bytes.size() - front.written);
            if (count <= 0)
                return true; // until there is room again
            front.written += int(count);
        }
        if (!front.bytes.isEmpty())
            record(false, front.bytes);
        const bool hangsUp = front.hangUpAfter;
        m_outgoing.pop_front();
        if (hangsUp)
            return false;
    }
    return true;
}

int BoxLine::untilDue() const
{
    const Lock lock(m_mutex);
    return m_outgoing.empty() ? -1 : int(qMax<qint64>(0, m_outgoing.front().due - m_time.elapsed()));
}
