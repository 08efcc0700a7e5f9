// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "line/serialline.h"
#include "settings/settings.h"
#include "simbox/ptyline.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int attemptMs = 40;

/// Opens slowly, and not at all, once the test says so.
struct SlowLine : SerialLine
{
    using SerialLine::SerialLine;
    bool openPort() override
    {
        if (!isSlow)
            return SerialLine::openPort();
        ++attempts;
        QThread::msleep(attemptMs);
        return false;
    }

    bool isSlow = false;
    int attempts = 0;
};

} // namespace

class TestSerialLine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void init()
    {
        m_pty = std::make_unique<PtyLine>(m_folder.filePath("port"));
        QVERIFY(m_pty->start());
    }

    void thePortIsSetTo9600Baud8N1()
    {
        // Before the line, which keeps it to itself.
        const int terminal = ::open(qPrintable(m_pty->slavePath()), O_RDONLY | O_NOCTTY);
        SerialLine line(m_pty->linkPath());
        QVERIFY(line.open());
        termios found = {};
        QCOMPARE(tcgetattr(terminal, &found), 0);
        ::close(terminal);
        QCOMPARE(cfgetospeed(&found), speed_t(B9600));
        QCOMPARE(found.c_cflag & (CSIZE | CSTOPB | PARENB | CRTSCTS), tcflag_t(CS8));
        QCOMPARE(found.c_iflag & (IXON | IXOFF), tcflag_t(0));
    }

    void aPortThatCannotBeOpenedIsExplained()
    {
        CDeviceLumen4S controller{CSettings()};
        CVextralRemoteControlWidget panel;
        controller.setRemoteControlWidget(&panel);
        const CLedButton *power = panel.powerIndicator();
        const auto told = [&](const QString &port) {
            controller.close();
            controller.open(port);
            return power->toolTip();
        };
        QCOMPARE(told("/nowhere/ttyS9"), QString("There is no serial port \"/nowhere/ttyS9\"."
                                                 " Choose another one under File, Preferences."));
        QCOMPARE(told(""), QString("No serial port is chosen. Choose one under File, Preferences."));
        QFile plain(m_folder.filePath("plain"));
        QVERIFY(plain.open(QIODevice::WriteOnly));
        QVERIFY2(told(plain.fileName()).startsWith(plain.fileName() + " could not be opened: "),
                 qPrintable(power->toolTip()));
        const QString name = m_pty->linkPath();
        {
            QSerialPort other(name);
            QVERIFY(other.open(QIODevice::ReadWrite));
            QCOMPARE(told(name), name + " is in use by another program.");
        }
        told(name);
        QVERIFY(!power->isChecked());
        controller.monitore();
        QCOMPARE(power->toolTip(), "Connected through " + name + '.');
        QVERIFY(power->isChecked());
    }

    void anAttemptThatIsSlowIsSeldomRepeated()
    {
        SlowLine line(m_pty->linkPath());
        QVERIFY(line.open());
        QSignalSpy lost(&line, &Line::lost);
        m_pty->hangUp();
        QTRY_COMPARE(lost.size(), 1);
        line.isSlow = true;
        QElapsedTimer time;
        for (time.start(); time.elapsed() < 20 * attemptMs; QThread::msleep(2))
            line.tend();
        QVERIFY2(line.attempts >= 1 && line.attempts <= 2, qPrintable(QString::number(line.attempts)));

        line.isSlow = false;
        QSignalSpy back(&line, &Line::back);
        QVERIFY(m_pty->restore());
        for (time.start(); back.isEmpty() && time.elapsed() < 5000; QTest::qWait(2))
            line.tend();
        QCOMPARE(back.size(), 1);
        QVERIFY(line.isOpen());
    }

    void aLinkThatIsBeingReplacedIsNoLoss()
    {
        SerialLine line(m_pty->linkPath());
        QVERIFY(line.open());
        const int opening = line.opening();
        const QString aside = m_folder.filePath("aside");
        for (int time = 0; time < 2; ++time) {
            QVERIFY(QFile::rename(m_pty->linkPath(), aside));
            line.tend();
            QVERIFY(QFile::rename(aside, m_pty->linkPath()));
            line.tend();
        }
        QCOMPARE(line.opening(), opening);

        QVERIFY(QFile::rename(m_pty->linkPath(), aside));
        line.tend();
        line.tend();
        QVERIFY(!line.isOpen());
        QCOMPARE(line.opening(), 0);
        QVERIFY(QFile::rename(aside, m_pty->linkPath()));
        line.tend();
        QVERIFY(line.isOpen() && line.opening() != opening);
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PtyLine> m_pty;
};

QTEST_MAIN(TestSerialLine)
#include "tst_serialline.moc"
