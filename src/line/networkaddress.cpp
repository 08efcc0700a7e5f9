#include "line/networkaddress.h"

#include <QHostAddress>
#include <QRegularExpression>

namespace {

bool isIPv6(const QString &text)
{
    return QHostAddress(text).protocol() == QAbstractSocket::IPv6Protocol;
}

} // namespace

bool NetworkAddress::isMeantBy(const QString &portName)
{
    return portName.trimmed().startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive);
}

std::optional<NetworkAddress> NetworkAddress::parse(const QString &portName)
{
    static const QRegularExpression pattern(
        QStringLiteral(
            R"(\Atcp://(?:\[(?<ipv6>[^\[\]]+)\]|(?<host>[^\s\[\]:/@?#]+)):(?<port>[0-9]{1,5})/?\z)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(portName.trimmed());
    const QString ipv6 = match.captured(QStringLiteral("ipv6"));
    const uint port = match.captured(QStringLiteral("port")).toUInt();
    if (port < 1 || port > 65535 || (!ipv6.isEmpty() && !isIPv6(ipv6)))
        return std::nullopt;
    return NetworkAddress{ipv6.isEmpty() ? match.captured(QStringLiteral("host")) : ipv6, quint16(port)};
}
