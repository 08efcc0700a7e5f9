// SPDX-License-Identifier: MIT
#include "rotctld/repeatedtargets.h"
#include "rotctld/rotctldprotocol.h"

#include <QTest>

using namespace Rotctld;

namespace {

/// What a rotator at 123.4 degrees that takes every order would answer, and in brackets what it was ordered.
QByteArray answerTo(const QByteArray &line)
{
    const Request request = parse(line);
    switch (request.kind) {
    case Request::Nothing:
        return "nothing";
    case Request::Quit:
        return "closes";
    case Request::Refused:
        return answer(request, request.code);
    case Request::GetPosition:
        return position(request, 123.4);
    case Request::SetPosition:
        return '[' + QByteArray::number(request.azimuth) + ']' + answer(request, Done);
    case Request::MoveLeft:
        return "[left]" + answer(request, Done);
    case Request::MoveRight:
        return "[right]" + answer(request, Done);
    case Request::Stop:
        return "[stop]" + answer(request, Done);
    default:
        return description(request, "Model");
    }
}

} // namespace

class TestRotctldProtocol : public QObject
{
    Q_OBJECT

private slots:
    void answers_data()
    {
        QTest::addColumn<QByteArray>("expected");
        const auto rows = [](const char *expected, const QList<QByteArray> &lines) {
            for (const QByteArray &line : lines)
                QTest::newRow(line) << QByteArray(expected);
        };
        rows("123.40\n0.00\n", {"p", "\\get_pos\r\n", " p "});
        rows("[90]RPRT 0\n", {"P 90 45", "P 450 0"});
        rows("[90.5]RPRT 0\n", {"P90.5\t-3"});
        rows("[100]RPRT 0\n", {"\\set_pos 1e2 0"});
        rows("[180]RPRT 0\n", {"P -180 0"});
        rows("[0]RPRT 0\n", {"P -0.0 0"});
        rows("[stop]RPRT 0\n", {"S"});
        rows("[left]RPRT 0\n", {"M 8 -1"});
        rows("[right]RPRT 0\n", {"M 16 100"});
        rows("Model\n", {"_"});
        rows("1\n2\nmin_az=-180.000000\nmax_az=450.000000\nmin_el=-90.000000\n"
             "max_el=180.000000\nsouth_zero=0\nrot_type=Az\ndone\n",
             {"\\dump_state"});
        rows("closes", {"q", "+\\quit"});
        rows("nothing", {"\r\n"});
        rows("RPRT -1\n", {"P 450.1 0", "P -180.1 0", "P nan 0", "P 90 inf", "P 90 up", "P 9,5 0", "P 90",
                           "P 90 0 0", "pp", "M 9 50", "M 8 fast"});
        rows("RPRT -11\n", {"M 2 50"});
        rows("RPRT -4\n", {"K", "\\", "get_pos", "\xFF\x01"});
        rows(":\nRPRT -4\n", {"+"});
        rows("get_pos:\nAzimuth: 123.40\nElevation: 0.00\nRPRT 0\n", {"+p"});
        rows("get_pos:;Azimuth: 123.40;Elevation: 0.00;RPRT 0\n", {";\\get_pos"});
        rows("[135]set_pos: 135 22.5|RPRT 0\n", {"|P  135  22.5"});
        rows("set_pos: 500 0\nRPRT -1\n", {"+P 500 0"});
        rows("get_info:\nInfo: Model\nRPRT 0\n", {"+_"});
    }
    void answers() { QTEST(answerTo(QTest::currentDataTag()), "expected"); }

    void noReadingIsNoAzimuth()
    {
        QCOMPARE(position(parse("p"), std::nullopt), QByteArray("RPRT -6\n"));
        QCOMPARE(position(parse("+p"), std::nullopt), QByteArray("get_pos:\nRPRT -6\n"));
    }

    void aTrackerRepeatsItsTarget()
    {
        RepeatedTargets targets;
        const int first = 0, second = 0, third = 0;
        targets.note(&first, 100, 0);
        int time = 0; // seconds
        while ((time += 10) < 60)
            QVERIFY(targets.isRepeated(&first, 100, time * 1000));
        QVERIFY(!targets.isRepeated(&first, 101, time * 1000));
        targets.note(&first, 101, time * 1000);
        QVERIFY(!targets.isRepeated(&first, 100, time * 1000));
        // Somebody asks again after a while.
        QVERIFY(!targets.isRepeated(&first, 101, (time + 16) * 1000));

        // It goes on after a new connection, beside another one with a target of its own.
        targets.note(&first, 100, 0);
        targets.note(&second, 200, 0);
        targets.clientLeft(&first);
        QVERIFY(targets.isRepeated(&third, 100, 0));
        QVERIFY(!targets.isRepeated(&second, 100, 0));
        targets.forget(&second); // it stopped
        QVERIFY(!targets.isRepeated(&second, 200, 0));
        QVERIFY(targets.isRepeated(&third, 100, 0));
        targets.forget(&third);
        QVERIFY(!targets.isRepeated(&first, 100, 0));
    }
};

QTEST_GUILESS_MAIN(TestRotctldProtocol)
#include "tst_rotctldprotocol.moc"
