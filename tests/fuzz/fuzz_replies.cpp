// SPDX-License-Identifier: MIT
#include "fuzzing.h"

#include "device/protocol.h"
#include "device/replyreader.h"

#include <cmath>
#include <limits>

// Whatever comes in on the line: split into lines as the line does, collected by the reply reader, decoded.

namespace {

/// Finished lines alone, with their CR LF folded; an unfinished one is never read.
QList<QByteArray> linesOf(const QByteArray &received)
{
    QList<QByteArray> lines = received.split('\n');
    lines.removeLast();
    for (QByteArray &line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        line += '\n';
    }
    return lines;
}

/// Feeds a line in each round, and none once there are no more.
ReplyReader::Progress collect(ReplyReader &reader, const QList<QByteArray> &lines)
{
    auto progress = ReplyReader::Progress::Pending;
    for (int round = 0; progress == ReplyReader::Progress::Pending; ++round) {
        require(round < 10, "a reader ends");
        progress = reader.feed(lines.value(round));
    }
    return progress;
}

void checkDegrees(double degrees)
{
    require(std::abs(degrees) < std::numeric_limits<int>::max(), "an angle is finite and fits an int");
    const QByteArray command = Protocol::rotateToCommand(degrees);
    require(command.startsWith('M') && command.endsWith("\r\n\n"), "any angle composes a command");
}

void checkAngle(const QList<QByteArray> &lines)
{
    ReplyReader reader = ReplyReader::forAngle();
    const bool isComplete = collect(reader, lines) == ReplyReader::Progress::Complete;
    const std::optional<double> angle = Protocol::decodeAngle(reader.bytes());
    require(isComplete == angle.has_value(), "a complete reply has an angle");
    if (!angle)
        return;
    checkDegrees(*angle);
    require(QByteArray(reader.bytes()).replace("\n", "").toLower().startsWith("az"),
            "an angle comes from an angle reply");
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
}

void checkStatus(const Protocol::StatusQuery &query, const QList<QByteArray> &lines)
{
    ReplyReader reader = ReplyReader::forStatus(query);
    if (collect(reader, lines) != ReplyReader::Progress::Refused)
        checkDecodedStatus(query, reader.bytes());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QList<QByteArray> lines = linesOf(bytesOf(data, size));
    Protocol::dumpLines("K0", lines.value(0).left(8)); // more is slow
    checkAngle(lines);
    checkStatus(Protocol::statusQuery, lines);
    checkStatus(Protocol::statusAndAngleQuery, lines);
    return 0;
}
