#include "fuzzing.h"

#include "device/devicestatus.h"
#include "device/protocol.h"

#include <cmath>
#include <limits>
#include <vector>

// Whatever comes in on the serial line: split into lines as the port does, collected round by round as the
// reader does, decoded after each.

namespace {

/// More is dumped alike, only slowly.
constexpr int longestDumped = 8;

/// Finished lines alone, without their CR; an unfinished one is never read.
std::vector<QByteArray> linesOf(QByteArray received)
{
    received.replace("\r", "");
    std::vector<QByteArray> lines;
    int begin = 0;
    for (int end = received.indexOf('\n'); end >= 0; end = received.indexOf('\n', begin)) {
        lines.push_back(received.mid(begin, end + 1 - begin));
        begin = end + 1;
    }
    return lines;
}

void checkDegrees(double degrees)
{
    require(std::isfinite(degrees), "an angle is finite");
    require(std::abs(degrees) < std::numeric_limits<int>::max(), "an angle fits an int");
    const QByteArray command = Protocol::rotateToCommand(degrees);
    require(command.startsWith('M') && command.endsWith("\r\n\n"), "any angle composes a command");
}

void checkDump(const QByteArray &line)
{
    if (line.size() > longestDumped)
        return;
    const QStringList dump = Protocol::dumpLines(QStringLiteral("K0"), line);
    require(dump.size() == line.size() + 1, "the dump has a line for each byte");
    for (int i = 0; i < line.size(); ++i) {
        const QString bits = dump.at(i + 1).section(QLatin1Char(':'), 1).remove(QLatin1Char(' '));
        require(bits.toUInt(nullptr, 2) == static_cast<quint8>(line.at(i)), "the dump shows the byte");
    }
}

void checkStatusBytes(quint8 a, quint8 b)
{
    CDeviceStatus status;
    Protocol::decodeStatusBytes(status, a, b);
    unsigned receive = static_cast<unsigned>(status.relayBoxId) << 4;
    unsigned transmit = (status.auxFlag ? 0x10u : 0u) | (status.rotorSelected[1] ? 0x20u : 0u)
                      | (status.rotorSelected[0] ? 0x40u : 0u) | (status.moving ? 0x80u : 0u);
    for (unsigned port = 0; port < 4; ++port) {
        receive |= status.antennaRx[port] ? 1u << port : 0u;
        transmit |= status.antennaTx[port] ? 1u << port : 0u;
    }
    require(receive == a && transmit == b, "no bit of a status is lost");
}

void checkAngle(const std::vector<QByteArray> &lines)
{
    QByteArray buffer;
    for (const QByteArray &line : lines) {
        buffer += line;
        const std::optional<double> angle = Protocol::decodeAngle(buffer);
        if (!angle)
            continue;
        checkDegrees(*angle);
        const QByteArray start = QByteArray(buffer).replace("\n", "").left(2).toLower();
        require(start == "az", "an angle comes from an angle reply");
        return;
    }
}

void checkDecodedStatus(const Protocol::StatusQuery &query, const QByteArray &buffer)
{
    using Kind = Protocol::StatusReply::Kind;
    const Protocol::StatusReply reply = Protocol::decodeStatusReply(query, buffer);
    require((reply.kind == Kind::Empty) == buffer.isEmpty(), "only nothing is an empty reply");
    if (reply.kind != Kind::Good) {
        require(reply.a == 0 && reply.b == 0 && reply.angle == 0.0, "a bad reply says nothing");
        return;
    }
    require(Protocol::isStatusReplyComplete(buffer), "a short reply is no status");
    require(QByteArray(buffer).replace("\n", "").startsWith(query.prefix), "a status has its prefix");
    require(query.carriesAngle || reply.angle == 0.0, "only one query carries an angle");
    checkDegrees(reply.angle);
    checkStatusBytes(reply.a, reply.b);
}

void checkStatus(const Protocol::StatusQuery &query, const std::vector<QByteArray> &lines)
{
    QByteArray buffer;
    for (int round = 0; round < query.rounds; ++round) {
        if (static_cast<std::size_t>(round) < lines.size())
            buffer += lines[static_cast<std::size_t>(round)];
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
    const std::vector<QByteArray> lines = linesOf(bytesOf(data, size));
    if (!lines.empty())
        checkDump(lines.front());
    checkAngle(lines);
    checkStatus(Protocol::statusQuery, lines);
    checkStatus(Protocol::statusAndAngleQuery, lines);
    return 0;
}
