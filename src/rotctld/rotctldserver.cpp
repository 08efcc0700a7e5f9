// SPDX-License-Identifier: MIT
#include "rotctld/rotctldserver.h"

#include "line/networkaddress.h"
#include "rotctld/rotctldclient.h"
#include "rotctld/rotctldrotator.h"

#include <QHostAddress>
#include <QTcpSocket>

#include <algorithm>

namespace {

constexpr int pauseAfterOrderMs = 20;

} // namespace

RotctldServer::RotctldServer(std::unique_ptr<RotctldRotator> rotator, QObject *parent, qint64 repeatGapMs)
    : QObject(parent), m_rotator(std::move(rotator)), m_targets(repeatGapMs)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &RotctldServer::serve);
    connect(&m_server, &QTcpServer::newConnection, this, &RotctldServer::accept);
}

RotctldServer::~RotctldServer() = default;

bool RotctldServer::listen(const QString &place)
{
    const auto wanted = ListenAddress::parse(place);
    if (!wanted) {
        qWarning("RotctldServer - \"%s\" is no [ADDRESS:]PORT, nobody on the network can turn the rotator",
                 qUtf8Printable(place));
        return false;
    }
    if (!m_server.listen(wanted->address, wanted->port)) {
        qWarning("RotctldServer - nobody on the network can turn the rotator, %s cannot be used: %s",
                 qUtf8Printable(place), qUtf8Printable(m_server.errorString()));
        return false;
    }
    qInfo("RotctldServer - listening on %s, port %d", qUtf8Printable(wanted->address.toString()), port());
    return true;
}

void RotctldServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (m_clients.size() >= mostClients) {
            qWarning("RotctldServer - %s is not served, there are %d others",
                     qUtf8Printable(socket->peerAddress().toString()), mostClients);
            socket->abort();
            socket->deleteLater();
            continue;
        }
        auto *client = new RotctldClient(socket, *m_rotator, m_targets, this);
        m_clients << client;
        const auto serveSoon = [this] {
            if (!m_next.isActive())
                m_next.start(0);
        };
        connect(client, &RotctldClient::onLine, this, serveSoon);
        connect(client, &RotctldClient::onGone, this, serveSoon);
    }
}

void RotctldServer::serve()
{
    bool hasOrdered = false;
    for (RotctldClient *client : qAsConst(m_clients))
        hasOrdered |= client->serveLine() == RotctldClient::Served::Order;
    removeGone();
    const auto hasLine = [](const RotctldClient *client) { return client->hasLine(); };
    if (hasOrdered || std::any_of(m_clients.cbegin(), m_clients.cend(), hasLine))
        m_next.start(hasOrdered ? pauseAfterOrderMs : 0);
}

/// Those whose last lines have been served.
void RotctldServer::removeGone()
{
    const QList<RotctldClient *> clients = m_clients;
    for (RotctldClient *client : clients) {
        if (!client->hasGone() || client->hasLine())
            continue;
        m_clients.removeOne(client);
        m_targets.clientLeft(client);
        client->deleteLater();
    }
}
