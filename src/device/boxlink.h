#pragma once

#include "device/protocol.h"
#include "line/line.h"

#include <QObject>

#include <memory>
#include <optional>

class ReplyReader;

/// What is said over the line to a box: commands go out, queries wait for their replies, all of it is logged.
///
/// There is a line from open() until close(), whether or not it is open. A status query runs the event loop
/// in each of its rounds, so anything may happen to the line inside it; the query notices and ends.
class BoxLink : public QObject
{
    Q_OBJECT

public:
    BoxLink();
    ~BoxLink() override;

    /// What makes the lines from the next open() on.
    void setLineFactory(LineFactory factory) { m_factory = std::move(factory); }

    /// Only where there is no line yet. Returns whether the line is open now.
    bool open(const QString &portName);
    void close();
    bool hasLine() const { return m_line != nullptr; }
    bool isOpen() const { return m_line && m_line->isOpen(); }
    bool takesOrders() const { return m_line && m_line->takesOrders(); }
    /// As Line::opening(), 0 where there is no line.
    int opening() const { return m_line ? m_line->opening() : 0; }
    LineState state() const { return m_line ? m_line->state() : LineState(); }

    /// Called before each poll, so that the line can look after itself.
    void tend();
    /// Called after a poll that was not answered. What was answered is noted without it.
    void noteSilence();
    /// Lets time pass, as the box needs it. There is none to give without a line.
    void pause(int milliseconds);

    /// Writes a composed command and waits until it has left, at most a second. False when it did not.
    bool send(const QByteArray &command);
    /// Logs the text in a frame, then sends.
    bool send(const char *logText, const QByteArray &command);

    /// Asks for a status. Any reply but a good one means that there is none.
    Protocol::StatusReply readStatus(const Protocol::StatusQuery &query);
    /// Asks an open line for the azimuth, in degrees. Runs no event loop.
    std::optional<double> readAngle();

    /// Logs a received line byte by byte.
    static void dump(const QString &command, const QByteArray &line);

signals:
    /// As the line's signals of these names.
    void opened();
    void lost();
    void back();
    void stateChanged();

private:
    void sendQuery(const QByteArray &query);
    /// Waits one round for a line and dumps it to the log as a reply to `command`; empty when there is none.
    QByteArray readLine(const char *command);
    /// False ends the query with nothing to decode.
    bool collect(ReplyReader &reader, const Protocol::StatusQuery &query);

    LineFactory m_factory;
    std::unique_ptr<Line> m_line;
};
