// SPDX-License-Identifier: MIT
#include "line/iodeviceline.h"

#include <QIODevice>

namespace {

/// What to hand to a device in text mode so that the box hears CR LF for every LF. On Windows the text mode
/// translates by itself.
QByteArray onTheWire(const QByteArray &text)
{
#ifdef Q_OS_WIN
    return text;
#else
    return QByteArray(text).replace("\n", "\r\n");
#endif
}

} // namespace

bool IoDeviceLine::write(const QByteArray &text, int waitMs)
{
    // A device that was closed with bytes still to write would wait for them in vain.
    if (!isOpen())
        return false;
    device().write(onTheWire(text));
    return device().waitForBytesWritten(waitMs);
}

QByteArray IoDeviceLine::readLine(int waitMs)
{
    // The wait is for new bytes only, so its answer says nothing about a line that is there already.
    if (isOpen())
        device().waitForReadyRead(waitMs);
    // The wait may have found that the line is gone.
    if (!isOpen())
        return QByteArray();
    if (bytesAvailable() > floodBytes) {
        discard();
        return QByteArray();
    }
    return device().canReadLine() ? device().readLine() : QByteArray();
}

qint64 IoDeviceLine::bytesAvailable() const
{
    return isOpen() ? device().bytesAvailable() : 0;
}

void IoDeviceLine::discard()
{
    if (bytesAvailable() > 0)
        qDebug("CVextralRemoteControl - noise on the line, %d bytes thrown away",
               static_cast<int>(device().readAll().size()));
}
