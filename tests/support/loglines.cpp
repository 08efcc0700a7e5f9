#include "support/loglines.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex mutex;
QStringList collected;
QtMessageHandler formerHandler = nullptr;

void collect(QtMsgType, const QMessageLogContext &, const QString &message)
{
    const QMutexLocker locker(&mutex);
    collected << message;
}

} // namespace

LogLines::LogLines()
{
    clear();
    formerHandler = qInstallMessageHandler(collect);
}

LogLines::~LogLines()
{
    qInstallMessageHandler(formerHandler);
}

QStringList LogLines::lines() const
{
    const QMutexLocker locker(&mutex);
    return collected;
}

int LogLines::count(const QString &line) const
{
    return static_cast<int>(lines().count(line));
}

void LogLines::clear()
{
    const QMutexLocker locker(&mutex);
    collected.clear();
}
