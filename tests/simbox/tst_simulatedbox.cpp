#include "simbox/simulatedbox.h"
#include "simbox/traffictext.h"

#include <QtTest>

using Model = SimulatedBox::Model;
using Lines = QList<QByteArray>;

Q_DECLARE_METATYPE(SimulatedBox::Model)

class TestSimulatedBox : public QObject
{
    Q_OBJECT

private slots:
    void commandsGetTheirReplies_data()
    {
        QTest::addColumn<Model>("model");
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<QByteArray>("replies");

        const auto row = [](const char *name, Model model, const Lines &lines, const QByteArray &replies) {
            QTest::newRow(name) << model << lines << replies;
        };
        const Model stack = Model::StackSwitch;
        const Model rotator = Model::Rotator;
        row("fresh rotator, rotor 0 selected", rotator, {"K0"}, "ST=\x10\x40\r\n");
        row("receive ports toggle", stack, {"K1", "K3", "K4", "K3", "K0"}, QByteArray("ST=\x19\0\r\n", 7));
        row("all on", stack, {"K1", "K2", "K3", "K4", "K5", "K6", "K7", "K8", "K0"}, "ST=\x1F\x0F\r\n");
        row("K9 without rotors", stack, {"K9", "K0"}, QByteArray("ST=\x10\0\r\n", 7));
        row("status with angle", rotator, {"KG"}, QByteArray("T=\x10\x40") + "000\r\n");
        row("line ends of the wire", rotator, {"M123\r\r\n\r\n", "S\r\r\n\r\n", "C\r\n"}, "AZ=000\r\n");
        row("empty lines", stack, {"\r\n", "\n", ""}, "");
        row("azimuths that make no sense", rotator, {"M", "M-01", "M361", "Mabc", "K0"}, "ST=\x10\x40\r\n");
        row("unknown", stack, {"X", "K", "K10", "k0", "C1"}, "?>\r\n?>\r\n?>\r\n?>\r\n?>\r\n");
    }
    void commandsGetTheirReplies()
    {
        QFETCH(Model, model);
        QFETCH(Lines, lines);
        QFETCH(QByteArray, replies);

        SimulatedBox box(model);
        QByteArray heard;
        for (const QByteArray &line : lines)
            heard += box.handle(line);
        QVERIFY2(heard == replies, qUtf8Printable(trafficText(lines) + " got " + trafficText(heard)));
    }

    void everyStatusBitHasItsPlace()
    {
        SimulatedBox box;
        box.setReceivePort(2, true);
        box.setTransmitLine(1, true);
        box.setRelayBoxId(15);
        QCOMPARE(box.statusA(), quint8(0xF4));
        QCOMPARE(box.statusB(), quint8(0x02));
        box.setAux(true);
        box.setRotorPair(true);
        QCOMPARE(box.statusB(), quint8(0x52));
        box.handle("R");
        QCOMPARE(box.statusB(), quint8(0xD2));
        box.handle("K9"); // the rotor that turns is not the selected one any more
        QCOMPARE(box.statusB(), quint8(0x32));
    }

    void rotorTurns_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("overshoot");
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<QByteArray>("reading");
        QTest::addColumn<bool>("moving");

        // Ten degrees per second.
        QTest::newRow("arrived") << 0.0 << 0.0 << QByteArray("M090") << 9000 << QByteArray("090") << false;
        QTest::newRow("clockwise through north")
            << 350.0 << 0.0 << QByteArray("M010") << 1500 << QByteArray("005") << true;
        QTest::newRow("back through north")
            << 10.0 << 0.0 << QByteArray("M350") << 1500 << QByteArray("355") << true;
        QTest::newRow("360 is north")
            << 350.0 << 0.0 << QByteArray("M360") << 5000 << QByteArray("000") << false;
        QTest::newRow("overshot") << 0.0 << 5.0 << QByteArray("M090") << 20000 << QByteArray("095") << false;
        QTest::newRow("right, more than a turn")
            << 5.0 << 0.0 << QByteArray("R") << 37000 << QByteArray("015") << true;
    }
    void rotorTurns()
    {
        QFETCH(double, start);
        QFETCH(double, overshoot);
        QFETCH(QByteArray, command);
        QFETCH(int, milliseconds);
        SimulatedBox box(Model::Rotator);
        box.rotor().setSpeed(10.0);
        box.rotor().setPosition(start);
        box.rotor().setOvershoot(overshoot);
        box.handle(command);
        box.advance(milliseconds);
        QTEST(box.handle("C").mid(3, 3), "reading");
        QTEST(box.rotor().isMoving(), "moving");
    }

    void stopCoastsOnce()
    {
        SimulatedBox box(Model::Rotator);
        box.rotor().setSpeed(10.0);
        box.rotor().setCoast(3.0);
        box.handle("L");
        box.advance(1000);
        box.handle("S");
        box.advance(200);
        QVERIFY(box.rotor().isMoving());
        box.handle("S");
        box.advance(10000);
        QCOMPARE(box.handle("C"), QByteArray("AZ=347\r\n"));
        QVERIFY(!box.rotor().isMoving());
    }

    void windMovesARestingRotorAndNothingMovesAStuckOne()
    {
        SimulatedBox box(Model::Rotator);
        box.rotor().setSpeed(10.0);
        box.rotor().setWind(-1.0);
        box.handle("M020");
        box.advance(5000); // two seconds to the target, three in the wind
        QCOMPARE(box.rotor().position(), 17.0);
        box.rotor().setStuck(true);
        box.handle("M090");
        box.advance(60000);
        QCOMPARE(box.handle("KG"), QByteArray("T=\x10\xC0") + "017\r\n");
    }

    void eachRotorOfAPairKeepsItsOwnAngle()
    {
        SimulatedBox box;
        box.setRotorPair(true);
        box.rotor(0).setPosition(10.0);
        box.rotor(1).setPosition(200.0);
        QCOMPARE(box.handle("C"), QByteArray("AZ=010\r\n"));
        box.handle("K9");
        box.handle("M210");
        box.advance(60000);
        QCOMPARE(box.handle("C"), QByteArray("AZ=210\r\n"));
        box.handle("K9");
        QCOMPARE(box.handle("C"), QByteArray("AZ=010\r\n"));
    }
};

QTEST_GUILESS_MAIN(TestSimulatedBox)
#include "tst_simulatedbox.moc"
