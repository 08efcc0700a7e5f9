#pragma once

#include "rotctld/repeatedtarget.h"
#include "rotctld/rotctldprotocol.h"

#include <QElapsedTimer>
#include <QObject>

class QTcpSocket;
class RotctldRotator;

/// One connection of a program on the network. Nothing is read ahead of a long line, and who does not read
/// his answers is disconnected, so that no client takes more than a few kilobytes.
class RotctldClient : public QObject
{
    Q_OBJECT

public:
    static constexpr int longestLine = 1024;
    static constexpr int mostUnreadBytes = 64 * 1024;

    enum class Served { Nothing, Line, Order };

    /// Takes `socket`, which is connected, over.
    RotctldClient(QTcpSocket *socket, RotctldRotator &rotator, QObject *parent);

    /// Carries out the next line, if a whole one has come. An order may run the event loop.
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
    void send(const QByteArray &answer);
    void log(const QByteArray &what) const;

    QTcpSocket *m_socket;
    RotctldRotator &m_rotator;
    QByteArray m_name;
    RepeatedTarget m_target;
    QElapsedTimer m_clock;
    /// What is being received is longer than any command, and is left out up to its end.
    bool m_isTooLong = false;
};
