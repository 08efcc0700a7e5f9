// SPDX-License-Identifier: MIT
#include "rotctld/rotctldclient.h"

#include "rotctld/repeatedtargets.h"
#include "rotctld/rotctldrotator.h"

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QTcpSocket>

#include <utility>

using namespace Rotctld;

namespace {

constexpr int fullTurn = 360;
/// Without it the system keeps megabytes for a client that does not read.
constexpr int sendBufferBytes = 16 * 1024;

} // namespace

RotctldClient::RotctldClient(QTcpSocket *socket, RotctldRotator &rotator, RepeatedTargets &targets,
                             QObject *parent)
    : QObject(parent), m_socket(socket), m_rotator(rotator),
      m_name(socket->peerAddress().toString().toUtf8() + ':' + QByteArray::number(socket->peerPort())),
      m_targets(targets)
{
    m_socket->setParent(this);
    m_socket->setReadBufferSize(longestLine);
    m_socket->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, sendBufferBytes);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    connect(m_socket, &QTcpSocket::readyRead, this, &RotctldClient::onLine);
    connect(m_socket, &QTcpSocket::disconnected, this, &RotctldClient::onGone);
    log("connected");
}

bool RotctldClient::hasLine() const
{
    return m_socket->canReadLine() || m_socket->bytesAvailable() >= longestLine;
}

bool RotctldClient::hasGone() const
{
    return m_socket->state() == QAbstractSocket::UnconnectedState;
}

RotctldClient::Served RotctldClient::serveLine()
{
    if (!hasLine())
        return Served::Nothing;
    const QByteArray line = m_socket->canReadLine() ? m_socket->readLine() : m_socket->readAll();
    const bool isWhole = line.endsWith('\n');
    if (!isWhole || m_isTooLong) {
        m_isTooLong = !isWhole;
        if (isWhole)
            send(answer(Request(), InvalidParameter));
        return Served::Line;
    }
    return carryOut(parse(line));
}

RotctldClient::Served RotctldClient::carryOut(const Request &request)
{
    switch (request.kind) {
    case Request::Nothing:
        return Served::Line;
    case Request::GetPosition:
        send(position(request, m_rotator.azimuth()));
        return Served::Line;
    case Request::GetInfo:
    case Request::DumpState:
    case Request::DumpCaps:
        send(description(request, m_rotator.model()));
        return Served::Line;
    case Request::Quit:
        m_socket->close(); // with what was received after it
        return Served::Line;
    case Request::Refused:
        send(answer(request, request.code));
        return Served::Line;
    case Request::SetPosition:
    case Request::MoveLeft:
    case Request::MoveRight:
    case Request::Stop:
        break;
    }
    send(answer(request, order(request)));
    return Served::Order;
}

Code RotctldClient::order(const Request &request)
{
    const bool isTarget = request.kind == Request::SetPosition;
    const int degrees = qRound(request.azimuth) % fullTurn;
    const qint64 now = QDeadlineTimer::current().deadline();
    // A tracker that repeats its target through an outage gives no new one after it.
    const bool isRepeated = isTarget && m_targets.isRepeated(this, degrees, now);
    if (!m_rotator.takesOrders())
        return InputOutputError;
    if (isRepeated)
        return Done;
    if (isTarget)
        turnTo(degrees);
    else
        turnOrStop(request.kind);
    if (!m_rotator.takesOrders())
        return InputOutputError;
    if (isTarget)
        m_targets.note(this, degrees, now);
    return Done;
}

void RotctldClient::turnTo(int degrees)
{
    log("turns to " + QByteArray::number(degrees));
    m_rotator.turnTo(degrees);
}

void RotctldClient::turnOrStop(Request::Kind kind)
{
    m_targets.forget(this);
    if (kind == Request::Stop) {
        log("stops");
        m_rotator.stop();
        return;
    }
    const bool isLeft = kind == Request::MoveLeft;
    log(isLeft ? "turns left" : "turns right");
    m_rotator.turn(isLeft ? RotctldRotator::Side::Left : RotctldRotator::Side::Right);
}

void RotctldClient::send(const QByteArray &answer)
{
    if (m_socket->state() != QAbstractSocket::ConnectedState)
        return;
    m_socket->write(answer);
    if (m_socket->bytesToWrite() <= mostUnreadBytes)
        return;
    log("does not read its answers");
    m_socket->abort();
}

void RotctldClient::log(const QByteArray &what) const
{
    qDebug("RotctldClient - %s %s", m_name.constData(), what.constData());
}
