// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QTcpSocket>
#include <QtTest>

namespace {

constexpr int patienceMs = 10000;

} // namespace

class TestSimBox : public QObject
{
    Q_OBJECT

private slots:
    void theProgramServesAndObeys()
    {
        QProcess box;
        box.start(SIMBOX, {"--listen", "0", "--model", "rotator"});
        QString printed;
        const auto prints = [&](const char *text) {
            const auto isPrinted = [&] { return (printed += box.readAllStandardOutput()).contains(text); };
            return QTest::qWaitFor(isPrinted, patienceMs);
        };
        QVERIFY2(prints("Type help"), qPrintable(printed));
        const QString port = printed.section(" (", 0, 0).section(':', -1); // of tcp://localhost:PORT
        box.write("angle 123\nerror\n");
        QVERIFY(prints("Done: error"));
        QTcpSocket program;
        program.connectToHost(QHostAddress::LocalHost, port.toUShort());
        program.write("C\r\nC\r\n");
        QTRY_COMPARE(program.bytesAvailable(), 12);
        QCOMPARE(program.readAll(), QByteArray("?>\r\nAZ=123\r\n"));
        QVERIFY(prints(" AZ=123<CR><LF>"));

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

QTEST_GUILESS_MAIN(TestSimBox)
#include "tst_simbox.moc"
