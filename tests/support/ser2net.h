// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>

/// Debian's serial-to-network server, serving one device over TCP on this machine.
class Ser2Net
{
public:
    static bool isInstalled() { return !program().isEmpty(); }

    Ser2Net(quint16 port, const QString &device)
    {
        QFile file(m_folder.filePath("ser2net.yaml"));
        file.open(QIODevice::WriteOnly);
        file.write(QString("connection: &box\n"
                           "  accepter: tcp,localhost,%1\n"
                           "  connector: serialdev,%2,9600n81,local\n")
                       .arg(port)
                       .arg(device)
                       .toUtf8());
        m_process.setProgram(program());
        m_process.setArguments({"-n", "-c", file.fileName()});
    }
    ~Ser2Net() { stop(); }

    /// It serves a moment later.
    void start() { m_process.start(); }
    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        setStopped(false);
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished(5000);
    }
    /// Keeps the process from running although the system goes on taking connections and bytes for it.
    void setStopped(bool stopped) { kill(pid_t(m_process.processId()), stopped ? SIGSTOP : SIGCONT); }

private:
    static QString program()
    {
        return QStandardPaths::findExecutable("ser2net", {"/usr/sbin", "/usr/bin", "/usr/local/sbin"});
    }

    QTemporaryDir m_folder;
    QProcess m_process;
};
