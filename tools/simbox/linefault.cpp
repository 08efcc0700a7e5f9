// SPDX-License-Identifier: MIT
#include "simbox/linefault.h"

#include "simbox/simulatedbox.h"

#include <random>
#include <utility>

namespace {

constexpr int DigitCount = 3;
constexpr int TimeToReadMs = 200;

bool carriesAngle(const QByteArray &reply)
{
    return (reply.startsWith("AZ=") || reply.startsWith('T')) && reply.endsWith(SimulatedBox::lineEnd())
        && reply.size() >= DigitCount + SimulatedBox::lineEnd().size();
}

QByteArray withDigits(const QByteArray &reply, const QByteArray &digits)
{
    return reply.left(reply.size() - SimulatedBox::lineEnd().size() - DigitCount) + digits
         + SimulatedBox::lineEnd();
}

} // namespace

LineFault::LineFault(Kind kind, int count, int milliseconds, QByteArray bytes)
    : m_kind(kind), m_count(count), m_milliseconds(milliseconds), m_bytes(std::move(bytes))
{}

LineFault LineFault::silence()
{
    return replacedBy(QByteArray());
}

LineFault LineFault::delayed(int milliseconds)
{
    return LineFault(Kind::Delay, 0, milliseconds, QByteArray());
}

LineFault LineFault::late()
{
    return LineFault(Kind::Late, 0, 0, QByteArray());
}

LineFault LineFault::cutAfter(int bytes)
{
    return LineFault(Kind::Cut, bytes, 0, QByteArray());
}

LineFault LineFault::splitAfter(int bytes, int pauseMs)
{
    return LineFault(Kind::Split, bytes, pauseMs, QByteArray());
}

LineFault LineFault::doubled()
{
    return LineFault(Kind::Double, 0, 0, QByteArray());
}

LineFault LineFault::noise(int bytes, quint32 seed)
{
    std::mt19937 random(seed);
    QByteArray garbage;
    garbage.reserve(bytes + SimulatedBox::lineEnd().size());
    for (int i = 0; i < bytes; ++i)
        garbage.append(char(random() & 0xFF));
    return replacedBy(garbage + SimulatedBox::lineEnd());
}

LineFault LineFault::nuls(int bytes)
{
    return replacedBy(QByteArray(bytes, '\0') + SimulatedBox::lineEnd());
}

LineFault LineFault::flood(int bytes)
{
    return replacedBy(QByteArray(bytes, '~'));
}

LineFault LineFault::echo()
{
    return LineFault(Kind::Echo, 0, 0, QByteArray());
}

LineFault LineFault::otherReply()
{
    return LineFault(Kind::OtherReply, 0, 0, QByteArray());
}

LineFault LineFault::angle(const QByteArray &digits)
{
    return LineFault(Kind::Angle, 0, 0, digits);
}

LineFault LineFault::error()
{
    return replacedBy(SimulatedBox::errorReply());
}

LineFault LineFault::replacedBy(const QByteArray &bytes)
{
    return LineFault(Kind::Replace, 0, 0, bytes);
}

LineFault LineFault::hangUp(int afterBytes)
{
    return LineFault(Kind::HangUp, afterBytes, 0, QByteArray());
}

bool LineFault::actsOn(const QByteArray &reply) const
{
    switch (m_kind) {
    case Kind::None:
        return false;
    case Kind::Echo:
    case Kind::HangUp:
        return true;
    case Kind::Angle:
        return carriesAngle(reply);
    default:
        return !reply.isEmpty();
    }
}

QVector<LineFault::Portion> LineFault::portions(const QByteArray &command, const QByteArray &reply,
                                                const QByteArray &other) const
{
    switch (m_kind) {
    case Kind::None:
    case Kind::Late:
        break;
    case Kind::Delay:
        return {{m_milliseconds, reply, false}};
    case Kind::Cut:
        return {{0, reply.left(m_count), false}};
    case Kind::Split:
        return {{0, reply.left(m_count), false}, {m_milliseconds, reply.mid(m_count), false}};
    case Kind::Double:
        return {{0, reply + reply, false}};
    case Kind::Echo:
        return {{0, command + reply, false}};
    case Kind::OtherReply:
        return {{0, other, false}};
    case Kind::Angle:
        return {{0, withDigits(reply, m_bytes), false}};
    case Kind::Replace:
        return {{0, m_bytes, false}};
    case Kind::HangUp:
        if (m_count == 0)
            return {{0, QByteArray(), true}};
        return {{0, reply.left(m_count), false}, {TimeToReadMs, QByteArray(), true}};
    }
    return {{0, reply, false}};
}
