#include "app/resources.h"
#include "support/rotatorstation.h"

#include <QElapsedTimer>

class TestKT240MDialogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void theAzimuthIsAskedForTwiceASecondAndNothingElse();
    void theBoxTurnsAsTheOperatorWishes_data();
    void theBoxTurnsAsTheOperatorWishes();
};

void TestKT240MDialogue::theAzimuthIsAskedForTwiceASecondAndNothingElse()
{
    RotatorStation station;
    station.rotator->scripted.reset();
    QElapsedTimer time;
    time.start();
    station.rotator->startMonitoring();
    QTRY_COMPARE(station.line.commands(), (QList<QByteArray>{"C", "C", "C", "C"}));
    QVERIFY2(time.elapsed() > 1000 && time.elapsed() < 3000, qPrintable(QString::number(time.elapsed())));
}

void TestKT240MDialogue::theBoxTurnsAsTheOperatorWishes_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("speed");
    QTest::addColumn<QString>("dialogue");
    QTest::newRow("350, 355") << 350. << 10. << "+0 -> C; CW -> R [CW]; +500 -> C [CW]; STOP -> M005 [STOP]";
    QTest::newRow("355, 357") << 355. << 4. << "+0 -> C; CW -> R [CW]; +500 -> C [CW]; STOP -> M007 [STOP]";
    QTest::newRow("358, 2") << 358. << 8. << "+0 -> C; CW -> R [CW]; +500 -> C [CW]; STOP -> M012 [STOP]";
    QTest::newRow("10, 5") << 10. << 10. << "+0 -> C; CCW -> L [CCW]; +500 -> C [CCW]; STOP -> M350 [STOP]";
    QTest::newRow("2, 358") << 2. << 8. << "+0 -> C; CCW -> L [CCW]; +500 -> C [CCW]; STOP -> M348 [STOP]";
    QTest::newRow("5, 359") << 5. << 12. << "+0 -> C; CCW -> L [CCW]; +500 -> C [CCW]; STOP -> M349 [STOP]";

    const auto row = [](const char *name, const char *dialogue) {
        QTest::newRow(name) << 100. << 20. << dialogue;
    };
    row("keys turn, turn back and repeat",
        "+0 -> C; key F11 -> R [CW]; key F11 [CW]; +500 -> C [CW]; key Left -> M120 [CCW]; +1500 -> C [CCW]; "
        "+0 -> C L [CCW]; +500 -> C [CCW]; STOP -> M100 [STOP]; +1500 -> C [STOP]; +0 -> C");
    row("a memory while turning waits for rest, and is done with when reached",
        "+0 -> C; memory 1 -> M200; +500 -> C; memory 2 -> M120 [STOP]; +2000 -> C [STOP]; +0 -> C M300; "
        "+9000 -> C; +0 -> C; +0 -> C");
    row("STOP takes the target back",
        "+0 -> C; memory 1 -> M200; +500 -> C; STOP -> M120 [STOP]; +2000 -> C [STOP]; +0 -> C; +0 -> C");
    row("a reading that fails in the middle of a turn",
        "+0 -> C; memory 1 -> M200; +500 -> C; fail; +500 -> C; STOP -> S [STOP]; +500 -> C; +500 -> C");
    row("readings that stick",
        "+0 -> C; memory 1 -> M200; +500 -> C; stick; +500 -> C M200; free; +5000 -> C; +0 -> C; +0 -> C");
}

void TestKT240MDialogue::theBoxTurnsAsTheOperatorWishes()
{
    QFETCH(double, position);
    QFETCH(double, speed);
    QFETCH(QString, dialogue);
    QCOMPARE(RotatorStation(position, speed).play(dialogue), dialogue);
}

QTEST_MAIN(TestKT240MDialogue)
#include "tst_kt240m_dialogue.moc"
