#pragma once

#include "rotctld/rotctldprotocol.h"

#include <QObject>

class QTcpSocket;
class RepeatedTargets;
class RotctldRotator;

/// One connection of a program on the network. A client takes at most a few kilobytes: a line that is too
/// long is not kept, and a client that does not read its answers is disconnected.
class RotctldClient : public QObject
{
    Q_OBJECT

public:
    static constexpr int longestLine = 1024;
    static constexpr int mostUnreadBytes = 64 * 1024;

    enum class Served { Nothing, Line, Order };

    /// Takes `socket`, which is connected, over.
    RotctldClient(QTcpSocket *socket, RotctldRotator &rotator, RepeatedTargets &targets, QObject *parent);

    /// Carries out the next line, if a whole one has come.
    Served serveLine();
    bool hasLine() const;
    /// The connection has ended; lines that came before may wait.
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
    /// What is being received is longer than any command, and is left out up to its end.
    bool m_isTooLong = false;
};
