// SPDX-License-Identifier: MIT
#include "support/loglines.h"

namespace {

QStringList *collected = nullptr;
QtMessageHandler formerHandler = nullptr;

void collect(QtMsgType, const QMessageLogContext &, const QString &message)
{
    *collected << message;
}

} // namespace

LogLines::LogLines()
{
    collected = &m_lines;
    formerHandler = qInstallMessageHandler(collect);
}

LogLines::~LogLines()
{
    qInstallMessageHandler(formerHandler);
}
