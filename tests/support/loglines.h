#pragma once

#include <QString>
#include <QStringList>

/// Collects what is logged while it lives. One at a time.
class LogLines
{
public:
    LogLines();
    ~LogLines();
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    QStringList lines() const;
    /// How often exactly this line was logged.
    int count(const QString &line) const;
    bool contains(const QString &line) const { return count(line) > 0; }
    void clear();
};
