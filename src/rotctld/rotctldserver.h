// SPDX-License-Identifier: MIT
#pragma once

#include "rotctld/repeatedtargets.h"

#include <QTcpServer>
#include <QTimer>

#include <memory>

class RotctldClient;
class RotctldRotator;

/// Lets logbooks and trackers on the network read the azimuth and turn the rotator, as Hamlib's rotctld does.
///
/// In each turn one line of each client is carried out. The event loop runs between two turns, so the window
/// goes on working. After an order there is a pause, so that no client keeps the serial line busy.
class RotctldServer : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostClients = 8;
    static constexpr quint16 usualPort = 4533;

    /// The same target from a client within `repeatGapMs` is a repetition, which is not carried out again.
    explicit RotctldServer(std::unique_ptr<RotctldRotator> rotator, QObject *parent = nullptr,
                           qint64 repeatGapMs = RepeatedTargets::usualGapMs);
    ~RotctldServer() override;

    /// Listens at "[ADDRESS:]PORT"; without an address only this computer can connect. Port 0 takes any free
    /// port. Returns whether it listens now, and logs the result.
    bool listen(const QString &place);
    quint16 port() const { return m_server.serverPort(); }

private:
    void accept();
    void serve();
    void removeGone();

    std::unique_ptr<RotctldRotator> m_rotator;
    RepeatedTargets m_targets;
    QTcpServer m_server;
    QTimer m_next;
    QList<RotctldClient *> m_clients;
};
