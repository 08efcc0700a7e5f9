// SPDX-License-Identifier: MIT
#pragma once

#include "line/iodeviceline.h"

#include <QDeadlineTimer>
#include <QSerialPort>

/// A serial port at 9600 8N1.
///
/// It closes itself at the first error, because an open port would report its error again and again at full
/// load. A lost port is tried again at each tick while trying is quick; trying blocks, so an attempt that
/// took a time is not repeated before ten times that. A port that did not open at first is not tried again.
class SerialLine : public IoDeviceLine
{
    Q_OBJECT

public:
    explicit SerialLine(const QString &portName);
    ~SerialLine() override;

    bool open() override;
    void close() override;
    bool isOpen() const override { return m_port.isOpen(); }
    void tend() override;

protected:
    QIODevice &device() override { return m_port; }
    const QIODevice &device() const override { return m_port; }

    /// False leaves everything as it was.
    virtual bool openPort();

private:
    void onPortError();
    /// Some versions of Qt say nothing when a device goes away.
    void noticeVanishedDevice();
    void lose(const QString &reason);
    void tryAgain();

    QSerialPort m_port;
    /// What the port's name led to when it was opened.
    QString m_deviceBehindPort;
    /// How many ticks in a row it has led elsewhere.
    int m_ticksElsewhere = 0;
    QDeadlineTimer m_nextAttempt;
};
