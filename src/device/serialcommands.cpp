#include "device/vextralremotecontrol.h"

#include "compass/degrees.h"
#include "device/commandlog.h"
#include "device/protocol.h"

#include <QCoreApplication>
#include <QSerialPort>
#include <QThread>

// The serial line: opening, the commands and the queries. Bytes are composed and decoded in protocol.cpp;
// here they are written, waited for and logged.

namespace {

constexpr int commandWriteMs = 1000;
constexpr int queryWriteMs = 50;
constexpr int querySleepMs = 100;
constexpr int readRoundMs = 100;
constexpr int angleRounds = 3;
constexpr int rotorToggleSleepMs = 20;
/// No reply has more than a dozen bytes. Beyond this the line carries noise, which is thrown away before it
/// fills the memory and the log.
constexpr int floodBytes = 4096;

void logQuery(const char *text)
{
    logSeparator();
    qDebug("%s", text);
}

/// Logs a text that has one "%s" for a reply.
void logReply(const char *format, const QByteArray &buffer, bool withLineFeeds)
{
    const QString reply =
        withLineFeeds ? Protocol::replyText(buffer) : Protocol::replyTextWithoutLineFeeds(buffer);
    qDebug("%s", qUtf8Printable(QString::fromUtf8(format).replace(QLatin1String("%s"), reply)));
}

} // namespace

// ---- The port ----

bool CVextralRemoteControl::open(const QString &portName)
{
    if (m_port)
        return m_port->isOpen();

    m_port = new QSerialPort;
    m_port->setPortName(portName);
    const bool baud = m_port->setBaudRate(QSerialPort::Baud9600, QSerialPort::AllDirections);
    const bool dataBits = m_port->setDataBits(QSerialPort::Data8);
    const bool parity = m_port->setParity(QSerialPort::NoParity);
    const bool stopBits = m_port->setStopBits(QSerialPort::OneStop);
    const bool flowControl = m_port->setFlowControl(QSerialPort::NoFlowControl);
    const bool opened = openPortObject();
    qDebug("CVextralRemoteControl::open() - %d %d %d %d %d %d", baud, dataBits, parity, stopBits, flowControl,
           opened);
    if (!opened) {
        m_lineState = lineStateOfFailedOpen(*m_port);
        showLineState();
        return false;
    }
    connect(m_port, &QSerialPort::errorOccurred, this, &CVextralRemoteControl::onPortError);
    showLineState();
    startMonitoring();
    return true;
}

bool CVextralRemoteControl::close()
{
    stopMonitoring();
    m_lineState = LineState();
    m_sinceAnswer.invalidate();
    if (m_port) {
        m_port->close();
        delete m_port;
    }
    showLineState();
    lineWentAway();
    return true;
}

bool CVextralRemoteControl::isOpen()
{
    return m_port && m_port->isOpen();
}

bool CVextralRemoteControl::send(const QByteArray &composed)
{
    // A port that was closed with bytes still to write would wait for them in vain.
    if (!m_port || !m_port->isOpen())
        return false;
    m_port->write(Protocol::onTheWire(composed));
    return m_port->waitForBytesWritten(commandWriteMs);
}

// ---- Commands ----

bool CVextralRemoteControl::rotateTo(double angle)
{
    if (!m_port)
        return false;
    logCommand("Comando girar");
    send(Protocol::rotateToCommand(angle));
    logSeparator();
    emit onStartRotating(angle);
    return true;
}

bool CVextralRemoteControl::rotateCCW()
{
    if (!m_port)
        return false;
    logCommand("Comando CCW");
    return send(Protocol::rotateCCWCommand());
}

bool CVextralRemoteControl::rotateCW()
{
    if (!m_port)
        return false;
    logCommand("Comando CW");
    return send(Protocol::rotateCWCommand());
}

bool CVextralRemoteControl::stop()
{
    if (!m_port)
        return false;
    logCommand("Comando STOP");
    return send(Protocol::stopCommand());
}

bool CVextralRemoteControl::toggleRX(int index)
{
    if (!m_port)
        return false;
    send(Protocol::toggleReceivePortCommand(index));
    logCommand("Comando TogleRX");
    return true;
}

bool CVextralRemoteControl::toggleTX(int index)
{
    if (!m_port)
        return false;
    send(Protocol::toggleTransmitLineCommand(index));
    logCommand("Comando TogleTX");
    return true;
}

bool CVextralRemoteControl::toggleSplit(int index)
{
    Q_UNUSED(index)
    return true;
}

bool CVextralRemoteControl::toggleRadio(int index)
{
    Q_UNUSED(index)
    return true;
}

bool CVextralRemoteControl::toggleRotor()
{
    if (!m_port)
        return false;
    m_lastReadAngle = unknownAngle;
    logCommand("Comando toggle Rotor");
    send(Protocol::selectOtherRotorCommand());
    QThread::msleep(rotorToggleSleepMs);
    return true;
}

