// SPDX-License-Identifier: MIT
#include "device/boxlink.h"

#include "device/commandlog.h"
#include "device/replyreader.h"
#include "line/linefactory.h"

#include <QCoreApplication>

namespace {

constexpr int commandWriteMs = 1000;
constexpr int queryWriteMs = 50;
constexpr int querySleepMs = 100;
constexpr int readRoundMs = 100;

void logQuery(const char *text)
{
    logSeparator();
    qDebug("%s", text);
}

/// Logs a text that has one "%s" for a reply.
void logReply(const char *format, const QString &reply)
{
    qDebug("%s", qUtf8Printable(QString::fromUtf8(format).replace(QLatin1String("%s"), reply)));
}

} // namespace

BoxLink::BoxLink() : m_factory(createLine) {}

BoxLink::~BoxLink() = default;

// ---- The line ----

bool BoxLink::open(const QString &portName)
{
    m_line = m_factory(portName);
    connect(m_line.get(), &Line::opened, this, &BoxLink::opened);
    connect(m_line.get(), &Line::lost, this, &BoxLink::lost);
    connect(m_line.get(), &Line::back, this, &BoxLink::back);
    connect(m_line.get(), &Line::stateChanged, this, &BoxLink::stateChanged);
    return m_line->open();
}

void BoxLink::close()
{
    if (!m_line)
        return;
    m_line->close();
    m_line.reset();
}

void BoxLink::tend()
{
    if (m_line)
        m_line->tend();
}

void BoxLink::noteSilence()
{
    if (m_line)
        m_line->noteAnswer(false);
}

void BoxLink::pause(int milliseconds)
{
    if (m_line)
        m_line->pause(milliseconds);
}

// ---- Commands ----

bool BoxLink::send(const QByteArray &command)
{
    return takesOrders() && m_line->write(command, commandWriteMs);
}

bool BoxLink::send(const char *logText, const QByteArray &command)
{
    logCommand(logText);
    return send(command);
}

// ---- Queries ----

void BoxLink::sendQuery(const QByteArray &query)
{
    if (m_line->bytesAvailable() > Line::floodBytes)
        m_line->discard();
    m_line->write(query, queryWriteMs);
    m_line->pause(querySleepMs);
}

QByteArray BoxLink::readLine(const char *command)
{
    QByteArray line = m_line->readLine(readRoundMs);
    if (!line.isEmpty())
        dump(QLatin1String(command), line);
    return line;
}

Protocol::StatusReply BoxLink::readStatus(const Protocol::StatusQuery &query)
{
    if (!isOpen()) {
        qDebug("%s", query.notOpenText);
        return {};
    }
    ReplyReader reader = ReplyReader::forStatus(query);
    if (!collect(reader, query))
        return {};

    using Kind = Protocol::StatusReply::Kind;
    const Protocol::StatusReply reply = Protocol::decodeStatusReply(query, reader.bytes());
    switch (reply.kind) {
    case Kind::Good:
        m_line->noteAnswer(true);
        return reply;
    case Kind::Empty:
        qDebug("%s", query.emptyText);
        break;
    case Kind::Short:
        logReply(query.shortText, Protocol::replyTextWithoutLineFeeds(reader.bytes()));
        break;
    case Kind::WrongContent:
        logReply(query.wrongContentText, Protocol::replyTextWithoutLineFeeds(reader.bytes()));
        break;
    }
    // What came with a query that failed would lead the next reply. What comes later stays.
    m_line->discard();
    return reply;
}

bool BoxLink::collect(ReplyReader &reader, const Protocol::StatusQuery &query)
{
    using Progress = ReplyReader::Progress;
    const int asked = opening();
    logQuery(query.askingText);
    sendQuery(Protocol::statusRequest(query));
    for (Progress progress = Progress::Pending; progress == Progress::Pending;) {
        progress = reader.feed(readLine(query.label));
        if (progress == Progress::Refused) {
            logReply(query.errorReplyText, Protocol::replyText(reader.bytes()));
            m_line->discard();
            return false;
        }
        QCoreApplication::processEvents();
        // What ran in there may have closed the line, and opened it or another one.
        if (opening() != asked)
            return false;
    }
    return true;
}

std::optional<double> BoxLink::readAngle()
{
    using Progress = ReplyReader::Progress;
    logQuery("Comando [C] receber angulo");
    sendQuery(Protocol::angleQuery());
    ReplyReader reader = ReplyReader::forAngle();
    for (Progress progress = Progress::Pending; progress == Progress::Pending;) {
        const QByteArray line = readLine("C");
        progress = reader.feed(line);
        if (!line.isEmpty())
            qDebug(">>> Ang.Lido[%s]", qUtf8Printable(Protocol::replyTextWithoutLineFeeds(reader.bytes())));
    }
    const std::optional<double> angle = Protocol::decodeAngle(reader.bytes());
    if (angle) {
        m_line->noteAnswer(true);
        logSeparator();
        return angle;
    }
    m_line->discard();
    qDebug(">>>> [FALHA ao ler angulo. \"-1\" será utilizado para indicar erro]");
    return std::nullopt;
}

void BoxLink::dump(const QString &command, const QByteArray &line)
{
    const QStringList lines = Protocol::dumpLines(command, line);
    for (const QString &text : lines)
        qDebug("%s", qUtf8Printable(text));
}
