#pragma once

#include <QString>

#include <optional>

/// Where a box is served over the network: a host and a TCP port.
struct NetworkAddress
{
    /// Whether this port name is meant as a network address, however malformed.
    static bool isMeantBy(const QString &portName);
    /// Reads "tcp://host:port"; an IPv6 address stands in brackets. Nothing for any other text.
    static std::optional<NetworkAddress> parse(const QString &portName);

    QString host; // a name or an address, without brackets
    quint16 port = 0;
};
