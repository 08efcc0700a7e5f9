#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// Debian's serial-to-network server, serving one device over TCP on this machine.
class Ser2Net
{
public:
    static bool isInstalled() { return !program().isEmpty(); }

    Ser2Net(quint16 port, const QString &device);
    ~Ser2Net() { stop(); }

    /// It serves a moment later.
    void start();
    void stop();
    /// Keeps the process from running although the system goes on taking connections and bytes for it.
    void setStopped(bool stopped);

private:
    static QString program();

    QTemporaryDir m_folder;
    QProcess m_process;
};
