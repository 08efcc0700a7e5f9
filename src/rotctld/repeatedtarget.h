#pragma once

#include <QtGlobal>

#include <optional>

/// Tells a new target from one that a tracker merely repeats, which it does every few seconds. After a longer
/// silence the same target is meant as a new one.
class RepeatedTarget
{
public:
    static constexpr qint64 longestGapMs = 15000;

    /// Notes a target that came at `nowMs`, a time of any origin; whether it is the one before once more.
    bool isRepeated(int degrees, qint64 nowMs)
    {
        const bool isSame = m_degrees == degrees && nowMs - m_lastMs <= longestGapMs;
        m_degrees = degrees;
        m_lastMs = nowMs;
        return isSame;
    }
    /// After another order.
    void forget() { m_degrees.reset(); }

private:
    std::optional<int> m_degrees;
    qint64 m_lastMs = 0;
};
