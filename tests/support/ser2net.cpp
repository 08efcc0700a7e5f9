#include "support/ser2net.h"

#include <QFile>
#include <QStandardPaths>

#include <csignal>

namespace {

constexpr int patienceMs = 5000;

} // namespace

QString Ser2Net::program()
{
    return QStandardPaths::findExecutable("ser2net", {"/usr/sbin", "/usr/bin", "/usr/local/sbin"});
}

Ser2Net::Ser2Net(quint16 port, const QString &device)
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

void Ser2Net::start()
{
    m_process.start();
    m_process.waitForStarted(patienceMs);
}

void Ser2Net::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    setStopped(false);
    m_process.terminate();
    if (!m_process.waitForFinished(patienceMs))
        m_process.kill();
    m_process.waitForFinished(patienceMs);
}

void Ser2Net::setStopped(bool stopped)
{
    kill(pid_t(m_process.processId()), stopped ? SIGSTOP : SIGCONT);
}
