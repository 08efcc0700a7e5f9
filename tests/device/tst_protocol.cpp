#include "device/devicestatus.h"
#include "device/protocol.h"

#include <QTest>

using namespace Protocol;

namespace {

/// What a port in text mode hands out for the bytes on the wire: lines, CR LF at their end folded to LF.
QList<QByteArray> linesFromPort(QByteArray wire)
{
    QList<QByteArray> lines;
    for (int end = wire.indexOf('\n'); end >= 0; end = wire.indexOf('\n')) {
        QByteArray line = wire.left(end + 1);
        wire.remove(0, end + 1);
        if (line.endsWith("\r\n"))
            line.replace(line.size() - 2, 2, "\n");
        lines << line;
    }
    return lines;
}

/// Reads line after line as the status reader does; an error reply leaves the status invalid.
CDeviceStatus statusFromWire(const StatusQuery &query, const QByteArray &wire)
{
    CDeviceStatus status;
    QByteArray buffer;
    const QList<QByteArray> lines = linesFromPort(wire);
    for (int round = 0; round < query.rounds && round < lines.size(); ++round) {
        buffer += lines[round];
        if (isErrorReply(buffer))
            return status;
        if (isStatusReplyComplete(buffer))
            break;
    }
    const StatusReply reply = decodeStatusReply(query, buffer);
    status.valid = reply.kind == StatusReply::Kind::Good;
    if (status.valid)
        decodeStatusBytes(status, reply.a, reply.b);
    status.angle = reply.angle;
    return status;
}

bool isStatusOf(const CDeviceStatus &status, int a, int b)
{
    for (int i = 0; i < 4; ++i) {
        if (status.antennaRx[i] != bool(a >> i & 1) || status.antennaTx[i] != bool(b >> i & 1))
            return false;
    }
    return status.relayBoxId == a / 16 && status.auxFlag == bool(b & 16)
        && status.rotorSelected[1] == bool(b & 32) && status.rotorSelected[0] == bool(b & 64)
        && status.moving == bool(b & 128);
}

} // namespace

class TestProtocol : public QObject
{
    Q_OBJECT

private slots:
    void commandsReachTheWireAsTheBoxExpectsThem_data();
    void commandsReachTheWireAsTheBoxExpectsThem();
    void allPairsOfStatusBytesButTwoAreUnderstood();
    void statusRepliesAreJudgedByLengthPrefixAndErrorMark_data();
    void statusRepliesAreJudgedByLengthPrefixAndErrorMark();
    void fullStatusTakesBitsFromBytesAndAngleFromText_data();
    void fullStatusTakesBitsFromBytesAndAngleFromText();
    void angleRepliesAreReadAtTheirPositions_data();
    void angleRepliesAreReadAtTheirPositions();
    void aReplyIsDumpedBitByBit();
};

void TestProtocol::commandsReachTheWireAsTheBoxExpectsThem_data()
{
    QTest::addColumn<QByteArray>("composed");
    QTest::addColumn<QByteArray>("wire");
    const auto row = [](const char *name, const QByteArray &composed, const QByteArray &wire) {
        QTest::newRow(name) << composed << wire;
    };
    row("M 359.9", rotateToCommand(359.9), "M359\r\r\n\r\n");
    row("M 7", rotateToCommand(7), "M007\r\r\n\r\n");
    row("M -0.5", rotateToCommand(-0.5), "M000\r\r\n\r\n");
    row("M -5", rotateToCommand(-5), "M-05\r\r\n\r\n");
    row("M 1000", rotateToCommand(1000), "M1000\r\r\n\r\n");
    row("CCW", rotateCCWCommand(), "L\r\r\n\r\n");
    row("CW", rotateCWCommand(), "R\r\r\n\r\n");
    row("stop", stopCommand(), "S\r\r\n\r\n");
    row("K9", toggleCommand(9), "K9\r\n");
    row("C", angleQuery(), "C\r\n");
    row("K0", statusQuery.request, "K0\r\n");
    row("KG", statusAndAngleQuery.request, "KG\r\n");
}

void TestProtocol::commandsReachTheWireAsTheBoxExpectsThem()
{
    QFETCH(QByteArray, composed);
    QFETCH(QByteArray, wire);
#ifdef Q_OS_WIN
    QCOMPARE(onTheWire(composed), composed);
    composed.replace("\n", "\r\n"); // what the port's text mode does there
    QCOMPARE(composed, wire);
#else
    QCOMPARE(onTheWire(composed), wire);
#endif
}

void TestProtocol::allPairsOfStatusBytesButTwoAreUnderstood()
{
    QList<QPair<int, int>> lost;
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const QByteArray reply = QByteArray("ST=") + char(a) + char(b) + "\r\n";
            const CDeviceStatus status = statusFromWire(statusQuery, reply);
            if (!status.valid)
                lost << qMakePair(a, b);
            else
                QVERIFY2(isStatusOf(status, a, b), qPrintable(QStringLiteral("%1 %2").arg(a).arg(b)));
        }
    }
    // 0D 0A before the line end folds to one byte; 3F 3E spells the error mark.
    const QList<QPair<int, int>> expected{{0x0D, 0x0A}, {0x3F, 0x3E}};
    QCOMPARE(lost, expected);
}

