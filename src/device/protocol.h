// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

struct CDeviceStatus;

/// The controller boxes' serial protocol as bytes: commands are composed, replies are decoded, and no
/// port, timer or widget is known here.
///
/// Commands are composed with LF line ends; on the wire each LF is preceded by a CR. A reply is one or more
/// LF-ended lines collected in one buffer, their CR folded away by the port's text mode.
namespace Protocol {

/// "M" and the azimuth, truncated toward zero, in at least three digits. No range check.
QByteArray rotateToCommand(double azimuth);
QByteArray rotateCCWCommand();
QByteArray rotateCWCommand();
QByteArray stopCommand();
/// Ports and lines count from 0.
QByteArray toggleReceivePortCommand(int index);
QByteArray toggleTransmitLineCommand(int index);
QByteArray selectOtherRotorCommand();
QByteArray angleQuery();

/// The buffer as text: Latin-1, up to the first zero byte.
QString replyText(const QByteArray &buffer);
/// replyText without its line feeds.
QString replyTextWithoutLineFeeds(const QByteArray &buffer);

/// The azimuth in degrees of an "AZ=ddd" reply; nothing when the buffer does not begin like one.
std::optional<double> decodeAngle(const QByteArray &buffer);

/// One of the two status queries: the command, how many rounds to wait for the reply, the position of the
/// status bytes in it, and the texts for the log, which contain at most one "%s" for the reply.
struct StatusQuery
{
    /// What is asked, and how the log names it.
    const char *label;
    int rounds;
    const char *prefix;
    int firstStatusByte;
    bool carriesAngle;
    const char *notOpenText;
    const char *askingText;
    const char *errorReplyText;
    const char *wrongContentText;
    const char *shortText;
    const char *emptyText;
};

QByteArray statusRequest(const StatusQuery &query);

/// "K0": the status bytes alone.
extern const StatusQuery statusQuery;
/// "KG": the status bytes and the azimuth of the selected rotor.
extern const StatusQuery statusAndAngleQuery;

/// Whether the box refused the command ("?>" anywhere in the text).
bool isErrorReply(const QByteArray &buffer);
/// Whether enough bytes are there to decode a status from.
bool isStatusReplyComplete(const QByteArray &buffer);

struct StatusReply
{
    enum class Kind { Empty, Short, WrongContent, Good };
    Kind kind = Kind::Empty;
    quint8 a = 0;
    quint8 b = 0;
    /// Degrees; 0 when the reply's number is no number or the query carries none.
    double angle = 0.0;
};

/// What the collected bytes amount to. Only a Good reply has meaningful status bytes.
StatusReply decodeStatusReply(const StatusQuery &query, const QByteArray &buffer);

/// The family's common meaning of the two status bytes.
void decodeStatusBytes(CDeviceStatus &status, quint8 a, quint8 b);

/// The log lines that show a received line byte by byte.
QStringList dumpLines(const QString &command, const QByteArray &line);

} // namespace Protocol
