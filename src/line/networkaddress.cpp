// SPDX-License-Identifier: MIT
#include "line/networkaddress.h"

#include <QRegularExpression>

namespace {

constexpr uint highestPort = 65535;

bool isIPv6(const QString &text)
{
    return QHostAddress(text).protocol() == QAbstractSocket::IPv6Protocol;
}

/// Reads "[host:]port"; the host is empty where there is none.
std::optional<NetworkAddress> hostAndPort(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(\A(?:(?:\[(?<ipv6>[^\[\]]+)\]|(?<host>[^\s\[\]:/@?#]+)):)?(?<port>[0-9]{1,5})\z)"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QString ipv6 = match.captured(QStringLiteral("ipv6"));
    const uint port = match.captured(QStringLiteral("port")).toUInt();
    if (!match.hasMatch() || port > highestPort || (!ipv6.isEmpty() && !isIPv6(ipv6)))
        return std::nullopt;
    return NetworkAddress{ipv6.isEmpty() ? match.captured(QStringLiteral("host")) : ipv6, quint16(port)};
}

} // namespace

bool NetworkAddress::isMeantBy(const QString &portName)
{
    return portName.trimmed().startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive);
}

std::optional<NetworkAddress> NetworkAddress::parse(const QString &portName)
{
    const QString scheme = QStringLiteral("tcp://");
    QString text = portName.trimmed();
    if (!text.startsWith(scheme, Qt::CaseInsensitive))
        return std::nullopt;
    if (text.endsWith(QLatin1Char('/')))
        text.chop(1);
    const std::optional<NetworkAddress> address = hostAndPort(text.mid(scheme.size()));
    return address && !address->host.isEmpty() && address->port > 0 ? address : std::nullopt;
}

std::optional<ListenAddress> ListenAddress::parse(const QString &text)
{
    const std::optional<NetworkAddress> read = hostAndPort(text);
    if (!read)
        return std::nullopt;
    const bool isThisMachine = read->host.isEmpty() || read->host == QLatin1String("localhost");
    const QHostAddress address =
        isThisMachine ? QHostAddress(QHostAddress::LocalHost) : QHostAddress(read->host);
    return address.isNull() ? std::nullopt : std::optional(ListenAddress{address, read->port});
}
