// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>
#include <QString>

#include <optional>

/// Where a box is served over the network: a host and a TCP port.
struct NetworkAddress
{
    /// Whether this port name is meant as a network address, however malformed.
    static bool isMeantBy(const QString &portName);
    /// Reads "tcp://host:port"; an IPv6 address is put in brackets. Nothing for any other text.
    static std::optional<NetworkAddress> parse(const QString &portName);

    QString host; // a name or an address, without brackets
    quint16 port = 0;
};

/// Where this machine may listen: one of its addresses and a TCP port.
struct ListenAddress
{
    /// Reads "7000", "192.168.1.5:7000", "localhost:7000" or "[::1]:7000". Without an address only programs
    /// on this machine may connect. Nothing for any other text.
    static std::optional<ListenAddress> parse(const QString &text);

    QHostAddress address;
    quint16 port = 0; // 0 takes a free one
};
