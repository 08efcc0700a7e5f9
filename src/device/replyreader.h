// SPDX-License-Identifier: MIT
#pragma once

#include "device/protocol.h"

/// Collects the lines of one reply, round by round, until there is enough to decode. A plain value that knows
/// no line: program, tests and fuzz target feed it.
class ReplyReader
{
public:
    enum class Progress {
        Pending,  ///< the next round may bring more
        Refused,  ///< the box does not take the query
        Complete, ///< enough to decode
        CutShort  ///< the rounds have run out
    };

    static ReplyReader forStatus(const Protocol::StatusQuery &query);
    static ReplyReader forAngle();

    /// Takes what one round brought: a line with its LF, or nothing.
    Progress feed(const QByteArray &line);
    /// All lines so far, with their LFs.
    const QByteArray &bytes() const { return m_bytes; }

private:
    using Judge = Progress (*)(const QByteArray &bytes);
    ReplyReader(int rounds, Judge judge) : m_roundsLeft(rounds), m_judge(judge) {}

    int m_roundsLeft;
    Judge m_judge;
    QByteArray m_bytes;
};
