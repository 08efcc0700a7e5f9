#include "simbox/ptyline.h"
#include "simbox/traffictext.h"

#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QByteArray angleReply("AZ=000\r\n");

} // namespace

// What a fault does to a reply shows in the tests of the program.
class TestPtyLine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_line = std::make_unique<PtyLine>(link(), SimulatedBox::Model::Rotator);
        QVERIFY2(m_line->start(), qUtf8Printable(m_line->errorText()));
    }

    void aFaultWaitsForItsReplyAndIsOverThen()
    {
        const QPair<LineFault, QByteArray> faults[] = {{LineFault::silence(), ""},
                                                       {LineFault::angle("400"), "T=\x10@400\r\n"},
                                                       {LineFault::flood(1000000), QByteArray(1000000, '~')}};
        for (const auto &[fault, seen] : faults) {
            m_line->setFault(fault, 1);
            const QByteArray bytes = ask("K9\r\nKG\r\nC\r\n", seen.size() + angleReply.size());
            QVERIFY2(bytes == seen + angleReply, qUtf8Printable(trafficText(bytes)));
        }
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

    void theClockTurnsTheRotor()
    {
        ask("M090\r\n", 0);
        QTRY_VERIFY(ask("C\r\n", angleReply.size()) > angleReply);
    }

private:
    QString link() const { return m_directory.filePath("box"); }

    QByteArray ask(const QByteArray &query, int replySize) const
    {
        QSerialPort port(link());
        port.open(QIODevice::ReadWrite);
        port.write(query);
        port.waitForBytesWritten(1000);
        QByteArray bytes = port.readAll();
        while (bytes.size() < replySize && port.waitForReadyRead(3000))
            bytes += port.readAll();
        return bytes;
    }

    QTemporaryDir m_directory;
    std::unique_ptr<PtyLine> m_line;
};

QTEST_GUILESS_MAIN(TestPtyLine)
#include "tst_ptyline.moc"
