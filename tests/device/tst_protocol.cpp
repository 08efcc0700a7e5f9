// SPDX-License-Identifier: MIT
#include "device/devicestatus.h"
#include "device/protocol.h"
#include "device/replyreader.h"

#include <QTest>

using namespace Protocol;
using Kind = StatusReply::Kind;

namespace {

/// What the status reader makes of these bytes on the wire: a port in text mode hands them out line by line,
/// CR LF folded to LF.
StatusReply replyFromWire(const StatusQuery &query, const QByteArray &wire)
{
    QList<QByteArray> lines = wire.split('\n');
    lines.removeLast(); // has no line end
    ReplyReader reader = ReplyReader::forStatus(query);
    for (const QByteArray &line : lines) {
        const auto progress = reader.feed((line.endsWith('\r') ? line.chopped(1) : line) + '\n');
        if (progress == ReplyReader::Progress::Refused)
            return {};
        if (progress != ReplyReader::Progress::Pending)
            break;
    }
    return decodeStatusReply(query, reader.bytes());
}

bool isStatusOf(int a, int b)
{
    CDeviceStatus status;
    decodeStatusBytes(status, quint8(a), quint8(b));
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
    void azimuthsAreTruncatedToAtLeastThreeDigits()
    {
        QCOMPARE(rotateToCommand(359.9), QByteArray("M359\r\n\n"));
        QCOMPARE(rotateToCommand(7), QByteArray("M007\r\n\n"));
        QCOMPARE(rotateToCommand(-0.5), QByteArray("M000\r\n\n"));
        QCOMPARE(rotateToCommand(-5), QByteArray("M-05\r\n\n"));
        QCOMPARE(rotateToCommand(1000), QByteArray("M1000\r\n\n"));
    }

    void allPairsOfStatusBytesButTwoAreUnderstood()
    {
        QList<QPair<int, int>> lost;
        for (int a = 0; a < 256; ++a) {
            for (int b = 0; b < 256; ++b) {
                const StatusReply reply =
                    replyFromWire(statusQuery, QByteArray("ST=") + char(a) + char(b) + "\r\n");
                if (reply.kind != Kind::Good || reply.a != a || reply.b != b)
                    lost << qMakePair(a, b);
                QVERIFY2(isStatusOf(a, b), qPrintable(QString("%1 %2").arg(a).arg(b)));
            }
        }
        // 0D 0A before the line end folds to one byte; 3F 3E spells the error mark.
        QCOMPARE(lost, (QList<QPair<int, int>>{{0x0D, 0x0A}, {0x3F, 0x3E}}));
    }

    void statusRepliesAreJudgedByLengthPrefixAndErrorMark()
    {
        const struct
        {
            QByteArray buffer;
            Kind kind;
            bool isError = false;
        } rows[] = {{"", Kind::Empty},
                    {"ST=A\n", Kind::Short},
                    {"ST=AB\n", Kind::Good},
                    {"ST=\nB\n", Kind::Good},
                    {"st=AB\n", Kind::WrongContent},
                    {QByteArray("\0ST=AB\n", 7), Kind::WrongContent},
                    {"xxx?>yyy\n", Kind::WrongContent, true},
                    {"?\n>\n", Kind::Short},
                    {QByteArray("\0?>\n", 4), Kind::Short}};
        for (const auto &row : rows) {
            QVERIFY2(decodeStatusReply(statusQuery, row.buffer).kind == row.kind, row.buffer.toHex());
            QVERIFY2(isErrorReply(row.buffer) == row.isError, row.buffer.toHex());
        }
    }

    void fullStatusTakesBitsFromBytesAndAngleFromText()
    {
        const std::pair<QByteArray, QString> rows[] = {
            {"T=AB123\r\n", "65 66 123"},
            {QByteArray("T=\0B123\r\n", 9), "0 66 0"}, // a zero status byte ends the text
            {"T\r\nAB123\r\n", "65 66 23"},
            {"T=ABxyz\r\n", "65 66 0"}};
        for (const auto &[wire, expected] : rows) {
            const StatusReply reply = replyFromWire(statusAndAngleQuery, wire);
            QVERIFY2(reply.kind == Kind::Good, wire.toHex());
            QCOMPARE(QString("%1 %2 %3").arg(reply.a).arg(reply.b).arg(reply.angle), expected);
        }
    }

    void angleRepliesAreReadAtTheirPositions()
    {
        const std::pair<const char *, double> rows[] = {
            {"AZ=123\n", 123},    {"AZ=5\n", 5},           {"AZ=\n", 0},    {"az123\n", 23},
            {"aZ:007 more\n", 7}, {"A\nZ=045\n", 45},      {"AZ=nan\n", 0}, {"AZ=inf\n", 0},
            {"AZ=1e9\n", 0},      {"ST=AB\nAZ=123\n", -1}, {"A\n", -1}}; // -1: refused
        for (const auto &[buffer, angle] : rows)
            QVERIFY2(decodeAngle(buffer).value_or(-1.0) == angle, buffer);
    }
};

QTEST_GUILESS_MAIN(TestProtocol)
#include "tst_protocol.moc"
