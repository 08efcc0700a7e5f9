#include "simbox/ptyline.h"
#include "simbox/traffictext.h"

#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(LineFault)

namespace {

const QByteArray StatusReply("ST=\x1F\x01\r\n");
const QByteArray AngleReply("AZ=000\r\n");

bool openPort(QSerialPort &port, const PtyLine &line)
{
    port.setPortName(line.linkPath());
    return port.open(QIODevice::ReadWrite);
}

QByteArray ask(QSerialPort &port, const QByteArray &query, int replySize)
{
    port.write(query);
    port.waitForBytesWritten(1000);
    QByteArray bytes = port.readAll();
    while (bytes.size() < replySize && port.waitForReadyRead(3000))
        bytes += port.readAll();
    return bytes;
}

} // namespace

class TestPtyLine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_line = std::make_unique<PtyLine>(link());
        m_line->withBox([](SimulatedBox &box) {
            for (const char *command : {"K1", "K2", "K3", "K4", "K5"})
                box.handle(command);
        });
        QVERIFY2(m_line->start(), qUtf8Printable(m_line->errorText()));
    }

    void faultsAsTheReaderSeesThem_data()
    {
        QTest::addColumn<LineFault>("fault");
        QTest::addColumn<QByteArray>("query");
        QTest::addColumn<QByteArray>("seen"); // up to the good angle reply that follows

        const auto row = [](const char *name, const LineFault &fault, const QByteArray &query,
                            const QByteArray &seen) { QTest::newRow(name) << fault << query << seen; };
        row("none", LineFault::none(), "K0\r\n", StatusReply);
        row("silence, not used up by K9", LineFault::silence(), "K9\r\nK0\r\n", "");
        row("cut at 4", LineFault::cutAfter(4), "K0\r\n", "ST=\x1F");
        row("doubled", LineFault::doubled(), "K0\r\n", StatusReply + StatusReply);
        row("noise", LineFault::noise(4, 1), "K0\r\n", "\x25\xEB\x8C\x48\r\n");
        row("flood", LineFault::flood(1000000), "K0\r\n", QByteArray(1000000, '~'));
        row("echo", LineFault::echo(), "K0\r\n", "K0\r\n" + StatusReply);
        row("other reply for K0", LineFault::otherReply(), "K0\r\n", AngleReply);
        row("angle of KG", LineFault::angle("400"), "KG\r\n", QByteArray("T=\x1F\x01") + "400\r\n");
        row("unknown query", LineFault::none(), "X\r\n", "?>\r\n");
    }
    void faultsAsTheReaderSeesThem()
    {
        QFETCH(LineFault, fault);
        QFETCH(QByteArray, query);
        QFETCH(QByteArray, seen);

        QSerialPort port;
        QVERIFY(openPort(port, *m_line));
        m_line->setFault(fault, 1);
        // The good reply that follows proves that nothing else is under way.
        const QByteArray bytes = ask(port, query + "C\r\n", seen.size() + AngleReply.size());
        QVERIFY2(bytes == seen + AngleReply, qUtf8Printable(trafficText(bytes)));
    }

    void theLineGoesAwayAndComesBackUnderTheSameName_data()
    {
        QTest::addColumn<LineFault>("fault");
        QTest::addColumn<QByteArray>("seen");
        QTest::newRow("with a reply under way") << LineFault::delayed(60000) << QByteArray();
        QTest::newRow("instead of the reply") << LineFault::hangUp() << QByteArray();
        QTest::newRow("within the reply") << LineFault::hangUp(2) << QByteArray("ST");
    }
    void theLineGoesAwayAndComesBackUnderTheSameName()
    {
        QFETCH(LineFault, fault);
        QFETCH(QByteArray, seen);

        QSerialPort port;
        QVERIFY(openPort(port, *m_line));
        m_line->setFault(fault, 1);
        const bool isHangUp = fault.actsOn(QByteArray());
        QCOMPARE(ask(port, "K0\r\n", seen.size()), seen);
        QVERIFY(m_line->waitForReceived(1));
        if (!isHangUp)
            m_line->hangUp();
        QTRY_VERIFY(port.error() != QSerialPort::NoError && !m_line->isUp());
        QVERIFY(!QFileInfo(link()).isSymLink());
        port.close();

        QVERIFY(m_line->restore());
        QSerialPort returned;
        QVERIFY(openPort(returned, *m_line));
        QCOMPARE(ask(returned, "K0\r\n", StatusReply.size()), StatusReply);
    }

    void onlyALinkIsReplaced()
    {
        PtyLine successor(link());
        QVERIFY(successor.start());
        m_line.reset(); // leaves the link alone, which is not its own any more
        QCOMPARE(QFileInfo(link()).symLinkTarget(), successor.slavePath());
        successor.hangUp();

        QFile file(link());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(!successor.start());
        QVERIFY(successor.errorText().contains(link()));
        QVERIFY(!successor.isUp() && file.remove());
    }

    void theClockTurnsTheRotorOnlyWhenItIsReal()
    {
        const auto reading = [](PtyLine &line) {
            QByteArray reply;
            line.withBox([&reply](SimulatedBox &box) { reply = box.handle("C"); });
            return reply;
        };
        PtyLine real(link(), SimulatedBox::Model::Rotator);
        PtyLine manual(link(), SimulatedBox::Model::Rotator, PtyLine::Clock::Manual);
        for (PtyLine *line : {&real, &manual})
            line->withBox([](SimulatedBox &box) { box.handle("M090"); });
        QTRY_VERIFY(reading(real) != AngleReply);
        QCOMPARE(reading(manual), AngleReply);
        manual.advance(60000);
        QCOMPARE(reading(manual), QByteArray("AZ=090\r\n"));
    }

private:
    QString link() const { return m_directory.filePath("box"); }

    QTemporaryDir m_directory;
    std::unique_ptr<PtyLine> m_line;
};

QTEST_GUILESS_MAIN(TestPtyLine)
#include "tst_ptyline.moc"
