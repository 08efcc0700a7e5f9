#include "device/vextralremotecontrol.h"

#include <QFileInfo>
#include <QSerialPort>

// A line that goes away comes back: an adapter is pulled out, the port is closed at once, each tick of the
// monitoring tries to open it again, and the polls go on by themselves. A port that never opened is not tried
// again.

namespace {

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

} // namespace

bool CVextralRemoteControl::openPortObject()
{
    if (!m_port->open(QIODevice::ReadWrite))
        return false;
    m_port->setTextModeEnabled(true);
    ++m_openings;
    m_deviceBehindPort = deviceBehind(m_port->portName());
    m_lineState = LineState();
    m_lineState.kind = LineState::Kind::Listening;
    m_lineState.portName = m_port->portName();
    m_sinceAnswer.start();
    return true;
}

void CVextralRemoteControl::onPortError()
{
    if (!isOpen() || m_port->error() == QSerialPort::NoError || m_port->error() == QSerialPort::TimeoutError)
        return;
    loseLine(m_port->errorString());
}

void CVextralRemoteControl::tendLine()
{
    if (m_lineState.kind == LineState::Kind::Lost)
        recoverLine();
    else if (isOpen() && deviceBehind(m_port->portName()) != m_deviceBehindPort)
        loseLine(QStringLiteral("gone")); // some versions of Qt say nothing when a device goes away
}

void CVextralRemoteControl::loseLine(const QString &reason)
{
    qDebug("CVextralRemoteControl - the line through %s went away (%s)", qUtf8Printable(m_port->portName()),
           qUtf8Printable(reason));
    // Left open, the port would report its error again and again at full load.
    m_port->close();
    m_lineState.kind = LineState::Kind::Lost;
    showPower(false);
    lineWentAway();
}

void CVextralRemoteControl::recoverLine()
{
    if (!m_port || !openPortObject())
        return;
    qDebug("CVextralRemoteControl - the line through %s is back", qUtf8Printable(m_port->portName()));
    showLineState();
}
