// SPDX-License-Identifier: MIT
#include "simbox/tcpline.h"

#include <QEventLoop>
#include <QHostInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

namespace {

/// How long another program waits for the present one to go; a program that connects anew may overtake its
/// own farewell.
constexpr int TurnMs = 100;

QString hostAndPort(const QHostAddress &address, int port)
{
    const bool isBracketed = address.protocol() == QAbstractSocket::IPv6Protocol;
    return QString(isBracketed ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2"))
        .arg(address.toString())
        .arg(port);
}

bool isAnyAddress(const QHostAddress &address)
{
    const auto is = [&address](QHostAddress::SpecialAddress any) { return address == any; };
    return is(QHostAddress::AnyIPv4) || is(QHostAddress::AnyIPv6) || is(QHostAddress::Any);
}

} // namespace

// ---- In the line's thread ----

class TcpLine::Service : public QObject
{
public:
    Service(TcpLine &line, QEventLoop &loop) : m_line(line), m_loop(loop)
    {
        m_turn.setSingleShot(true);
        m_due.setSingleShot(true);
        m_due.setTimerType(Qt::PreciseTimer);
        connect(&m_server, &QTcpServer::newConnection, this, &Service::takeNext);
        connect(&m_turn, &QTimer::timeout, this, &Service::turnAway);
        connect(&m_due, &QTimer::timeout, this, &Service::sendDue);
    }
    ~Service() override
    {
        if (m_line.m_program)
            m_line.m_program->disconnect(this);
        m_line.m_program = nullptr;
    }

    QTcpServer &server() { return m_server; }

private:
    void takeNext()
    {
        if (m_line.m_program) {
            m_turn.start(TurnMs);
            return;
        }
        QTcpSocket *program = m_server.nextPendingConnection();
        if (!program)
            return;
        m_line.m_program = program;
        program->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        program->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
        connect(program, &QTcpSocket::disconnected, this, &Service::forgetProgram);
        connect(program, &QTcpSocket::readyRead, this, &Service::read);
        read();
    }

    void forgetProgram()
    {
        m_line.m_program->deleteLater();
        m_line.m_program = nullptr;
        m_line.forgetDialogue();
        takeNext();
    }

    void turnAway()
    {
        while (QTcpSocket *other = m_server.nextPendingConnection()) {
            connect(other, &QTcpSocket::disconnected, other, &QObject::deleteLater);
            other->write("The box is in use by another program.\r\n");
            other->disconnectFromHost();
        }
    }

    void read()
    {
        m_line.receive(m_line.m_program->readAll());
        sendDue();
    }

    void sendDue()
    {
        if (!m_line.sendDue()) {
            m_line.m_quit = true;
            m_loop.quit();
        }
        const int pause = m_line.untilDue();
        if (pause >= 0)
            m_due.start(pause);
    }

    QTcpServer m_server;
    TcpLine &m_line;
    QEventLoop &m_loop;
    QTimer m_turn;
    QTimer m_due;
};

void TcpLine::serve(std::promise<bool> &listens)
{
    QEventLoop loop;
    Service service(*this, loop);
    if (!service.server().listen(m_address, m_port)) {
        setErrorText(describe(service.server()));
        listens.set_value(false);
        return;
    }
    m_port = service.server().serverPort();
    setUp(hostAndPort(m_address, m_port));
    listens.set_value(true);
    loop.exec();
    service.server().close();
    setDown(); // before the program can notice
}

qint64 TcpLine::deliver(const char *bytes, qint64 size)
{
    return m_program ? m_program->write(bytes, size) : size;
}

// ---- Up and down ----

TcpLine::TcpLine(const ListenAddress &endpoint, SimulatedBox::Model model, Clock clock)
    : BoxLine(model, clock), m_address(endpoint.address), m_port(endpoint.port)
{}

TcpLine::~TcpLine()
{
    TcpLine::hangUp();
}

bool TcpLine::start()
{
    if (isUp() && !m_quit)
        return true;
    hangUp();
    m_quit = false;
    std::promise<bool> listens;
    m_thread.reset(QThread::create([this, &listens] { serve(listens); }));
    m_thread->start();
    return listens.get_future().get();
}

void TcpLine::hangUp()
{
    if (!m_thread)
        return;
    m_thread->quit();
    m_thread->wait();
    m_thread.reset();
}

QString TcpLine::portName() const
{
    if (isAnyAddress(m_address))
        return QStringLiteral("tcp://%1:%2").arg(QHostInfo::localHostName()).arg(m_port);
    if (m_address == QHostAddress::LocalHost)
        return QStringLiteral("tcp://localhost:%1").arg(m_port);
    return QStringLiteral("tcp://") + hostAndPort(m_address, m_port);
}

QString TcpLine::describe(const QTcpServer &server) const
{
    switch (server.serverError()) {
    case QAbstractSocket::AddressInUseError:
        return QStringLiteral("Port %1 is in use by another program. Choose another one.").arg(m_port);
    case QAbstractSocket::SocketAddressNotAvailableError:
        return QStringLiteral("This machine has no address %1.").arg(m_address.toString());
    case QAbstractSocket::SocketAccessError:
        return QStringLiteral("You may not serve port %1. Choose one above 1023.").arg(m_port);
    default:
        return hostAndPort(m_address, m_port) + QStringLiteral(": ") + server.errorString();
    }
}
