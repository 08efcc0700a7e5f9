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
        const auto row = [](const QByteArray &line, const char *expected) {
            QTest::newRow(line) << QByteArray(expected);
        };
        row("p", "123.40\n0.00\n");
        row("\\get_pos\r\n", "123.40\n0.00\n");
        row(" p ", "123.40\n0.00\n");
        row("P 90 45", "[90]RPRT 0\n");
        row("P90.5\t-3", "[90.5]RPRT 0\n");
        row("\\set_pos 1e2 0", "[100]RPRT 0\n");
        row("P -180 0", "[180]RPRT 0\n");
        row("P -0.0 0", "[0]RPRT 0\n");
        row("P 450 0", "[90]RPRT 0\n");
        row("S", "[stop]RPRT 0\n");
        row("M 8 -1", "[left]RPRT 0\n");
        row("M 16 100", "[right]RPRT 0\n");
        row("_", "Model\n");
        row("\\dump_state", "1\n2\nmin_az=-180.000000\nmax_az=450.000000\nmin_el=-90.000000\n"
                            "max_el=180.000000\nsouth_zero=0\nrot_type=Az\ndone\n");
        row("q", "closes");
        row("+\\quit", "closes");
        row("\r\n", "nothing");

        row("P 450.1 0", "RPRT -1\n");
        row("P -180.1 0", "RPRT -1\n");
        row("P nan 0", "RPRT -1\n");
        row("P 90 inf", "RPRT -1\n");
        row("P 90 up", "RPRT -1\n");
        row("P 9,5 0", "RPRT -1\n");
        row("P 90", "RPRT -1\n");
        row("P 90 0 0", "RPRT -1\n");
        row("pp", "RPRT -1\n");
        row("M 2 50", "RPRT -11\n");
        row("M 9 50", "RPRT -1\n");
        row("M 8 fast", "RPRT -1\n");
        row("K", "RPRT -4\n");
        row("\\", "RPRT -4\n");
        row("get_pos", "RPRT -4\n");
        row("\xFF\x01", "RPRT -4\n");
        row("+", ":\nRPRT -4\n");

        row("+p", "get_pos:\nAzimuth: 123.40\nElevation: 0.00\nRPRT 0\n");
        row(";\\get_pos", "get_pos:;Azimuth: 123.40;Elevation: 0.00;RPRT 0\n");
        row("|P  135  22.5", "[135]set_pos: 135 22.5|RPRT 0\n");
        row("+P 500 0", "set_pos: 500 0\nRPRT -1\n");
        row("+_", "get_info:\nInfo: Model\nRPRT 0\n");
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
