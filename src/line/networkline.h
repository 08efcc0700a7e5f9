// SPDX-License-Identifier: MIT
#pragma once

#include "line/iodeviceline.h"

#include <QTcpSocket>
#include <QTimer>

/// A line through a serial-to-network server, which is found at "tcp://host:port". Raw bytes.
///
///     Closed --open()--> Connecting --connected--> Open --went away--> Waiting
///                         ^    \------failed------------------------->    |
///                         '---- after 1.5 s, 3 s ... 15 s ----------------'
///
/// Nothing here waits for a name or a connection. The pauses grow until the box answers; a server that takes
/// a connection and closes it is no better than one that refuses.
///
/// TCP keeps what was sent in an outage and delivers it minutes later. So orders are refused from the first
/// poll on that brought no byte at all, and on a new connection, until the box answers. After three polls
/// without an answer the connection is reset, which takes back what has not left yet. A new connection that
/// stays silent too gets twice as many polls before the next reset, so that a box that is switched off is
/// left in peace; replies that come after three polls are old ones and are not read.
class NetworkLine : public IoDeviceLine
{
    Q_OBJECT

public:
    explicit NetworkLine(const QString &portName);
    ~NetworkLine() override;

    bool open() override;
    void close() override;
    bool isOpen() const override { return m_phase == Phase::Open && isConnected(); }
    bool takesOrders() const override { return isOpen() && m_answered && !m_silent; }
    bool write(const QByteArray &text, int waitMs) override;
    QByteArray readLine(int waitMs) override;
    void noteAnswer(bool answered) override;

protected:
    QIODevice &device() override { return m_socket; }
    const QIODevice &device() const override { return m_socket; }

private:
    enum class Phase { Closed, Connecting, Open, Waiting };

    bool isConnected() const { return m_socket.state() == QAbstractSocket::ConnectedState; }
    /// Whether what comes now are replies to polls that were given up.
    bool isOverdue() const;
    void connectToServer();
    void onConnected();
    void onError(QAbstractSocket::SocketError error);
    void onDisconnected();
    void onTimeout();
    void reset();
    void tryLater();

    Phase m_phase = Phase::Closed;
    QTcpSocket m_socket;
    /// Ends an attempt, or the pause before the next one.
    QTimer m_timer;
    int m_pauseMs = 0;
    bool m_wasOpen = false;

    // Of the present connection:
    bool m_answered = false;
    /// Nothing came since the poll before last.
    bool m_silent = false;
    bool m_heard = false;
    int m_unansweredPolls = 0;
    /// Replies to earlier queries may still come, also those that the server holds from the connection
    /// before.
    bool m_isBehind = false;

    /// So many polls without an answer reset the connection.
    int m_patience = 0;
};
