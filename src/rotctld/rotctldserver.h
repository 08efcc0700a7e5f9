#pragma once

#include "rotctld/repeatedtargets.h"

#include <QTcpServer>
#include <QTimer>

#include <memory>

class RotctldClient;
class RotctldRotator;

/// Lets logbooks and trackers on the network see and turn the rotator, as Hamlib's rotctld does.
///
/// Clients are served in turns, a line each, between which the window has its events. After an order there is
/// a pause, so that no client keeps the serial line busy.
class RotctldServer : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostClients = 8;
    static constexpr quint16 usualPort = 4533;

    /// A client that gives the same target again within `repeatGapMs` repeats it, which is no order.
    explicit RotctldServer(std::unique_ptr<RotctldRotator> rotator, QObject *parent = nullptr,
                           qint64 repeatGapMs = RepeatedTargets::usualGapMs);
    ~RotctldServer() override;

    /// Listens at "[ADDRESS:]PORT", without an address for this machine alone; port 0 takes any. What came of
    /// it is told in the log.
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
