#include "device/linestate.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("LineState", source);
}

QString describeSilence(const QString &port, int seconds)
{
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

QString portNodePath(const QString &portName)
{
    return portName.startsWith(QLatin1Char('/')) ? portName : QLatin1String("/dev/") + portName;
}

LineState lineStateOfFailedOpen(const QString &portName, QSerialPort::SerialPortError error,
                                const QString &errorText)
{
    LineState state;
    state.portName = portName;
    state.detail = errorText;
    state.kind = LineState::Kind::Failed;
    if (error == QSerialPort::DeviceNotFoundError)
        state.kind = LineState::Kind::NoSuchPort;
    if (error != QSerialPort::PermissionError)
        return state;

    // The same error stands for "held by another program" and for "not allowed"; the node tells which.
    const QFileInfo node(portNodePath(portName));
    const bool mayUse = !node.exists() || (node.isReadable() && node.isWritable());
    state.kind = mayUse ? LineState::Kind::Busy : LineState::Kind::NoPermission;
    state.group = mayUse ? QString() : node.group();
    return state;
}

QString describe(const LineState &state)
{
    switch (state.kind) {
    case LineState::Kind::Closed:
        return text("No serial port is open.");
    case LineState::Kind::NoSuchPort:
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
    }
    return QString();
}
