// SPDX-License-Identifier: MIT
#pragma once

#include "line/linestate.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

/// A line of bytes to a box, through a serial port or over the network.
///
///     open() --> open --error, device gone--> lost --tried again by itself--> open again
///       \--> still connecting (network) --> open for the first time
///
/// The users of a line do not see whether it is a serial port or a socket. No operation runs an event loop.
/// The signals are emitted from the event loop, never from inside an operation, so a slot may close and
/// delete the line. Text has LF line ends here and CR LF line ends on the wire.
class Line : public QObject
{
    Q_OBJECT

public:
    /// More waiting bytes than this are noise: no reply has more than about ten bytes.
    static constexpr int floodBytes = 4096;

    explicit Line(QString portName);
    ~Line() override;

    QString portName() const { return m_portName; }

    /// Opens the line and logs the result. Returns whether it is open now. A line that is still connecting
    /// returns false and emits opened() later. For a line that cannot be opened, state() has the reason.
    virtual bool open() = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    /// Whether an order would reach the box now. False also for an open network line while the box does not
    /// answer, because TCP would deliver the order minutes later. Queries may be sent whenever the line is
    /// open.
    virtual bool takesOrders() const { return isOpen(); }

    /// Sends `text`, which has LF line ends, and waits at most `waitMs` until it has left. False when the
    /// line is not open or the text did not leave in time; the line is not lost because of that.
    virtual bool write(const QByteArray &text, int waitMs) = 0;
    /// One whole line of text with its LF. Empty when none has come after `waitMs`, when the line is not
    /// open, and when more than floodBytes are waiting, which are thrown away.
    virtual QByteArray readLine(int waitMs) = 0;
    virtual qint64 bytesAvailable() const = 0;
    /// Throws away what has been received, and logs it when there was any.
    virtual void discard() = 0;
    /// Waits, because the box needs time between two commands.
    virtual void pause(int milliseconds);

    /// To be called before each poll: notices that the device is gone, and tries to open a lost line again. A
    /// line may also do this with a timer of its own.
    virtual void tend() {}
    /// To be called with true after each query that was answered, with false after each poll without answer.
    virtual void noteAnswer(bool answered);

    /// The present state of the line, for the operator.
    LineState state() const;
    /// The number of the present opening, 0 while the line is not open. No two openings have the same number,
    /// also not of different lines, so a reader notices by it that the line was closed and opened meanwhile.
    int opening() const { return isOpen() ? m_opening : 0; }

signals:
    /// The line is open for the first time, after open() returned false because it was still connecting.
    void opened();
    /// The line went away and is tried again from now on.
    void lost();
    /// The line is open again after lost().
    void back();
    /// The state has changed by itself, for example because an attempt to connect failed. Not emitted for
    /// changes that follow from an answer or from a call of this class.
    void stateChanged(const LineState &state);

protected:
    /// To be called at each opening: takes a new number and sets the state to Listening. The time without an
    /// answer is counted from now on, or from before this opening when `silenceGoesOn`.
    void begin(bool silenceGoesOn = false);
    /// Sets the present state and fills in the port's name. Emits nothing.
    void setState(LineState state);
    void setState(LineState::Kind kind);
    LineState::Kind kind() const { return m_state.kind; }

    /// Emits the signal from the event loop.
    void emitLater(void (Line::*signal)());
    /// Emits stateChanged() from the event loop, with the state at that time.
    void emitStateLater();

private:
    const QString m_portName;
    LineState m_state;
    int m_opening = 0;
    /// Runs since the last answer, or since the line was opened.
    QElapsedTimer m_sinceAnswer;
};

/// Makes the line to a port, without opening it.
using LineFactory = std::function<std::unique_ptr<Line>(const QString &portName)>;
