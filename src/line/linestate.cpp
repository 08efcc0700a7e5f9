// SPDX-License-Identifier: MIT
#include "line/linestate.h"

#include <QCoreApplication>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("LineState", source);
}

QString describeSilence(const QString &port, int seconds)
{
    if (seconds < 1)
        return text("%1 is open, but the box does not answer. Check its power and its cable.").arg(port);
    return text("%1 is open, but the box has not answered for %2 s. Check its power and its cable.")
        .arg(port)
        .arg(seconds);
}

QString describeNoPermission(const LineState &state)
{
    if (state.group.isEmpty())
        return text("You may not use %1.").arg(state.portName);
    return text("You may not use %1. It belongs to the group \"%2\": join that group and log in again.")
        .arg(state.portName, state.group);
}

} // namespace

QString describe(const LineState &state)
{
    switch (state.kind) {
    case LineState::Kind::Closed:
        return text("No serial port is open.");
    case LineState::Kind::NoSuchPort:
        if (state.portName.isEmpty())
            return text("No serial port is chosen. Choose one under File, Preferences.");
        return text("There is no serial port \"%1\". Choose another one under File, Preferences.")
            .arg(state.portName);
    case LineState::Kind::NoPermission:
        return describeNoPermission(state);
    case LineState::Kind::Busy:
        return text("%1 is in use by another program.").arg(state.portName);
    case LineState::Kind::Failed:
        return text("%1 could not be opened: %2").arg(state.portName, state.detail);
    case LineState::Kind::Listening:
        return state.silentSeconds < 1
                 ? text("%1 is open. Waiting for the box to answer.").arg(state.portName)
                 : describeSilence(state.portName, state.silentSeconds);
    case LineState::Kind::Answering:
        return text("Connected through %1.").arg(state.portName);
    case LineState::Kind::Silent:
        return describeSilence(state.portName, state.silentSeconds);
    case LineState::Kind::Lost:
        return text("%1 went away. It is opened again as soon as it is back.").arg(state.portName);
    case LineState::Kind::Connecting:
        return text("Connecting to %1.").arg(state.portName);
    case LineState::Kind::Refused:
        return text("%1 refuses the connection. It is tried again; check that the server runs there.")
            .arg(state.portName);
    case LineState::Kind::NameNotFound:
        return text("No server of the name in %1 is found. It is tried again.").arg(state.portName);
    case LineState::Kind::MalformedAddress:
        return text("\"%1\" is no address of a server. Write it as tcp://host:port.").arg(state.portName);
    }
    return QString();
}
