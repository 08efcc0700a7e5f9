// SPDX-License-Identifier: MIT
#include "simbox/tcpline.h"
#include "simbox/traffictext.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace {

constexpr int patienceMs = 10000;

/// A program at the other end.
class Program : public QTcpSocket
{
public:
    explicit Program(quint16 port) { connectToHost(QHostAddress::LocalHost, port); }

    /// Waits for so many bytes, or with none for the end of the connection. "|" stands for the end.
    QString hears(int count = 0)
    {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < patienceMs && state() != UnconnectedState
               && (count == 0 || bytesAvailable() < count))
            waitForReadyRead(100);
        return trafficText(readAll()).remove("<CR><LF>") + (state() == UnconnectedState ? "|" : "");
    }
};

} // namespace

class TestTcpLine : public QObject
{
    Q_OBJECT

private slots:
    void oneProgramAtATime()
    {
        TcpLine line;
        QVERIFY(line.start());
        Program first(line.port());
        first.write("K1\r\nK0\r\n");
        QCOMPARE(first.hears(7), QString("ST=<11><00>"));
        Program second(line.port());
        QCOMPARE(second.hears(), QString("The box is in use by another program.|"));

        // What was meant for a program that has gone does not reach the next one, which may come at once.
        line.setFault(LineFault::delayed(200), 1);
        first.write("K0\r\nK");
        QVERIFY(first.waitForBytesWritten(patienceMs) && line.waitForReceived(3, patienceMs));
        first.abort();
        Program third(line.port());
        third.write("K2\r\nK0\r\n");
        QCOMPARE(third.hears(7), QString("ST=<13><00>"));
    }

    void theClockTurnsTheRotor()
    {
        TcpLine line({QHostAddress::LocalHost, 0}, SimulatedBox::Model::Rotator);
        QVERIFY(line.start());
        Program program(line.port());
        program.write("M090\r\n");
        QTRY_VERIFY(program.write("C\r\n") && program.hears(8) > "AZ=000");
    }

    void theProgramServesAndObeys()
    {
        QProcess box;
        box.start(SIMBOX, {"--listen", "0", "--model", "rotator"});
        QString printed;
        const auto waitForText = [&](const QRegularExpression &text) {
            QRegularExpressionMatch match;
            while (!(match = text.match(printed)).hasMatch() && box.waitForReadyRead(patienceMs))
                printed += QString::fromUtf8(box.readAllStandardOutput());
            return match;
        };
        const QString port =
            waitForText(QRegularExpression("comPortName=\"tcp://localhost:(\\d+)\"")).captured(1);
        QVERIFY2(!port.isEmpty(), qPrintable(printed));
        box.write("angle 123\nerror\n");
        QVERIFY(waitForText(QRegularExpression("Done: error")).hasMatch());
        Program program(port.toUShort());
        program.write("C\r\nC\r\n");
        QCOMPARE(program.hears(12), QString("?>AZ=123"));
        QVERIFY(waitForText(QRegularExpression("box says +AZ=123")).hasMatch());

        QProcess other;
        other.start(SIMBOX, {"--listen", port});
        QVERIFY(other.waitForFinished(patienceMs));
        QCOMPARE(other.exitCode(), 1);
        QCOMPARE(
            QString(other.readAllStandardError()).trimmed(),
            QString("vextral-simbox: Port %1 is in use by another program. Choose another one.").arg(port));

        box.write("quit\n");
        QVERIFY(box.waitForFinished(patienceMs));
        QCOMPARE(box.exitCode(), 0);
    }
};

QTEST_GUILESS_MAIN(TestTcpLine)
#include "tst_tcpline.moc"
