#include "fuzzing.h"

#include "device/devicestatus.h"
#include "device/protocol.h"

#include <cmath>
#include <limits>

// Whatever comes in on the serial line: split into lines as the port does, collected round by round as the
// reader does, decoded after each.

namespace {

/// Finished lines alone, without their CR; an unfinished one is never read.
QList<QByteArray> linesOf(QByteArray received)
{
    QList<QByteArray> lines = received.replace("\r", "").split('\n');
    lines.removeLast();
    for (QByteArray &line : lines)
        line += '\n';
    return lines;
}

void checkDegrees(double degrees)
{
    require(std::abs(degrees) < std::numeric_limits<int>::max(), "an angle is finite and fits an int");
    const QByteArray command = Protocol::rotateToCommand(degrees);
    require(command.startsWith('M') && command.endsWith("\r\n\n"), "any angle composes a command");
}

void checkDump(const QByteArray &line)
{
    const QStringList dump = Protocol::dumpLines("K0", line);
    require(dump.size() == line.size() + 1, "the dump has a line for each byte");
    for (int i = 0; i < line.size(); ++i) {
        const QString bits = dump.at(i + 1).section(':', 1).remove(' ');
        require(bits.toUInt(nullptr, 2) == quint8(line.at(i)), "the dump shows the byte");
    }
}

void checkStatusBytes(quint8 a, quint8 b)
{
    CDeviceStatus status;
    Protocol::decodeStatusBytes(status, a, b);
    unsigned receive = unsigned(status.relayBoxId) << 4;
    unsigned transmit = status.auxFlag << 4 | status.rotorSelected[1] << 5 | status.rotorSelected[0] << 6
                      | status.moving << 7;
    for (int port = 0; port < 4; ++port) {
        receive |= status.antennaRx[port] << port;
        transmit |= status.antennaTx[port] << port;
    }
    require(receive == a && transmit == b, "no bit of a status is lost");
}

void checkAngle(const QList<QByteArray> &lines)
{
    QByteArray buffer;
    for (const QByteArray &line : lines) {
        buffer += line;
        const std::optional<double> angle = Protocol::decodeAngle(buffer);
        if (!angle)
            continue;
        checkDegrees(*angle);
        require(buffer.replace("\n", "").toLower().startsWith("az"), "an angle comes from an angle reply");
        return;
    }
}

void checkDecodedStatus(const Protocol::StatusQuery &query, QByteArray buffer)
{
    using Kind = Protocol::StatusReply::Kind;
    const Protocol::StatusReply reply = Protocol::decodeStatusReply(query, buffer);
    require((reply.kind == Kind::Empty) == buffer.isEmpty(), "only nothing is an empty reply");
    if (reply.kind != Kind::Good) {
        require(reply.a == 0 && reply.b == 0 && reply.angle == 0.0, "a bad reply says nothing");
        return;
    }
    require(Protocol::isStatusReplyComplete(buffer), "a short reply is no status");
    require(buffer.replace("\n", "").startsWith(query.prefix), "a status has its prefix");
    require(query.carriesAngle || reply.angle == 0.0, "only one query carries an angle");
    checkDegrees(reply.angle);
    checkStatusBytes(reply.a, reply.b);
}

void checkStatus(const Protocol::StatusQuery &query, const QList<QByteArray> &lines)
{
    QByteArray buffer;
    for (int round = 0; round < query.rounds; ++round) {
        buffer += lines.value(round);
        if (Protocol::isErrorReply(buffer))
            return;
        checkDecodedStatus(query, buffer);
        if (Protocol::isStatusReplyComplete(buffer))
            return;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QList<QByteArray> lines = linesOf(bytesOf(data, size));
    checkDump(lines.value(0).left(8)); // more is dumped alike, only slowly
    checkAngle(lines);
    checkStatus(Protocol::statusQuery, lines);
    checkStatus(Protocol::statusAndAngleQuery, lines);
    return 0;
}
