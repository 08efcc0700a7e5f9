// SPDX-License-Identifier: MIT
#pragma once

#include "line/line.h"

class QIODevice;

/// A line through one of Qt's sequential devices: what serial ports and sockets do in the same way.
class IoDeviceLine : public Line
{
    Q_OBJECT

public:
    using Line::Line;

    bool write(const QByteArray &text, int waitMs) override;
    QByteArray readLine(int waitMs) override;
    qint64 bytesAvailable() const override;
    void discard() override;

protected:
    /// The device behind the line. It is in text mode while it is open.
    virtual QIODevice &device() = 0;
    virtual const QIODevice &device() const = 0;
};
