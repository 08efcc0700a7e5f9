#pragma once

#include "simbox/linefault.h"
#include "simbox/simulatedbox.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QVector>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

/// A simulated box at the end of some line: its faults, its replies with their delays, and the record of what
/// passed. What carries the bytes is a subclass with a thread of its own, so that the program may block its
/// thread while it waits for them.
///
///     program --bytes--> thread of the subclass --receive()--> lines --> SimulatedBox
///     program <--deliver()-- thread of the subclass <--sendDue()-- portions, each when it is due
///
/// Every public member may be called from any thread, except that start(), restore(), hangUp() and the
/// destructor belong to the thread that owns the object.
class BoxLine
{
public:
    /// Real: the rotors turn with the wall clock. Manual: only advance() turns them. Faults always use the
    /// wall clock.
    enum class Clock { Real, Manual };

    /// One line heard from the program (with its line end, empty lines too) or one portion sent to it.
    struct Traffic
    {
        qint64 milliseconds = 0; // since the object was made
        bool fromProgram = false;
        QByteArray bytes;
    };

    static constexpr int Forever = -1;

    explicit BoxLine(SimulatedBox::Model model, Clock clock);
    virtual ~BoxLine() = default;
    BoxLine(const BoxLine &) = delete;
    BoxLine &operator=(const BoxLine &) = delete;

    /// Serves the box. True at once when it is served already; false when that is not possible, and
    /// errorText() tells why.
    virtual bool start() = 0;
    /// The line returns under the same name after a hang-up. Box, faults and record are as they were left.
    bool restore() { return start(); }
    /// The line goes away.
    virtual void hangUp() = 0;
    bool isUp() const;
    /// For a hang-up that a fault brings about: true as soon as the line is down and its name is gone.
    bool waitUntilDown(int timeoutMs = 5000) const;

    /// What to choose as port in the program.
    virtual QString portName() const = 0;
    /// What serves that name while the line is up, for example "/dev/pts/3".
    QString place() const;
    /// Why the last start() failed; empty after a good one.
    QString errorText() const;

    /// Runs the function on the box while the line's thread keeps off it. The function must not call this
    /// object.
    void withBox(const std::function<void(SimulatedBox &)> &function);
    /// Lets time pass for the rotors, whatever the clock.
    void advance(int milliseconds);

    /// The fault acts on the next `replies` commands that it concerns, then the line is good again. Replaces
    /// the former one.
    void setFault(const LineFault &fault, int replies = Forever);
    void clearFault() { setFault(LineFault::none()); }

    /// Command lines heard, as they came with their line ends, without the empty ones.
    QList<QByteArray> received() const;
    /// The same without line ends: "K0", "M123".
    QList<QByteArray> commands() const;
    /// Every byte heard.
    QByteArray receivedBytes() const;
    /// Both directions, in order.
    QVector<Traffic> traffic() const;
    void clearReceived();
    /// True as soon as at least `count` command lines were heard since the last clearReceived().
    bool waitForReceived(int count, int timeoutMs = 5000) const;

    /// Told about each piece of traffic, in the line's thread, after it was recorded. Set it before start().
    void setListener(const std::function<void(const Traffic &)> &listener) { m_listener = listener; }

protected:
    void setUp(const QString &place);
    /// Drops what was still to be said, too.
    void setDown();
    void setErrorText(const QString &text);

    // For the line's thread:
    /// Bytes from the program.
    void receive(const QByteArray &bytes);
    /// Delivers the portions that are due. False: the line is to hang up now.
    bool sendDue();
    /// Milliseconds until a portion is due, 0 for now; negative when none waits.
    int untilDue() const;
    /// A program has gone, and nothing of its dialogue may reach the next one.
    void forgetDialogue();
    /// Returns how many bytes were taken, 0 or less for none because the program does not read. It is called
    /// by sendDue() and must not call this object.
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
    void answer(const QByteArray &line, const QByteArray &reply);
    void send(const QVector<LineFault::Portion> &portions);
    bool writeReplies();
    void record(bool fromProgram, const QByteArray &bytes);
    void tellListener();
    void catchUp();

    const Clock m_clock;
    std::function<void(const Traffic &)> m_listener;

    mutable std::mutex m_mutex; // guards everything below
    mutable std::condition_variable m_changed;
    SimulatedBox m_box;
    QElapsedTimer m_time;
    qint64 m_boxTime = 0;

    bool m_up = false;
    QString m_place;
    QString m_errorText;

    LineFault m_fault;
    int m_faultCount = 0;
    QByteArray m_held;
    QByteArray m_partialLine;
    std::deque<Outgoing> m_outgoing;

    QVector<Traffic> m_traffic;
    QByteArray m_receivedBytes;
    int m_commandCount = 0;
    QVector<Traffic> m_untold;
};
