#include "simbox/ptyline.h"
#include "simbox/traffictext.h"

#include <QDir>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

Q_DECLARE_METATYPE(LineFault)

namespace {

const QByteArray StatusReply("ST=\x1F\x01\r\n");
const QByteArray AngleReply("AZ=000\r\n");

bool openPort(QSerialPort &port, const PtyLine &line)
{
    port.setPortName(line.linkPath());
    return port.open(QIODevice::ReadWrite);
}

QByteArray readBytes(QSerialPort &port, int count)
{
    QByteArray bytes = port.readAll();
    while (bytes.size() < count && port.waitForReadyRead(3000))
        bytes += port.readAll();
    return bytes;
}

QByteArray ask(QSerialPort &port, const QByteArray &query, int replySize)
{
    port.write(query);
    port.waitForBytesWritten(1000);
    return readBytes(port, replySize);
}

int openDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
}

} // namespace

class TestPtyLine : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void everyByteIsRecordedAndEmptyLinesAreNoCommands();
    void faultsAsTheReaderSeesThem_data();
    void faultsAsTheReaderSeesThem();
    void delayAndSplitTakeTheirTime();
    void echoAndHangUpActOnCommandsWithoutReply();
    void theLineGoesAwayAndComesBackUnderTheSameName_data();
    void theLineGoesAwayAndComesBackUnderTheSameName();
    void aHundredHangUpsLeakNothing();
    void onlyALinkIsReplaced();
    void theTerminalIsRawAndAKilledProgramLeavesItFree();
    void theClockTurnsTheRotorOnlyWhenItIsReal();

private:
    QString link() const { return m_directory.filePath("box"); }

    QTemporaryDir m_directory;
    std::unique_ptr<PtyLine> m_line;
};

void TestPtyLine::init()
{
    m_line = std::make_unique<PtyLine>(link());
    m_line->withBox([](SimulatedBox &box) {
        for (const char *command : {"K1", "K2", "K3", "K4", "K5"})
            box.handle(command);
    });
    QVERIFY2(m_line->start(), qUtf8Printable(m_line->errorText()));
}

void TestPtyLine::everyByteIsRecordedAndEmptyLinesAreNoCommands()
{
    QSerialPort port;
    QVERIFY(openPort(port, *m_line));
    const QByteArray wire("M123\r\r\n\r\nL\r\r\n\r\nK9\r\nC\r\n");
    port.write(wire.left(3));
    QVERIFY(port.waitForBytesWritten(1000));
    QCOMPARE(ask(port, wire.mid(3), AngleReply.size()), AngleReply);
    QVERIFY(m_line->waitForReceived(4));
    QCOMPARE(m_line->receivedBytes(), wire);
    QCOMPARE(m_line->received(), (QList<QByteArray>{"M123\r\r\n", "L\r\r\n", "K9\r\n", "C\r\n"}));
    QCOMPARE(m_line->commands(), (QList<QByteArray>{"M123", "L", "K9", "C"}));
    QTRY_COMPARE(m_line->traffic().last().bytes, AngleReply);
    m_line->clearReceived();
    QVERIFY(!m_line->waitForReceived(1, 0));
}

void TestPtyLine::faultsAsTheReaderSeesThem_data()
{
    QTest::addColumn<LineFault>("fault");
    QTest::addColumn<QByteArray>("query");
    QTest::addColumn<QByteArray>("seen"); // up to the good angle reply that follows

    const auto row = [](const char *name, const LineFault &fault, const QByteArray &query,
                        const QByteArray &seen) { QTest::newRow(name) << fault << query << seen; };
    row("none", LineFault::none(), "K0\r\n", StatusReply);
    row("silence, not used up by K9", LineFault::silence(), "K9\r\nK0\r\n", "");
    row("late", LineFault::late(), "K0\r\n", StatusReply);
    row("cut at 4", LineFault::cutAfter(4), "K0\r\n", "ST=\x1F");
    row("cut before LF", LineFault::cutAfter(6), "K0\r\n", "ST=\x1F\x01\r");
    row("doubled", LineFault::doubled(), "K0\r\n", StatusReply + StatusReply);
    row("noise", LineFault::noise(4, 1), "K0\r\n", "\x25\xEB\x8C\x48\r\n");
    row("nuls", LineFault::nuls(3), "K0\r\n", QByteArray("\0\0\0\r\n", 5));
    row("flood", LineFault::flood(1000000), "K0\r\n", QByteArray(1000000, '~'));
    row("echo", LineFault::echo(), "K0\r\n", "K0\r\n" + StatusReply);
    row("other reply for K0", LineFault::otherReply(), "K0\r\n", AngleReply);
    row("other reply for C", LineFault::otherReply(), "C\r\n", StatusReply);
    row("angle of C", LineFault::angle("999"), "C\r\n", "AZ=999\r\n");
    row("angle of KG", LineFault::angle("400"), "KG\r\n", QByteArray("T=\x1F\x01") + "400\r\n");
    row("error", LineFault::error(), "K0\r\n", "?>\r\n");
    row("unknown query", LineFault::none(), "X\r\n", "?>\r\n");
}