void TestProtocol::statusRepliesAreJudgedByLengthPrefixAndErrorMark_data()
{
    using Kind = StatusReply::Kind;
    QTest::addColumn<QByteArray>("buffer");
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("error");
    QTest::newRow("nothing") << QByteArray() << int(Kind::Empty) << false;
    QTest::newRow("one line end") << QByteArray("\n") << int(Kind::Short) << false;
    QTest::newRow("five bytes") << QByteArray("ST=A\n") << int(Kind::Short) << false;
    QTest::newRow("six bytes") << QByteArray("ST=AB\n") << int(Kind::Good) << false;
    QTest::newRow("in two lines") << QByteArray("ST=\nB\n") << int(Kind::Good) << false;
    QTest::newRow("longer") << QByteArray("ST=AB and more\n") << int(Kind::Good) << false;
    QTest::newRow("small letters") << QByteArray("st=AB\n") << int(Kind::WrongContent) << false;
    QTest::newRow("the other query's reply") << QByteArray("AZ=123\n") << int(Kind::WrongContent) << false;
    QTest::newRow("prefix behind a zero") << QByteArray("\0ST=AB\n", 7) << int(Kind::WrongContent) << false;
    QTest::newRow("refused") << QByteArray("?>\n") << int(Kind::Short) << true;
    QTest::newRow("refused within noise") << QByteArray("xxx?>yyy\n") << int(Kind::WrongContent) << true;
    QTest::newRow("mark broken by a line end") << QByteArray("?\n>\n") << int(Kind::Short) << false;
    QTest::newRow("mark behind a zero") << QByteArray("\0?>\n", 4) << int(Kind::Short) << false;
}

void TestProtocol::statusRepliesAreJudgedByLengthPrefixAndErrorMark()
{
    QFETCH(QByteArray, buffer);
    QFETCH(int, kind);
    QFETCH(bool, error);
    QCOMPARE(int(decodeStatusReply(statusQuery, buffer).kind), kind);
    QCOMPARE(isErrorReply(buffer), error);
}

void TestProtocol::fullStatusTakesBitsFromBytesAndAngleFromText_data()
{
    QTest::addColumn<QByteArray>("wire");
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<double>("angle");
    QTest::newRow("plain") << QByteArray("T=\x11\xC0"
                                         "123\r\n")
                           << 0x11 << 0xC0 << 123.0;
    QTest::newRow("a zero status byte ends the text") << QByteArray("T=\x00\x40"
                                                                    "123\r\n",
                                                                    9)
                                                      << 0 << 0x40 << 0.0;
    QTest::newRow("in two lines") << QByteArray("T\r\nAB123\r\n") << int('A') << int('B') << 23.0;
    QTest::newRow("no number") << QByteArray("T=ABxyz\r\n") << int('A') << int('B') << 0.0;
}

void TestProtocol::fullStatusTakesBitsFromBytesAndAngleFromText()
{
    QFETCH(QByteArray, wire);
    QFETCH(int, a);
    QFETCH(int, b);
    QFETCH(double, angle);
    const CDeviceStatus status = statusFromWire(statusAndAngleQuery, wire);
    QVERIFY(status.valid);
    QVERIFY(isStatusOf(status, a, b));
    QCOMPARE(status.angle, angle);
}

void TestProtocol::angleRepliesAreReadAtTheirPositions_data()
{
    QTest::addColumn<QByteArray>("buffer");
    QTest::addColumn<double>("angle"); // -1: refused
    QTest::newRow("AZ=123") << QByteArray("AZ=123\n") << 123.0;
    QTest::newRow("short number") << QByteArray("AZ=5\n") << 5.0;
    QTest::newRow("no number") << QByteArray("AZ=\n") << 0.0;
    QTest::newRow("no separator") << QByteArray("az123\n") << 23.0;
    QTest::newRow("mixed case") << QByteArray("aZ:007 more\n") << 7.0;
    QTest::newRow("split by a line end") << QByteArray("A\nZ=045\n") << 45.0;
    QTest::newRow("not a finite number") << QByteArray("AZ=nan\n") << 0.0;
    QTest::newRow("infinite") << QByteArray("AZ=inf\n") << 0.0;
    QTest::newRow("beyond any turn") << QByteArray("AZ=1e9\n") << 0.0;
    QTest::newRow("another line first") << QByteArray("ST=AB\nAZ=123\n") << -1.0;
    QTest::newRow("nothing") << QByteArray() << -1.0;
}

void TestProtocol::angleRepliesAreReadAtTheirPositions()
{
    QFETCH(QByteArray, buffer);
    QFETCH(double, angle);
    QCOMPARE(decodeAngle(buffer).value_or(-1.0), angle);
}

void TestProtocol::aReplyIsDumpedBitByBit()
{
    QCOMPARE(dumpLines(QStringLiteral("C"), QByteArray()),
             QStringList{QStringLiteral("Resposta de [C]: zero bytes")});
    const QStringList expected{QStringLiteral("Resposta de [K0]: 2 bytes"),
                               QStringLiteral("Byte [1 de 2]: 1 0 1 0 0 1 0 1"),
                               QStringLiteral("Byte [2 de 2]: 0 0 0 0 1 0 1 0")};
    QCOMPARE(dumpLines(QStringLiteral("K0"), QByteArray("\xA5\n")), expected);
}

QTEST_GUILESS_MAIN(TestProtocol)
#include "tst_protocol.moc"
