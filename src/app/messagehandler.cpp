#include "app/messagehandler.h"

#include "app/log.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstdio>

namespace {

CLog *currentLog = nullptr;

void echo(const QString &message)
{
    const QByteArray line = message.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, std::size_t(line.size()), stdout);
    std::fflush(stdout);
}

void handleMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    currentLog->write(message.toLatin1().constData());
    echo(message);
}

} // namespace

void installMessageHandler(CLog *log)
{
    currentLog = log;
    qInstallMessageHandler(handleMessage);
}

void removeMessageHandler()
{
    qInstallMessageHandler(nullptr);
    currentLog = nullptr;
}
