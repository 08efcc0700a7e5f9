// SPDX-License-Identifier: MIT
#include "line/networkline.h"

#include "line/networkaddress.h"

#include <QNetworkProxy>

#include <algorithm>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace {

/// Long enough for a second address of the same name, which is tried after 30 s.
constexpr int attemptMs = 45000;
constexpr int firstPauseMs = 1500;
constexpr int longestPauseMs = 15000;
constexpr int outagePolls = 3;
constexpr int mostPolls = 8 * outagePolls;

/// Lets the connection end without delivering what it still holds.
void dropUnsent(const QTcpSocket &socket)
{
    const linger atOnce = {1, 0};
#ifdef Q_OS_WIN
    const auto descriptor = static_cast<SOCKET>(socket.socketDescriptor());
#else
    const int descriptor = static_cast<int>(socket.socketDescriptor());
#endif
    setsockopt(descriptor, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&atOnce), sizeof atOnce);
}

} // namespace

NetworkLine::NetworkLine(const QString &portName) : IoDeviceLine(portName)
{
    m_socket.setProxy(QNetworkProxy::NoProxy);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &NetworkLine::onTimeout);
    connect(&m_socket, &QTcpSocket::connected, this, &NetworkLine::onConnected);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &NetworkLine::onError);
    connect(&m_socket, &QTcpSocket::disconnected, this, &NetworkLine::onDisconnected);
    connect(&m_socket, &QTcpSocket::readyRead, this, [this] { m_heard = true; });
}

NetworkLine::~NetworkLine()
{
    m_socket.disconnect(this);
}

// ---- Connecting ----

bool NetworkLine::open()
{
    const bool isGood = NetworkAddress::parse(portName()).has_value();
    qDebug("CVextralRemoteControl::open() - 1 1 1 1 1 0");
    m_pauseMs = firstPauseMs;
    m_patience = outagePolls;
    setState(isGood ? LineState::Kind::Connecting : LineState::Kind::MalformedAddress);
    if (isGood)
        connectToServer();
    return false;
}

void NetworkLine::close()
{
    m_phase = Phase::Closed;
    m_wasOpen = false;
    m_timer.stop();
    m_socket.abort();
    setState(LineState::Kind::Closed);
}

void NetworkLine::connectToServer()
{
    const std::optional<NetworkAddress> address = NetworkAddress::parse(portName());
    if (!address)
        return;
    m_phase = Phase::Connecting;
    m_timer.start(attemptMs);
    m_socket.connectToHost(address->host, address->port);
}

void NetworkLine::onConnected()
{
    m_phase = Phase::Open;
    m_timer.stop();
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_socket.setTextModeEnabled(true);
    m_answered = m_silent = m_heard = false;
    m_unansweredPolls = 0;
    m_isBehind = true;
    begin(m_patience > outagePolls);
    if (m_wasOpen)
        qDebug("CVextralRemoteControl - the line through %s is back", qUtf8Printable(portName()));
    emitLater(m_wasOpen ? &Line::back : &Line::opened);
    m_wasOpen = true;
}

void NetworkLine::onError(QAbstractSocket::SocketError error)
{
    if (m_phase != Phase::Connecting)
        return; // a wait that ran out, or the end of a connection, which has a signal of its own
    LineState state;
    state.detail = tr("%1. It is tried again.").arg(m_socket.errorString());
    state.kind = error == QAbstractSocket::ConnectionRefusedError ? LineState::Kind::Refused
               : error == QAbstractSocket::HostNotFoundError      ? LineState::Kind::NameNotFound
                                                                  : LineState::Kind::Failed;
    setState(state);
    tryLater();
}

void NetworkLine::onDisconnected()
{
    if (m_phase != Phase::Open)
        return;
    qDebug("CVextralRemoteControl - the line through %s went away (%s)", qUtf8Printable(portName()),
           qUtf8Printable(m_socket.errorString()));
    setState(LineState::Kind::Lost);
    emitLater(&Line::lost);
    tryLater();
}

void NetworkLine::onTimeout()
{
    if (m_phase == Phase::Waiting) {
        connectToServer();
        return;
    }
    // The system would try for minutes.
    m_phase = Phase::Waiting;
    m_socket.abort();
    setState(LineState::Kind::Connecting);
    tryLater();
}

void NetworkLine::tryLater()
{
    m_phase = Phase::Waiting;
    m_timer.start(m_pauseMs);
    m_pauseMs = std::min(2 * m_pauseMs, longestPauseMs);
    emitStateLater();
}

// ---- Answers ----

bool NetworkLine::isOverdue() const
{
    return m_unansweredPolls >= outagePolls;
}

bool NetworkLine::write(const QByteArray &text, int waitMs)
{
    if (m_isBehind) {
        m_isBehind = !m_answered || m_unansweredPolls > 0 || bytesAvailable() > 0;
        discard();
    }
    return IoDeviceLine::write(text, waitMs);
}

QByteArray NetworkLine::readLine(int waitMs)
{
    const QByteArray line = IoDeviceLine::readLine(waitMs);
    return isOverdue() ? QByteArray() : line;
}

void NetworkLine::noteAnswer(bool answered)
{
    IoDeviceLine::noteAnswer(answered);
    if (!isOpen())
        return;
    m_silent = !answered && !m_heard;
    const bool wakesUp = isOverdue() && m_heard;
    m_heard = false;
    if (answered) {
        m_answered = true;
        m_unansweredPolls = 0;
        m_pauseMs = firstPauseMs;
        m_patience = outagePolls;
        return;
    }
    m_isBehind = true;
    if (++m_unansweredPolls >= m_patience || wakesUp)
        reset();
}

void NetworkLine::reset()
{
    qDebug("CVextralRemoteControl - the line through %s is silent and is connected anew",
           qUtf8Printable(portName()));
    m_phase = Phase::Waiting;
    m_patience = std::min(2 * m_patience, mostPolls);
    dropUnsent(m_socket);
    m_socket.abort();
    emitLater(&Line::lost);
    connectToServer();
}
