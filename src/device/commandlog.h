// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// The frame that sets commands apart in the log.

inline void logSeparator()
{
    qDebug("############################################");
}

inline void logCommand(const char *text)
{
    logSeparator();
    qDebug("%s", text);
    logSeparator();
}
