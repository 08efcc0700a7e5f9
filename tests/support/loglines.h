// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Collects what is logged while it lives. One at a time.
class LogLines
{
public:
    LogLines();
    ~LogLines();

    QStringList lines() const { return m_lines; }
    /// How often exactly this line was logged.
    int count(const QString &line) const { return int(m_lines.count(line)); }
    bool contains(const QString &line) const { return m_lines.contains(line); }
    void clear() { m_lines.clear(); }

private:
    Q_DISABLE_COPY(LogLines)

    QStringList m_lines;
};
