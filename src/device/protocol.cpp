// SPDX-License-Identifier: MIT
#include "device/protocol.h"

#include "compass/degrees.h"
#include "device/devicestatus.h"

namespace {

constexpr int statusReplyMinimum = 6;
constexpr int angleDigits = 3;

// The numbers of the toggles.
constexpr int firstReceivePort = 1;
constexpr int firstTransmitLine = 5;
constexpr int otherRotor = 9;

QByteArray toggleCommand(int number)
{
    return 'K' + QByteArray::number(number) + '\n';
}

/// The three characters at `position` as a number of degrees. What is no usable angle counts as the zero of a
/// failed conversion, because callers truncate it.
double numberAt(const QString &text, int position)
{
    const double number = text.mid(position, angleDigits).toDouble();
    return isUsableAngle(number) ? number : 0.0;
}

} // namespace

namespace Protocol {

const StatusQuery statusQuery = {
    /*label=*/"K0",
    /*rounds=*/3,
    /*prefix=*/"ST=",
    /*firstStatusByte=*/3,
    /*carriesAngle=*/false,
    /*notOpenText=*/"................. CVextralRemoteControl::getStatus() - Porta serial nao esta aberta",
    /*askingText=*/"Comando [K0] receber status",
    /*errorReplyText=*/"Comando [K0] receber status veio erro [%s]",
    /*wrongContentText=*/"................. CVextralRemoteControl::getStatus() - content error [%s]",
    /*shortText=*/"................. CVextralRemoteControl::getStatus() - error [%s]",
    /*emptyText=*/"................. CVextralRemoteControl::getStatus() empty",
};

const StatusQuery statusAndAngleQuery = {
    /*label=*/"KG",
    /*rounds=*/4,
    /*prefix=*/"T",
    /*firstStatusByte=*/2,
    /*carriesAngle=*/true,
    /*notOpenText=*/
    "................. CVextralRemoteControl::getStatusAndCurrentAngle() - Porta serial nao esta aberta",
    /*askingText=*/"Comando [KG] receber status e angulo",
    /*errorReplyText=*/"Comando [KG] receber status veio erro [%s]",
    /*wrongContentText=*/
    "................. CVextralRemoteControl::getStatusAndCurrentAngle() - conteúdo errado. Veio: [%s]",
    /*shortText=*/
    "................. CVextralRemoteControl::getStatusAndCurrentAngle() - conteúdo meio errado: [%s]",
    /*emptyText=*/"................. CVextralRemoteControl::getStatusAndCurrentAngle() conteúdo vazio",
};

QByteArray rotateToCommand(double azimuth)
{
    return QString::asprintf("M%03d\r\n\n", truncatedDegrees(azimuth)).toLatin1();
}

QByteArray rotateCCWCommand()
{
    return QByteArrayLiteral("L\r\n\n");
}

QByteArray rotateCWCommand()
{
    return QByteArrayLiteral("R\r\n\n");
}

QByteArray stopCommand()
{
    return QByteArrayLiteral("S\r\n\n");
}

QByteArray toggleReceivePortCommand(int index)
{
    return toggleCommand(firstReceivePort + index);
}

QByteArray toggleTransmitLineCommand(int index)
{
    return toggleCommand(firstTransmitLine + index);
}

QByteArray selectOtherRotorCommand()
{
    return toggleCommand(otherRotor);
}

QByteArray angleQuery()
{
    return QByteArrayLiteral("C\n");
}

QByteArray statusRequest(const StatusQuery &query)
{
    return QByteArray(query.label) + '\n';
}

QString replyText(const QByteArray &buffer)
{
    return QString::fromLatin1(buffer.constData());
}

QString replyTextWithoutLineFeeds(const QByteArray &buffer)
{
    return replyText(buffer).remove(QLatin1Char('\n'));
}

std::optional<double> decodeAngle(const QByteArray &buffer)
{
    const QString text = replyTextWithoutLineFeeds(buffer);
    if (!text.toLower().startsWith(QLatin1String("az")))
        return std::nullopt;
    return numberAt(text, 3);
}

bool isErrorReply(const QByteArray &buffer)
{
    return replyText(buffer).contains(QLatin1String("?>"));
}

bool isStatusReplyComplete(const QByteArray &buffer)
{
    return buffer.size() >= statusReplyMinimum;
}

StatusReply decodeStatusReply(const StatusQuery &query, const QByteArray &buffer)
{
    StatusReply reply;
    if (buffer.isEmpty())
        return reply;
    if (!isStatusReplyComplete(buffer)) {
        reply.kind = StatusReply::Kind::Short;
        return reply;
    }
    const QString text = replyTextWithoutLineFeeds(buffer);
    if (!text.startsWith(QLatin1String(query.prefix))) {
        reply.kind = StatusReply::Kind::WrongContent;
        return reply;
    }
    reply.kind = StatusReply::Kind::Good;
    // The raw bytes, not the text: a status byte may be zero or a line feed.
    reply.a = static_cast<quint8>(buffer.at(query.firstStatusByte));
    reply.b = static_cast<quint8>(buffer.at(query.firstStatusByte + 1));
    if (query.carriesAngle)
        reply.angle = numberAt(text, query.firstStatusByte + 2);
    return reply;
}

void decodeStatusBytes(CDeviceStatus &status, quint8 a, quint8 b)
{
    for (int port = 0; port < 4; ++port) {
        status.antennaRx[port] = a & (1U << port);
        status.antennaTx[port] = b & (1U << port);
    }
    status.relayBoxId = a >> 4;
    status.auxFlag = b & 0x10U;
    // The boxes number their rotor bits the other way round.
    status.rotorSelected[0] = b & 0x40U;
    status.rotorSelected[1] = b & 0x20U;
    status.moving = b & 0x80U;
}

QStringList dumpLines(const QString &command, const QByteArray &line)
{
    const QByteArray label = command.toUtf8();
    if (line.isEmpty())
        return {QString::asprintf("Resposta de [%s]: zero bytes", label.constData())};

    const int count = static_cast<int>(line.size());
    QStringList lines{QString::asprintf("Resposta de [%s]: %d bytes", label.constData(), count)};
    for (int i = 0; i < count; ++i) {
        QString text = QString::asprintf("Byte [%d de %d]:", i + 1, count);
        for (int bit = 7; bit >= 0; --bit)
            text += QLatin1String((static_cast<quint8>(line.at(i)) >> bit) & 1U ? " 1" : " 0");
        lines << text;
    }
    return lines;
}

} // namespace Protocol
