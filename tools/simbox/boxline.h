// SPDX-License-Identifier: MIT
#pragma once

#include "simbox/faultybox.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QVector>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

/// A simulated box at the end of a line: the box, the faults of the line, the replies with their delays, and
/// a record of all traffic. A subclass carries the bytes in a thread of its own, because the program under
/// test may block its own thread while it waits for a reply.
///
///     program --bytes--> thread of the subclass --receive()--> lines --> SimulatedBox
///     program <--deliver()-- thread of the subclass <--sendDue()-- portions, each when it is due
///
/// Every public member may be called from any thread, except that start(), restore(), hangUp() and the
/// destructor belong to the thread that owns the object.
class BoxLine
{
public:
    /// Real: the rotors turn in real time. Manual: only advance() turns them. The delays of faults are always
    /// in real time.
    enum class Clock { Real, Manual };

    /// One line received from the program (with its line end, empty lines too) or one portion sent to it.
    struct Traffic
    {
        qint64 milliseconds = 0; // since the object was made
        bool fromProgram = false;
        QByteArray bytes;
    };

    explicit BoxLine(SimulatedBox::Model model, Clock clock);
    virtual ~BoxLine() = default;
    BoxLine(const BoxLine &) = delete;
    BoxLine &operator=(const BoxLine &) = delete;

    /// Makes the box available under portName(). Returns true when it is, also when it was before. When it is
    /// not possible it returns false, and errorText() has the reason.
    virtual bool start() = 0;
    /// Opens the line under the same name again after a hang-up. Box, faults and record have not changed.
    bool restore() { return start(); }
    /// Ends the line, as when an adapter is unplugged or a server ends.
    virtual void hangUp() = 0;
    bool isUp() const;
    /// Waits for a hang-up that a fault causes: true as soon as the line is down and its name is gone, false
    /// after `timeoutMs`.
    bool waitUntilDown(int timeoutMs = 5000) const;

    /// The name to enter as serial port in the program.
    virtual QString portName() const = 0;
    /// What the name leads to while the line is up, for example "/dev/pts/3".
    QString place() const;
    /// Why the last start() failed; empty after a good one.
    QString errorText() const;

    /// Calls the function with the box. The line's thread does not use the box meanwhile. The function must
    /// not call this object.
    void withBox(const std::function<void(SimulatedBox &)> &function);
    /// Lets the rotors turn for so long, with either clock.
    void advance(int milliseconds);

    /// As FaultyBox::setFault().
    void setFault(const LineFault &fault, int replies = FaultyBox::Forever);
    void clearFault() { setFault(LineFault::none()); }

    /// The command lines received, with their line ends, without empty lines.
    QList<QByteArray> received() const;
    /// The same without line ends: "K0", "M123".
    QList<QByteArray> commands() const;
    /// All bytes received.
    QByteArray receivedBytes() const;
    /// Both directions, in order.
    QVector<Traffic> traffic() const;
    void clearReceived();
    /// Waits until at least `count` command lines were received since the last clearReceived(). False after
    /// `timeoutMs`.
    bool waitForReceived(int count, int timeoutMs = 5000) const;

    /// Sets the function that is called with each piece of traffic after it was recorded, in the line's
    /// thread. To be set before start().
    void setListener(const std::function<void(const Traffic &)> &listener) { m_listener = listener; }

protected:
    void setUp(const QString &place);
    /// Also drops the replies that were not sent yet.
    void setDown();
    void setErrorText(const QString &text);

    // For the line's thread:
    /// Bytes from the program.
    void receive(const QByteArray &bytes);
    /// Delivers the portions that are due. Returns false when the line is to hang up now.
    bool sendDue();
    /// Milliseconds until the next portion is due, 0 when one is due now, negative when there is none.
    int untilDue() const;
    /// To be called when a program has disconnected: drops its partial line and the replies to it, which must
    /// not reach the next program.
    void forgetDialogue();
    /// Writes bytes towards the program and returns how many were taken; 0 or less when none were, because
    /// the program does not read. It is called by sendDue() and must not call this object.
    virtual qint64 deliver(const char *bytes, qint64 size) = 0;

private:
    struct Outgoing
    {
        qint64 due = 0;
        QByteArray bytes;
        int written = 0;
        bool hangUpAfter = false;
    };

    void handleLine(const QByteArray &line);
    void send(const QVector<LineFault::Portion> &portions);
    bool writeReplies();
    void record(bool fromProgram, const QByteArray &bytes);
    void tellListener();
    void catchUp();

    const Clock m_clock;
    std::function<void(const Traffic &)> m_listener;

    mutable std::mutex m_mutex; // guards everything below
    mutable std::condition_variable m_changed;
    FaultyBox m_box;
    QElapsedTimer m_time;
    qint64 m_boxTime = 0;

    bool m_up = false;
    QString m_place;
    QString m_errorText;

    std::deque<Outgoing> m_outgoing;

    QVector<Traffic> m_traffic;
    QByteArray m_receivedBytes;
    int m_commandCount = 0;
    QVector<Traffic> m_untold;
};
