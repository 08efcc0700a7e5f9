// SPDX-License-Identifier: MIT
#pragma once

#include "simbox/linefault.h"
#include "simbox/simulatedbox.h"

#include <QByteArray>
#include <QList>
#include <QVector>

/// A simulated box whose line may be faulty: bytes of the program go in, and what is to travel back comes
/// out.
class FaultyBox
{
public:
    static constexpr int Forever = -1;

    explicit FaultyBox(SimulatedBox::Model model) : m_box(model) {}

    SimulatedBox &box() { return m_box; }

    /// The fault acts on the replies to the next `replies` commands to which it applies, then the line is
    /// good again. It replaces the former fault.
    void setFault(const LineFault &fault, int replies);
    /// The lines that are complete with these bytes, with their ends. Half a line is kept.
    QList<QByteArray> receive(const QByteArray &bytes);
    /// Lets the box handle a line. Nothing travels where there is no reply.
    QVector<LineFault::Portion> answer(const QByteArray &line);
    /// Drops half a line and a reply that is held back.
    void forgetDialogue();

    static QByteArray withoutLineEnd(const QByteArray &line);

private:
    SimulatedBox m_box;
    LineFault m_fault;
    int m_faultCount = 0;
    QByteArray m_held;
    QByteArray m_partialLine;
};
