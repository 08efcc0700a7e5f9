// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVector>

/// One way in which a line misbehaves when the box answers a command.
///
/// A plain value, made by one of the factory functions. It acts on commands that get a reply; echo() and
/// hangUp() act on every command.
class LineFault
{
public:
    /// Some bytes on their way to the program: a pause before them, the bytes, perhaps the end of the line.
    struct Portion
    {
        int pauseMs = 0;
        QByteArray bytes;
        bool hangUpAfter = false;
    };

    LineFault() = default;

    static LineFault none() { return LineFault(); }
    /// The reply never comes.
    static LineFault silence();
    /// The reply comes this much later, and every later reply after it.
    static LineFault delayed(int milliseconds);
    /// The reply is held back and comes together with, and before, the reply to the next query without this
    /// fault.
    static LineFault late();
    /// Only the first bytes come, so that the line end is missing.
    static LineFault cutAfter(int bytes);
    /// The first bytes come, then a pause, then the rest.
    static LineFault splitAfter(int bytes, int pauseMs);
    /// The reply comes twice in one piece.
    static LineFault doubled();
    /// Random bytes 0x00..0xFF instead of the reply, then CR LF; the same for the same seed.
    static LineFault noise(int bytes, quint32 seed = 1);
    /// Zero bytes instead of the reply, then CR LF.
    static LineFault nuls(int bytes);
    /// This many bytes instead of the reply, and no line end.
    static LineFault flood(int bytes);
    /// The command comes back as it was sent, before the reply if it has one.
    static LineFault echo();
    /// The angle reply instead of a status reply, the K0 reply instead of an angle reply.
    static LineFault otherReply();
    /// The three digits of an angle or full status reply are replaced, for example by "999".
    static LineFault angle(const QByteArray &digits);
    /// "?>" instead of the reply.
    static LineFault error();
    /// These bytes, as they are, instead of the reply.
    static LineFault replacedBy(const QByteArray &bytes);
    /// The line goes away instead of the reply; with bytes of it sent, 200 ms after them, so that they can be
    /// read.
    static LineFault hangUp(int afterBytes = 0);

    bool isLate() const { return m_kind == Kind::Late; }
    /// Whether the fault has anything to do with a command whose reply (empty for none) this is.
    bool actsOn(const QByteArray &reply) const;
    /// What travels instead of `reply`. `other` is the reply that otherReply() puts in its place.
    QVector<Portion> portions(const QByteArray &command, const QByteArray &reply,
                              const QByteArray &other) const;

private:
    enum class Kind { None, Delay, Late, Cut, Split, Double, Echo, OtherReply, Angle, Replace, HangUp };

    LineFault(Kind kind, int count, int milliseconds, QByteArray bytes);

    Kind m_kind = Kind::None;
    int m_count = 0;
    int m_milliseconds = 0;
    QByteArray m_bytes;
};
