// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>

/// Writes to the standard output in a thread of its own, so that a pipe that nobody reads, or a console in
/// which the user marks text, blocks only that thread:
///
///     write() ──>  waiting bytes, at most `capacity`  ──thread──>  standard output
///
/// Lines that do not fit, or that the standard output refuses, are dropped.
class Echo : public QThread
{
public:
    static constexpr int capacity = 256 * 1024;

    /// Any thread may call. `line` ends in LF.
    void write(const QByteArray &line);
    /// Ends the thread when all has been written. False when the reader took too long; the thread runs on
    /// then, and this object must not be deleted.
    bool finish();

protected:
    void run() override;

private:
    QMutex m_mutex;
    QWaitCondition m_changed;
    QByteArray m_waiting;
    bool m_isEnding = false;
};
