// SPDX-License-Identifier: MIT
#include "line/line.h"

#include <QThread>

#include <utility>

Line::Line(QString portName) : m_portName(std::move(portName))
{
    m_state.portName = m_portName;
}

Line::~Line() = default;

void Line::pause(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(milliseconds));
}

void Line::noteAnswer(bool answered)
{
    if (answered && isOpen()) {
        m_state.kind = LineState::Kind::Answering;
        m_sinceAnswer.start();
    } else if (!answered && m_state.kind == LineState::Kind::Answering) {
        m_state.kind = LineState::Kind::Silent;
    }
}

LineState Line::state() const
{
    LineState state = m_state;
    if (state.kind == LineState::Kind::Listening || state.kind == LineState::Kind::Silent)
        state.silentSeconds = static_cast<int>(m_sinceAnswer.elapsed() / 1000);
    return state;
}

void Line::begin(bool silenceGoesOn)
{
    static int openings = 0;
    m_opening = ++openings;
    setState(LineState::Kind::Listening);
    if (!silenceGoesOn || !m_sinceAnswer.isValid())
        m_sinceAnswer.start();
}

void Line::setState(LineState state)
{
    m_state = std::move(state);
    m_state.portName = m_portName;
}

void Line::setState(LineState::Kind kind)
{
    LineState state;
    state.kind = kind;
    setState(std::move(state));
}

void Line::emitLater(void (Line::*signal)())
{
    QMetaObject::invokeMethod(
        this, [this, signal] { emit(this->*signal)(); }, Qt::QueuedConnection);
}

void Line::emitStateLater()
{
    QMetaObject::invokeMethod(
        this, [this] { emit stateChanged(state()); }, Qt::QueuedConnection);
}
