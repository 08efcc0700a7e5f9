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
/// Whoever uses a line knows neither a port nor a socket. No operation runs an event loop, and the signals
/// are delivered from the event loop, never from inside an operation, so a listener may close and delete the
/// line. Text has LF line ends here and CR LF line ends on the wire.
class Line : public QObject
{
    Q_OBJECT

public:
    /// More received bytes than this are noise: no reply has more than a dozen.
    static constexpr int floodBytes = 4096;

    explicit Line(QString portName);
    ~Line() override;

    QString portName() const { return m_portName; }

    /// Opens the line and logs how that went. Returns whether it is open now. A line that is only connecting
    /// answers false and emits opened() later. One that cannot be opened says why in state().
    virtual bool open() = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    /// Whether an order would arrive now. It may not although the line is open: TCP delivers what was sent in
    /// an outage minutes later. Queries are allowed whenever the line is open.
    virtual bool takesOrders() const { return isOpen(); }

    /// Sends `text`, which has LF line ends, and waits until it has left, at most `waitMs`. False when the
    /// line is not open or the text did not leave in time, which is no loss of the line by itself.
    virtual bool write(const QByteArray &text, int waitMs) = 0;
    /// One whole line with its LF; empty when there is none after `waitMs`, when the line is not open, and
    /// when there is more than a reply could be, which is thrown away.
    virtual QByteArray readLine(int waitMs) = 0;
    virtual qint64 bytesAvailable() const = 0;
    /// Throws away what has been received, and logs it when there was any.
    virtual void discard() = 0;
    /// Lets time pass, as the box needs it.
    virtual void pause(int milliseconds);

    /// Called before each poll: notices a vanished device, tries a lost line again. A line may also do so on
    /// a timer of its own.
    virtual void tend() {}
    /// Called with true after each query that was answered, with false after each poll that was not.
    virtual void noteAnswer(bool answered);

    /// What an operator may want to know about the line, as of now.
    LineState state() const;
    /// A number that no other opening of any line has, 0 while the line is not open. A reader compares it to
    /// notice that its own line is gone.
    int opening() const { return isOpen() ? m_opening : 0; }

signals:
    /// The line is open for the first time, after open() had to answer false.
    void opened();
    /// The line went away and is tried again from now on.
    void lost();
    /// The line is open again after lost().
    void back();
    /// For changes that no answer and no call of the user brought about.
    void stateChanged(const LineState &state);

protected:
    /// To be called at each opening: gives it its number and starts to listen for an answer. Silence counts
    /// from now on, unless it goes on through this opening.
    void begin(bool silenceGoesOn = false);
    /// The line is in this state now; the port's name is filled in. Does not emit anything.
    void setState(LineState state);
    void setState(LineState::Kind kind);
    LineState::Kind kind() const { return m_state.kind; }

    /// Emits the signal from the event loop.
    void emitLater(void (Line::*signal)());
    /// Emits stateChanged() with the state of then from the event loop.
    void emitStateLater();

private:
    const QString m_portName;
    LineState m_state;
    int m_opening = 0;
    /// Runs since the last answer, or since the line was opened.
    QElapsedTimer m_sinceAnswer;
};

/// Makes the line to a port, not opened yet.
using LineFactory = std::function<std::unique_ptr<Line>(const QString &portName)>;
