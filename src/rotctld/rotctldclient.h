// SPDX-License-Identifier: MIT
#pragma once

#include "rotctld/rotctldprotocol.h"

#include <QObject>

class QTcpSocket;
class RepeatedTargets;
class RotctldRotator;

/// One connection of a program on the network. Its memory is limited: a line that is too long is not kept,
/// and a client that leaves more than mostUnreadBytes of answers unread is disconnected.
class RotctldClient : public QObject
{
    Q_OBJECT

public:
    static constexpr int longestLine = 1024;
    static constexpr int mostUnreadBytes = 64 * 1024;

    enum class Served { Nothing, Line, Order };

    /// Takes over `socket`, which is connected.
    RotctldClient(QTcpSocket *socket, RotctldRotator &rotator, RepeatedTargets &targets, QObject *parent);

    /// Carries out the next line, if a whole one has come.
    Served serveLine();
    bool hasLine() const;
    /// Whether the connection has ended. Lines that came before its end may still have to be carried out.
    bool hasGone() const;

signals:
    void onLine();
    void onGone();

private:
    Served carryOut(const Rotctld::Request &request);
    Rotctld::Code order(const Rotctld::Request &request);
    void turnTo(int degrees);
    void turnOrStop(Rotctld::Request::Kind kind);
    void send(const QByteArray &answer);
    void log(const QByteArray &what) const;

    QTcpSocket *m_socket;
    RotctldRotator &m_rotator;
    QByteArray m_name;
    RepeatedTargets &m_targets;
    /// The line that is being received is longer than any command and is ignored up to its end.
    bool m_isTooLong = false;
};
