// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <vector>

/// Distinguishes a new target from one that a tracker only repeats, which it does every few seconds. A
/// repetition must not undo what the operator did since, above all STOP.
///
/// Each client has its own last target. A client without one may be a tracker that has connected again, so
/// its first target is compared with those of all clients, also of those that have left.
class RepeatedTargets
{
public:
    static constexpr qint64 usualGapMs = 15000;

    /// After `longestGapMs` without a repetition the same target counts as a new one.
    explicit RepeatedTargets(qint64 longestGapMs = usualGapMs) : m_longestGapMs(longestGapMs) {}

    /// Whether this client repeats a target at `nowMs`, milliseconds of any clock. A repetition is noted.
    bool isRepeated(const void *client, int degrees, qint64 nowMs);
    /// The client's target was carried out.
    void note(const void *client, int degrees, qint64 nowMs);
    /// The client gave another order than a target: neither its own target nor those of clients that have
    /// left count any more.
    void forget(const void *client);
    void clientLeft(const void *client);

private:
    struct Target
    {
        const void *client; // null once it has left
        int degrees;
        qint64 lastMs;
    };
    qint64 m_longestGapMs;
    std::vector<Target> m_targets;
};
