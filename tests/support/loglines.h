// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Collects what is logged while it lives. One at a time.
class LogLines
{
public:
    LogLines()
    {
        s_lines = &m_lines;
        m_formerHandler = qInstallMessageHandler(collect);
    }
    ~LogLines() { qInstallMessageHandler(m_formerHandler); }

    QStringList lines() const { return m_lines; }
    void clear() { m_lines.clear(); }

private:
    Q_DISABLE_COPY(LogLines)

    static void collect(QtMsgType, const QMessageLogContext &, const QString &text) { *s_lines << text; }

    static inline QStringList *s_lines = nullptr;
    QStringList m_lines;
    QtMessageHandler m_formerHandler = nullptr;
};
