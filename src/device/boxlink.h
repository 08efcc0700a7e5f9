// SPDX-License-Identifier: MIT
#pragma once

#include "device/protocol.h"
#include "line/line.h"

#include <QObject>

#include <memory>
#include <optional>

class ReplyReader;

/// Sends commands and queries over the line to a box, waits for the replies, and logs everything.
///
/// It has a Line from open() to close(), also while the port is not open. A status query runs the event loop
/// after each of its rounds, and a slot may close or replace the line there. The query then ends without a
/// reply.
class BoxLink : public QObject
{
    Q_OBJECT

public:
    BoxLink();
    ~BoxLink() override;

    /// Sets the function that makes the line at the next open().
    void setLineFactory(LineFactory factory) { m_factory = std::move(factory); }

    /// Makes the line and opens it. To be called only without a line. Returns whether it is open now.
    bool open(const QString &portName);
    void close();
    bool hasLine() const { return m_line != nullptr; }
    bool isOpen() const { return m_line && m_line->isOpen(); }
    bool takesOrders() const { return m_line && m_line->takesOrders(); }
    /// As Line::opening(); 0 without a line.
    int opening() const { return m_line ? m_line->opening() : 0; }
    LineState state() const { return m_line ? m_line->state() : LineState(); }

    /// To be called before each poll; see Line::tend().
    void tend();
    /// To be called after a poll without an answer. The queries themselves note their answers.
    void noteSilence();
    /// Waits, because the box needs time. Returns at once without a line.
    void pause(int milliseconds);

    /// Writes a composed command and waits at most a second until it has left. False when it did not leave,
    /// or when the line takes no orders.
    bool send(const QByteArray &command);
    /// Logs the text between two separator lines, then sends the command.
    bool send(const char *logText, const QByteArray &command);

    /// Asks for a status. There is one only when the kind of the result is Good.
    Protocol::StatusReply readStatus(const Protocol::StatusQuery &query);
    /// Asks an open line for the azimuth, in degrees. Runs no event loop.
    std::optional<double> readAngle();

    /// Logs a received line byte by byte.
    static void dump(const QString &command, const QByteArray &line);

signals:
    /// Emitted with the line's signals of the same names.
    void opened();
    void lost();
    void back();
    void stateChanged();

private:
    void sendQuery(const QByteArray &query);
    /// Waits one round for a line and dumps it to the log as a reply to `command`; empty when there is none.
    QByteArray readLine(const char *command);
    /// Collects the reply in rounds. False when there is nothing to decode: the box refused the query, or the
    /// line was closed or opened meanwhile.
    bool collect(ReplyReader &reader, const Protocol::StatusQuery &query);

    LineFactory m_factory;
    std::unique_ptr<Line> m_line;
};
