// SPDX-License-Identifier: MIT
#include "simbox/console.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

void Console::occupyStandardDescriptors() {}

bool Console::quitOnSignals()
{
    return true; // Ctrl+C ends the process at once, and of a TCP port nothing is left then
}

void Console::readOrders(const std::function<void(const QString &)> &obey)
{
    // There is nothing to wait on that works for a console, a pipe and a file alike.
    std::thread([obey] {
        std::string line;
        while (std::getline(std::cin, line)) {
            const QString order = QString::fromLocal8Bit(line.c_str());
            QMetaObject::invokeMethod(QCoreApplication::instance(), [obey, order] { obey(order); });
        }
    }).detach();
}

int Console::leave(int exitCode)
{
    // The reading thread cannot be woken, and must not outlive what it uses.
    std::fflush(nullptr);
    std::_Exit(exitCode);
}