// ---- Queries ----

void CVextralRemoteControl::sendQuery(const QByteArray &composed)
{
    if (m_port->bytesAvailable() > floodBytes)
        throwAwayNoise();
    m_port->write(Protocol::onTheWire(composed));
    m_port->waitForBytesWritten(queryWriteMs);
    QThread::msleep(querySleepMs);
}

QByteArray CVextralRemoteControl::readLine(const char *command)
{
    // The wait is for new bytes only, so its answer says nothing about a line that is there already.
    if (isOpen())
        m_port->waitForReadyRead(readRoundMs);
    // The wait may have found that the line is gone.
    if (!isOpen())
        return QByteArray();
    if (m_port->bytesAvailable() > floodBytes) {
        throwAwayNoise();
        return QByteArray();
    }
    if (!m_port->canReadLine())
        return QByteArray();
    QByteArray line = m_port->readLine();
    dumpResponse(QLatin1String(command), line);
    return line;
}

void CVextralRemoteControl::throwAwayNoise()
{
    if (isOpen() && m_port->bytesAvailable() > 0)
        qDebug("CVextralRemoteControl - noise on the line, %d bytes thrown away",
               static_cast<int>(m_port->readAll().size()));
}

double CVextralRemoteControl::getCurrentAngle()
{
    if (!isOpen())
        return unknownAngle;
    if (m_angleValid)
        return m_currentAngle;

    logQuery("Comando [C] receber angulo");
    sendQuery(Protocol::angleQuery());
    QByteArray buffer;
    for (int round = 0; round < angleRounds; ++round) {
        const QByteArray line = readLine("C");
        if (line.isEmpty())
            continue;
        buffer += line;
        qDebug(">>> Ang.Lido[%s]", qUtf8Printable(Protocol::replyTextWithoutLineFeeds(buffer)));
        if (const std::optional<double> angle = Protocol::decodeAngle(buffer)) {
            m_lastReadAngle = m_currentAngle = *angle;
            logSeparator();
            return *angle;
        }
    }
    throwAwayNoise();
    qDebug(">>>> [FALHA ao ler angulo. \"-1\" será utilizado para indicar erro]");
    m_currentAngle = unknownAngle;
    return unknownAngle;
}

CDeviceStatus CVextralRemoteControl::getStatusAndCurrentAngle()
{
    CDeviceStatus status = readStatus(Protocol::statusAndAngleQuery);
    if (status.valid) {
        m_lastReadAngle = m_currentAngle = status.angle;
        qDebug("................. Tudo lido [%3.2f]", status.angle);
    }
    return status;
}

CDeviceStatus CVextralRemoteControl::getStatus()
{
    return readStatus(Protocol::statusQuery);
}

CDeviceStatus CVextralRemoteControl::readStatus(const Protocol::StatusQuery &query)
{
    CDeviceStatus status;
    if (!isOpen()) {
        qDebug("%s", query.notOpenText);
        return status;
    }
    logQuery(query.askingText);
    sendQuery(Protocol::statusRequest(query));
    QByteArray buffer;
    if (!collectStatusReply(query, buffer))
        return status;

    using Kind = Protocol::StatusReply::Kind;
    const Protocol::StatusReply reply = Protocol::decodeStatusReply(query, buffer);
    switch (reply.kind) {
    case Kind::Empty:
        qDebug("%s", query.emptyText);
        break;
    case Kind::Short:
        logReply(query.shortText, buffer, false);
        break;
    case Kind::WrongContent:
        logReply(query.wrongContentText, buffer, false);
        break;
    case Kind::Good:
        status.valid = true;
        decodeStatus(status, reply.a, reply.b);
        status.angle = reply.angle;
        return status;
    }
    throwAwayNoise();
    return status;
}

bool CVextralRemoteControl::collectStatusReply(const Protocol::StatusQuery &query, QByteArray &buffer)
{
    // What runs inside the pump may close the port, and open it or another one.
    const int opening = m_openings;
    for (int round = 0; round < query.rounds; ++round) {
        buffer += readLine(query.label);
        if (Protocol::isErrorReply(buffer)) {
            logReply(query.errorReplyText, buffer, true);
            throwAwayNoise();
            return false;
        }
        QCoreApplication::processEvents();
        if (opening != m_openings || !isOpen())
            return false;
        if (Protocol::isStatusReplyComplete(buffer))
            return true;
    }
    return true;
}

void CVextralRemoteControl::dumpResponse(const QString &command, const QByteArray &line) const
{
    const QStringList lines = Protocol::dumpLines(command, line);
    for (const QString &text : lines)
        qDebug("%s", qUtf8Printable(text));
}

int CVextralRemoteControl::currentRotor(const CDeviceStatus *status)
{
    const CDeviceStatus known = status ? *status : getStatus();
    if (!known.valid)
        return -1;
    if (known.rotorSelected[0])
        return 0;
    return known.rotorSelected[1] ? 1 : -1;
}
