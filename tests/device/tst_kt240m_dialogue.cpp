#include "app/resources.h"
#include "support/rotatorstation.h"

#include <QElapsedTimer>

class TestKT240MDialogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void theAzimuthIsAskedForTwiceASecondAndNothingElse()
    {
        RotatorStation station;
        station.rotator->scripted.reset();
        QElapsedTimer time;
        time.start();
        station.rotator->startMonitoring();
        QTRY_COMPARE(station.line.commands(), (QStringList{"C", "C", "C", "C"}));
        QVERIFY2(time.elapsed() > 1000 && time.elapsed() < 3000, qPrintable(QString::number(time.elapsed())));
    }

    void theBoxTurnsAsTheOperatorWishes_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<double>("speed");
        QTest::addColumn<QString>("dialogue");
        QTest::newRow("clockwise through north")
            << 350. << 10. << "+0 -> C; CW -> R [CW]; +500 -> C [CW]; STOP -> M005 [STOP]";
        QTest::newRow("counter-clockwise through north")
            << 5. << 12. << "+0 -> C; CCW -> L [CCW]; +500 -> C [CCW]; STOP -> M349 [STOP]";
        QTest::newRow("keys turn, turn back and repeat")
            << 100. << 20.
            << "+0 -> C; key F11 -> R [CW]; key F11 [CW]; +500 -> C [CW]; key Left -> M120 [CCW]; "
               "+1500 -> C [CCW]; +0 -> C L [CCW]; +500 -> C [CCW]; STOP -> M100 [STOP]; +1500 -> C [STOP]; "
               "+0 -> C";
        QTest::newRow("a memory while turning waits for rest, and is done with when reached")
            << 100. << 20.
            << "+0 -> C; key Shift+F1 -> M200; +500 -> C; key Shift+F2 -> M120 [STOP]; +2000 -> C [STOP]; "
               "+0 -> C M300; +9000 -> C; +0 -> C; +0 -> C";
        QTest::newRow("a tracker's targets replace the one that waits, without another stop")
            << 100. << 20.
            << "+0 -> C; net 200 -> M200; +500 -> C; net 300 -> M120 [STOP]; net 301 [STOP]; +500 -> C "
               "[STOP]; "
               "net 302 [STOP]; +2000 -> C M302; +0 -> C";
        QTest::newRow("a stop that was never sent lets the network's target stop the antenna")
            << 100. << 20. << "+0 -> C; CW -> R [CW]; STOP; +500 -> C; net 200 -> M120 [STOP]";
        QTest::newRow("a tracker that repeats its target does not undo STOP")
            << 100. << 20.
            << "+0 -> C; net 200 -> M200; +500 -> C; STOP -> M120 [STOP]; net 200 [STOP]; +2000 -> C [STOP]; "
               "+0 -> C; net again; net 200; net 201 -> M201";
        QTest::newRow("what is asked for in an outage is not done after it")
            << 100. << 0. << "+0 -> C; outage; dial 200; CW; net 210; over; 105; 110; 110; net 210 -> M210";
        QTest::newRow("the network stops, and turns left and right, as the buttons do")
            << 100. << 20.
            << "+0 -> C; net right -> R [CW]; net right [CW]; +500 -> C [CW]; net left -> M120 [CCW]; "
               "net stop -> M120 [STOP]; +2000 -> C [STOP]; +0 -> C; net 90 -> M090";
    }
    void theBoxTurnsAsTheOperatorWishes()
    {
        QFETCH(double, position);
        QFETCH(double, speed);
        QFETCH(QString, dialogue);
        QCOMPARE(RotatorStation(position, speed).play(dialogue), dialogue);
    }
};

QTEST_MAIN(TestKT240MDialogue)
#include "tst_kt240m_dialogue.moc"
