// SPDX-License-Identifier: MIT
#pragma once

#include "line/networkaddress.h"
#include "simbox/boxline.h"

#include <atomic>
#include <future>
#include <memory>

class QTcpServer;
class QTcpSocket;
class QThread;

/// Serves a simulated box over TCP to one program at a time, as a serial port has one. A second one is told
/// so and closed.
///
/// A hang-up closes the connection and the port, as when a serial-to-network server is stopped.
class TcpLine : public BoxLine
{
public:
    explicit TcpLine(const ListenAddress &endpoint = {QHostAddress::LocalHost, 0},
                     SimulatedBox::Model model = SimulatedBox::Model::StackSwitch, Clock clock = Clock::Real);
    /// Hangs up.
    ~TcpLine() override;

    bool start() override;
    void hangUp() override;

    /// "tcp://localhost:7000"; names this machine when it serves others too.
    QString portName() const override;
    /// The port that is served, the same one at each restore.
    quint16 port() const { return m_port; }

protected:
    qint64 deliver(const char *bytes, qint64 size) override;

private:
    /// What lives in the thread while the line is up.
    class Service;

    void serve(std::promise<bool> &listens);
    QString describe(const QTcpServer &server) const;

    const QHostAddress m_address;
    std::atomic<quint16> m_port;
    std::unique_ptr<QThread> m_thread;
    std::atomic_bool m_quit = false;
    QTcpSocket *m_program = nullptr; // of the thread
};