void TestPtyLine::faultsAsTheReaderSeesThem()
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

void TestPtyLine::delayAndSplitTakeTheirTime()
{
    QSerialPort port;
    QVERIFY(openPort(port, *m_line));
    for (const LineFault &fault : {LineFault::delayed(60), LineFault::splitAfter(3, 60)}) {
        m_line->setFault(fault, 1);
        m_line->clearReceived();
        QCOMPARE(ask(port, "K0\r\n", StatusReply.size()), StatusReply);
        const auto traffic = m_line->traffic();
        QVERIFY(traffic.last().milliseconds - traffic.first().milliseconds >= 60);
    }
    QTRY_COMPARE(m_line->traffic().last().bytes, StatusReply.mid(3));
}

void TestPtyLine::echoAndHangUpActOnCommandsWithoutReply()
{
    QSerialPort port;
    QVERIFY(openPort(port, *m_line));
    m_line->setFault(LineFault::echo());
    QCOMPARE(ask(port, "K1\r\nK2\r\n", 8), QByteArray("K1\r\nK2\r\n"));
    m_line->setFault(LineFault::hangUp());
    ask(port, "K1\r\n", 0);
    QVERIFY(m_line->waitUntilDown());
    QCOMPARE(m_line->commands(), (QList<QByteArray>{"K1", "K2", "K1"}));
}

void TestPtyLine::theLineGoesAwayAndComesBackUnderTheSameName_data()
{
    QTest::addColumn<LineFault>("fault");
    QTest::addColumn<QByteArray>("seen");
    QTest::newRow("idle") << LineFault::none() << StatusReply;
    QTest::newRow("with a reply under way") << LineFault::delayed(60000) << QByteArray();
    QTest::newRow("instead of the reply") << LineFault::hangUp() << QByteArray();
    QTest::newRow("within the reply") << LineFault::hangUp(2) << QByteArray("ST");
}

void TestPtyLine::theLineGoesAwayAndComesBackUnderTheSameName()
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

void TestPtyLine::aHundredHangUpsLeakNothing()
{
    const int before = openDescriptors();
    for (int i = 0; i < 100; ++i) {
        m_line->hangUp();
        QVERIFY(m_line->restore());
        QSerialPort port;
        QVERIFY(openPort(port, *m_line));
        m_line->setFault(LineFault::hangUp(), 1);
        ask(port, "K0\r\n", 0);
        QVERIFY(m_line->waitUntilDown());
        QVERIFY(m_line->restore());
    }
    QCOMPARE(openDescriptors(), before);
}

void TestPtyLine::onlyALinkIsReplaced()
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

void TestPtyLine::theTerminalIsRawAndAKilledProgramLeavesItFree()
{
    const QByteArray path = link().toLocal8Bit();
    const int program = ::open(path, O_RDWR | O_NOCTTY);
    QVERIFY(program >= 0 && ::ioctl(program, TIOCEXCL) == 0);
    termios settings = {};
    QVERIFY(::tcgetattr(program, &settings) == 0 && (settings.c_lflag & (ECHO | ICANON)) == 0);
    ::close(program);

    int exclusive = -1;
    QTRY_VERIFY([&] {
        const int next = ::open(path, O_RDWR | O_NOCTTY); // fails for an ordinary user until the line is free
        if (next >= 0)
            ::ioctl(next, TIOCGEXCL, &exclusive);
        ::close(next);
        return exclusive == 0;
    }());
}

void TestPtyLine::theClockTurnsTheRotorOnlyWhenItIsReal()
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

QTEST_GUILESS_MAIN(TestPtyLine)
#include "tst_ptyline.moc"
