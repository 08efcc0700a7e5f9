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
#include <thread>

/// Serves a simulated box on a pseudo-terminal behind a stable symbolic link.
///
///     program --opens--> link --> slave side | master side <-- thread of this object --> SimulatedBox
///
/// The thread lives while the line is up, so the program may block its own thread in serial I/O. The slave
/// side is raw and stays open here as well: otherwise a read on the master fails whenever the program has the
/// port closed.
///
/// Every member may be called from any thread, except that start(), restore(), hangUp() and the destructor
/// belong to the thread that owns the object. Linux only.
class PtyLine
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

    explicit PtyLine(QString linkPath, SimulatedBox::Model model = SimulatedBox::Model::StackSwitch,
                     Clock clock = Clock::Real);
    /// Hangs up.
    ~PtyLine();
    PtyLine(const PtyLine &) = delete;
    PtyLine &operator=(const PtyLine &) = delete;

    /// Opens the pseudo-terminal, puts the link there and serves it. True at once when it is up already. A
    /// link of the same name is replaced; anything else of that name is refused: the answer is false and
    /// errorText() tells why.
    bool start();
    /// The line returns under the same name after a hang-up. Box, faults and record are as they were left.
    bool restore() { return start(); }
    /// The line goes away, as when an adapter is pulled out: pseudo-terminal closed, link removed.
    void hangUp();
    bool isUp() const;
    /// For a hang-up that a fault brings about: true as soon as the line is down and its link gone.
    bool waitUntilDown(int timeoutMs = 5000) const;

    QString linkPath() const { return m_linkPath; }
    /// The pseudo-terminal behind the link while the line is up, for example "/dev/pts/3".
    QString slavePath() const;
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

private:
    struct Outgoing
    {
        qint64 due = 0;
        QByteArray bytes;
        int written = 0;
        bool hangUpAfter = false;
    };

    bool openTerminal();
    bool placeLink();
    void removeLink();
    void closeTerminal();
    void joinThread();

    void serve();
    int pollTimeout() const;
    void noticeClosing();
    void readCommands();
    void writeReplies();
    void handleLine(const QByteArray &line);
    void answer(const QByteArray &line, const QByteArray &reply);
    void send(const QVector<LineFault::Portion> &portions);
    void record(bool fromProgram, const QByteArray &bytes);
    void tellListener();
    void catchUp();

    const QString m_linkPath;
    const Clock m_clock;
    std::function<void(const Traffic &)> m_listener;
    std::thread m_thread;

    mutable std::mutex m_mutex; // guards everything below
    mutable std::condition_variable m_changed;
    SimulatedBox m_box;
    QElapsedTimer m_time;
    qint64 m_boxTime = 0;

    int m_master = -1;
    int m_slave = -1;
    int m_wake = -1;
    int m_watch = -1;
    bool m_up = false;
    bool m_quit = false;
    QString m_slavePath;
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
