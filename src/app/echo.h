#pragma once

#include <QByteArray>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>

/// The standard output, for a program that must not wait for whoever reads it. A thread writes what is handed
/// in, so that a pipe that nobody reads, or a console whose user marks a text, stops that thread alone:
///
///     write() ──>  waiting bytes, at most `capacity`  ──thread──>  standard output
///
/// A line for which there is no room, or that the standard output refuses, is dropped.
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
