// SPDX-License-Identifier: MIT
#include "line/serialline.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace {

/// A link under /dev/serial/by-id leads nowhere for a moment while the system replaces it.
constexpr int ticksUntilVanished = 2;
/// How much longer than an attempt to open a lost port the pause after it is.
constexpr int pausePerAttempt = 10;

/// Where the system keeps a port, whose name may be a full path. Meaningless on Windows.
QString portNodePath(const QString &portName)
{
    return portName.startsWith(QLatin1Char('/')) ? portName : QLatin1String("/dev/") + portName;
}

/// The device that a port's name leads to now; empty when there is none. A name may be a link, which leads
/// elsewhere after the adapter was plugged in again. On Windows a port always tells its loss itself.
QString deviceBehind(const QString &portName)
{
#ifdef Q_OS_WIN
    Q_UNUSED(portName)
    return QString();
#else
    return QFileInfo(portNodePath(portName)).canonicalFilePath();
#endif
}

/// Whether the system has no such port. On Windows only an attempt to open it shows that.
bool isMissing(const QString &portName)
{
#ifdef Q_OS_WIN
    Q_UNUSED(portName)
    return false;
#else
    return portName.isEmpty() || deviceBehind(portName).isEmpty();
#endif
}

/// The system refuses a port that another program holds in the same words as one that may not be used; its
/// node tells which.
void explainRefusal(LineState &state, const QString &portName)
{
    const QFileInfo node(portNodePath(portName));
    const bool mayUse = !node.exists() || (node.isReadable() && node.isWritable());
    state.kind = mayUse ? LineState::Kind::Busy : LineState::Kind::NoPermission;
    if (!mayUse && node.permission(QFileDevice::ReadGroup | QFileDevice::WriteGroup))
        state.group = node.group();
}

LineState stateOfFailedOpen(const QSerialPort &port)
{
    LineState state;
    state.kind = LineState::Kind::Failed;
    state.detail = port.errorString();
    if (isMissing(port.portName()) || port.error() == QSerialPort::DeviceNotFoundError)
        state.kind = LineState::Kind::NoSuchPort;
    else if (port.error() == QSerialPort::PermissionError)
        explainRefusal(state, port.portName());
    return state;
}

} // namespace

SerialLine::SerialLine(const QString &portName) : IoDeviceLine(portName)
{
    m_port.setPortName(portName);
}

SerialLine::~SerialLine() = default;

bool SerialLine::open()
{
    const bool baud = m_port.setBaudRate(QSerialPort::Baud9600, QSerialPort::AllDirections);
    const bool dataBits = m_port.setDataBits(QSerialPort::Data8);
    const bool parity = m_port.setParity(QSerialPort::NoParity);
    const bool stopBits = m_port.setStopBits(QSerialPort::OneStop);
    const bool flowControl = m_port.setFlowControl(QSerialPort::NoFlowControl);
    const bool opened = openPort();
    qDebug("CVextralRemoteControl::open() - %d %d %d %d %d %d", baud, dataBits, parity, stopBits, flowControl,
           opened);
    if (opened)
        connect(&m_port, &QSerialPort::errorOccurred, this, &SerialLine::onPortError);
    else
        setState(stateOfFailedOpen(m_port));
    return opened;
}

bool SerialLine::openPort()
{
    // Each attempt to open a port writes a lock file through to the disk, even if there is no such port.
    if (isMissing(portName()) || !m_port.open(QIODevice::ReadWrite))
        return false;
    m_port.setTextModeEnabled(true);
    m_deviceBehindPort = deviceBehind(portName());
    m_ticksElsewhere = 0;
    begin();
    return true;
}

void SerialLine::close()
{
    disconnect(&m_port, nullptr, this, nullptr);
    m_port.close();
    setState(LineState::Kind::Closed);
}

void SerialLine::onPortError()
{
    if (!isOpen() || m_port.error() == QSerialPort::NoError || m_port.error() == QSerialPort::TimeoutError)
        return;
    lose(m_port.errorString());
}

void SerialLine::tend()
{
    if (kind() == LineState::Kind::Lost)
        tryAgain();
    else if (isOpen())
        noticeVanishedDevice();
}

void SerialLine::noticeVanishedDevice()
{
    if (deviceBehind(portName()) == m_deviceBehindPort)
        m_ticksElsewhere = 0;
    else if (++m_ticksElsewhere >= ticksUntilVanished)
        lose(QStringLiteral("gone"));
}

void SerialLine::lose(const QString &reason)
{
    qDebug("CVextralRemoteControl - the line through %s went away (%s)", qUtf8Printable(portName()),
           qUtf8Printable(reason));
    m_port.close();
    m_nextAttempt.setRemainingTime(0);
    setState(LineState::Kind::Lost);
    emitLater(&Line::lost);
}

void SerialLine::tryAgain()
{
    if (!m_nextAttempt.hasExpired())
        return;
    QElapsedTimer attempt;
    attempt.start();
    const bool opened = openPort();
    m_nextAttempt.setRemainingTime(pausePerAttempt * attempt.elapsed());
    if (!opened)
        return;
    qDebug("CVextralRemoteControl - the line through %s is back", qUtf8Printable(portName()));
    emitLater(&Line::back);
}
