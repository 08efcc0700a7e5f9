// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class BoxLine;

/// Understands the orders that a person types to steer a simulated box: "rx 2 on", "delay 300", "hangup".
class BoxOrders
{
public:
    /// The line must outlive this object; orders are obeyed in the thread that owns the line.
    explicit BoxOrders(BoxLine &line) : m_line(line) {}

    /// Obeys one order and returns what to show for it: an outcome, or what was wrong. May span several
    /// lines.
    QString obey(const QString &order);
    /// True after "quit".
    bool wantsToQuit() const { return m_wantsToQuit; }

private:
    QString status();

    BoxLine &m_line;
    bool m_wantsToQuit = false;
};
