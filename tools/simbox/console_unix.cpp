// SPDX-License-Identifier: MIT
#include "simbox/console.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int ReadSize = 4096;
int signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char byte = 0;
    if (write(signalPipe[1], &byte, 1) < 0)
        _exit(EXIT_FAILURE);
}

class OrderReader : public QSocketNotifier
{
public:
    OrderReader(std::function<void(const QString &)> obey, QObject *parent)
        : QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, parent), m_obey(std::move(obey))
    {
        connect(this, &QSocketNotifier::activated, this, &OrderReader::read);
    }

private:
    void read()
    {
        char buffer[ReadSize];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            setEnabled(false);
            return;
        }
        m_pending.append(buffer, int(count));
        int end = 0;
        while ((end = m_pending.indexOf('\n')) >= 0) {
            const QByteArray line = m_pending.left(end);
            m_pending.remove(0, end + 1);
            m_obey(QString::fromLocal8Bit(line));
        }
    }

    const std::function<void(const QString &)> m_obey;
    QByteArray m_pending;
};

} // namespace

void Console::occupyStandardDescriptors()
{
    int descriptor = open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = open("/dev/null", O_RDWR);
    if (descriptor >= 0)
        close(descriptor);
}

bool Console::quitOnSignals()
{
    if (pipe(signalPipe) != 0)
        return false;
    for (int end : signalPipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    for (int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, onSignal);
    // A reader that went away, and a terminal that belongs to somebody else, must not end the box.
    for (int number : {SIGPIPE, SIGTTIN, SIGTTOU})
        std::signal(number, SIG_IGN);
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, &QCoreApplication::quit);
    return true;
}

void Console::readOrders(const std::function<void(const QString &)> &obey)
{
    new OrderReader(obey, QCoreApplication::instance());
}

int Console::leave(int exitCode)
{
    return exitCode;
}
