// SPDX-License-Identifier: MIT
#include "simbox/traffictext.h"

#include <QStringList>

namespace {

QString byteText(char byte)
{
    if (byte == '\r')
        return QStringLiteral("<CR>");
    if (byte == '\n')
        return QStringLiteral("<LF>");
    if (byte >= ' ' && byte <= '~' && byte != '<')
        return QString(QLatin1Char(byte));
    return QStringLiteral("<%1>").arg(uint(uchar(byte)), 2, 16, QLatin1Char('0')).toUpper();
}

} // namespace

QString trafficText(const QByteArray &bytes, int limit)
{
    QString text;
    for (char byte : bytes.left(limit))
        text += byteText(byte);
    if (bytes.size() > limit)
        text += QStringLiteral("... (%1 bytes)").arg(bytes.size());
    return text;
}

QString trafficText(const QList<QByteArray> &pieces, int limit)
{
    QStringList texts;
    for (const QByteArray &piece : pieces)
        texts += trafficText(piece, limit);
    return texts.join(QLatin1Char(' '));
}
