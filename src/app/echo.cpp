// SPDX-License-Identifier: MIT
#include "app/echo.h"

#include <QFile>
#include <QMutexLocker>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

namespace {

constexpr int longestEndMs = 500;

int standardOutput()
{
#ifdef Q_OS_WIN
    return _fileno(stdout);
#else
    return fileno(stdout);
#endif
}

/// Makes a write to a closed pipe fail instead of ending the program.
void surviveGoneReaders()
{
#ifdef Q_OS_UNIX
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
#endif
}

} // namespace

void Echo::write(const QByteArray &line)
{
    const QMutexLocker locker(&m_mutex);
    if (m_waiting.size() + line.size() > capacity)
        return;
    m_waiting += line;
    m_changed.wakeOne();
}

bool Echo::finish()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_isEnding = true;
        m_changed.wakeOne();
    }
    return wait(longestEndMs);
}

void Echo::run()
{
    surviveGoneReaders();
    QFile output;
    output.open(standardOutput(), QIODevice::WriteOnly | QIODevice::Unbuffered);
    QMutexLocker locker(&m_mutex);
    while (!m_isEnding || !m_waiting.isEmpty()) {
        if (m_waiting.isEmpty()) {
            m_changed.wait(&m_mutex);
            continue;
        }
        QByteArray lines;
        lines.swap(m_waiting);
        locker.unlock();
        output.write(lines);
        locker.relock();
    }
}
