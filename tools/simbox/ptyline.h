// SPDX-License-Identifier: MIT
#pragma once

#include "simbox/boxline.h"

#include <atomic>
#include <thread>

/// Serves a simulated box on a pseudo-terminal behind a stable symbolic link. Linux only.
///
///     program --opens--> link --> slave side | master side <-- thread of this object
///
/// The thread lives while the line is up. The slave side is raw and stays open here as well: otherwise a read
/// on the master fails whenever the program has the port closed.
class PtyLine : public BoxLine
{
public:
    explicit PtyLine(QString linkPath, SimulatedBox::Model model = SimulatedBox::Model::StackSwitch,
                     Clock clock = Clock::Real);
    /// Hangs up.
    ~PtyLine() override;

    /// Opens the pseudo-terminal, puts the link there and serves it. A link of the same name is replaced;
    /// anything else of that name is refused.
    bool start() override;
    /// As when an adapter is pulled out: pseudo-terminal closed, link removed.
    void hangUp() override;

    QString portName() const override { return m_linkPath; }
    QString linkPath() const { return m_linkPath; }
    /// The pseudo-terminal behind the link while the line is up, for example "/dev/pts/3".
    QString slavePath() const { return place(); }

protected:
    qint64 deliver(const char *bytes, qint64 size) override;

private:
    bool openTerminal();
    bool placeLink();
    void removeLink();
    void closeTerminal();
    void joinThread();

    void serve();
    void noticeClosing();
    void readCommands();

    const QString m_linkPath;
    const int m_wake;
    std::thread m_thread;
    std::atomic_bool m_quit = false;

    // Of the thread while it runs.
    int m_master = -1;
    int m_slave = -1;
    int m_watch = -1;
    QString m_slavePath;
};
