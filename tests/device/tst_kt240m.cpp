#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "device/rotationsteering.h"
#include "settings/settingsfile.h"
#include "support/rotatorstation.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QSignalSpy>

class TestKT240M : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void aSoftStopRunsOutInTheDirectionOfTravel()
    {
        const double rows[][3] = {{345, 350, 360}, {350, 350.5, 0.5}, {15, 10, 0},    {10, 9.5, 350},
                                  {0, 180, 170},   {180, 0, 10},      {100, 100, -1}, {0, 179.5, 189.5}};
        for (const auto &[last, current, target] : rows)
            QCOMPARE(RotationSteering::softStopTarget(last, current).value_or(-1.0), target);
    }

    void theRotatorObeys_data()
    {
        QTest::addColumn<QString>("dialogue"); // numbers are polled azimuths
        const char *rows[][2] = {
            {"only another whole degree is a rotation", "10.2; 10.9; STOP; 11; STOP -> M021 [STOP]; 11.5"},
            {"wind sends nothing", "100; 101; 102; 102; 99; 99"},
            {"STOP brakes after a reading that no compass has",
             "100; 105; 999; STOP -> S [STOP]; 105 [STOP]; 105"},
            {"STOP forgets a change of direction",
             "100; CCW -> L [CCW]; 95 [CCW]; CW -> M085 [CW]; -1 [CW]; STOP -> S [STOP]; 90; 90"},
            {"STOP brakes after a failed reading", "100; 105; -1; STOP -> S [STOP]; 106; 106"},

            {"a rotor that does not follow", "100; 100; 100; 100; CW -> R [CW]; 100 [CW]; 100 [CW]; 100"},
            {"a new target gives it more time",
             "100; CW -> R [CW]; 100 [CW]; 100 [CW]; dial 200 -> M200 [CW]; 100 [CW]; 100 [CW]; 100"},
            {"CW while it turns", "100; CW -> R [CW]; 106 [CW]; CW [CW]; 112 [CW]; 112"},
            {"CW, then STOP", "100; CW -> R [CW]; 106 [CW]; STOP -> M116 [STOP]; 116 [STOP]; 116"},
            {"STOP, then CW", "100; 105; STOP -> M115 [STOP]; CW -> M115 [CW]; 112 [CW]; 112 -> R [CW]"},
            {"a change of direction before the rotation is seen", "100; CW -> R [CW]; CCW -> L [CCW]"},
            {"a button held longer than the rotation",
             "100; press CW -> R [CW]; 106 [CW]; 106; release CW [CW]; 106 [CW]; 106"},

            {"a target reached", "100; dial 200 -> M200; 150; 200; 200; 205; 205"},
            {"the rotor stops on the waiting target",
             "100; 105; dial 115 -> M115 [STOP]; 115.9 [STOP]; 115.9; 120; 120"},
            {"a target not reached is sent again until STOP",
             "100; dial 200 -> M200; 150; 150 -> M200; 160; STOP -> M170 [STOP]; 165 [STOP]; 165"},
            {"the digital display's target goes out at once",
             "100; 105; display 300 -> M115 M300 [STOP]; 110 [STOP]; 300 [STOP]; 300"},
            {"the digital display's target is where the rotor stopped",
             "100; 105; display 105 -> M115 M105 [STOP]; 105 [STOP]; 105 [STOP]; 105"},

            {"a dial that is dragged sends once",
             "100; hold; drag 20 (120); 101 (120); drag 30 (130); drop 30 -> M111 [STOP]; 101 -> M130; 105"},
            {"a dial that is brought back sends nothing",
             "100; hold; drag 20 (120); drag 0 (100); drop (100); 101"},
            {"a dial that is clicked before there is an azimuth", "hold; drop; -1; hold; drop"},
            {"a wheel that is turned sends once",
             "100; wheel (101); 105 (101); wheel (102); pause -> M115 M102 [STOP]"},

            {"a kept target is sent after a manual rotation",
             "100; dial 200 -> M200; 110; CCW -> M120 [CCW]; 115 [CCW]; 115 -> L M200 [CCW]"},
            {"a new target replaces a waiting direction",
             "100; 105; CW -> M115 [CW]; 110 [CW]; dial 200 -> M120 [STOP]; 110 -> M200"},
            {"a waiting direction is kept until the next soft stop",
             "100; 105; CW -> M115 [CW]; 105 -> R [CW]; 110 [CW]; 110 -> R [CW]; 115 [CW]; "
             "STOP -> M125 [STOP]; 120 [STOP]; 120"},

            {"STOP before a movement is seen forgets a waiting direction",
             "100; 105; CW -> M115 [CW]; 105 -> R [CW]; STOP [CW]; 110 [CW]; 110"},
            {"STOP before a movement is seen forgets a target", "100; dial 200 -> M200; STOP; 150; 150"},

            {"a reading that fails at rest sends nothing of what is kept",
             "100; 105; CW -> M115 [CW]; 105 -> R [CW]; dial 200 -> M200 [CW]; -1 [CW]; 105; -1; -1; 105"},
            {"a reading that fails in the middle of a turn",
             "100; dial 200 -> M200; 105; -1; 115 -> M200; 125"},
            {"a direction asked for while a reading fails", "100; 100; -1; CW -> S [CW]; 100 -> R [CW]"},
            {"a target asked for while a reading fails", "100; 100; -1; dial 200 -> S; 100 -> M200"}};
        for (const auto &row : rows)
            QTest::newRow(row[0]) << row[1];
    }
    void theRotatorObeys()
    {
        QFETCH(QString, dialogue);
        QCOMPARE(RotatorStation().play(dialogue), dialogue);
    }

    void aTargetIsNotKeptForALineThatIsLost()
    {
        RotatorStation station;
        station.poll(100);
        station.line.hangUp();
        QTRY_VERIFY(!station.rotator->isOpen());
        QSignalSpy started(station.rotator, &CVextralRemoteControl::onStartRotating);
        station.act("memory", "1");
        QVERIFY(started.isEmpty()); // or the memory's lamp would be lit

        station.rotator->setMonitorInterval(10);
        station.rotator->startMonitoring();
        QVERIFY(station.line.restore());
        QTRY_VERIFY(station.rotator->isOpen());
        station.rotator->stopMonitoring();
        const QString aTurnByOtherMeans = "100; 105; 105";
        QCOMPARE(station.play(aTurnByOtherMeans), aTurnByOtherMeans);
    }

    void aRotationMovesTheAntennaAndEnds()
    {
        RotatorStation station;
        const CVextralAntenna *antenna = station.rotator->antenna(0);
        const CVextralAzimuthalWidget *map = station.rotator->azimuthalWidget();
        QSignalSpy stopped(station.rotator, &CVextralRemoteControl::onStopRotating);
        station.poll(350);
        QCOMPARE(antenna->angle(), 350.0);
        station.poll(355);
        station.poll(2);
        QVERIFY(antenna->isRotating());
        QCOMPARE(antenna->rotation(), 355.0);
        QCOMPARE(map->animationStep(), 7 / (500 / 88.0));
        station.poll(2);
        QVERIFY(!antenna->isRotating() && !map->isAnimating());
        QCOMPARE(antenna->target(), -1.0);
        QCOMPARE(stopped.count(), 1);
        station.poll(-1);
        station.poll(50);
        QCOMPARE(antenna->angle(), 50.0);

        // A target that the rotor has just reached ends its rotation too.
        station.poll(60);
        QVERIFY(antenna->isRotating());
        emit station.display->onRotationChanged(60);
        station.poll(60);
        QVERIFY(!antenna->isRotating());
    }

    void thePanelScalesAndTheModesBoundItsHeight()
    {
        RotatorStation station;
        const CVextralAzimuthalWidget *map = station.rotator->azimuthalWidget();
        QVERIFY(map->displayOf(station.rotator->antenna(0))->isHidden());
        QVERIFY(station.panel->antennaButtons().first()->isHidden());
        for (const int mode : {0, 2, 1, 2, 0, 3}) {
            station.rotator->applyInterfaceMode(mode);
            if (mode != 2)
                QCOMPARE(map->isHidden(), mode != 0);
            for (const QWidget *widget :
                 {static_cast<QWidget *>(station.panel), station.panel->parentWidget()}) {
                QCOMPARE(widget->minimumHeight(), 80);
                QCOMPARE(widget->maximumHeight(), map->isHidden() ? 500000 : 80);
            }
        }
        const CAntennaButton *stop = station.shown<CAntennaButton>("STOP");
        QCOMPARE(stop->focusPolicy(), Qt::NoFocus); // Space must not press it
        station.panel->resize(400, 100);
        QCOMPARE(station.display->geometry(), QRect(QPoint(230, 5), QPoint(388, 49)));
        QCOMPARE(stop->geometry(), QRect(QPoint(80, 15), QPoint(148, 89)));
    }

    void theOnlyRotorIsRotorZeroInTheSettingsToo()
    {
        CSettings settings;
        settings.rotorIds.fill(1);
        CDeviceKT240M rotator(settings);
        QCOMPARE(rotator.antenna(0)->rotorId(), 0);
        rotator.applyRotorAssignment(&settings);
        const auto saved = CSettings().rotorIds;
        QFile::remove(SettingsFile::path());
        QCOMPARE(std::vector<int>(saved.begin(), saved.begin() + 5), (std::vector<int>{0, 0, 0, 0, 1}));
    }
};

QTEST_MAIN(TestKT240M)
#include "tst_kt240m.moc"
