// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "settings/settingsfile.h"
#include "support/rotatorstation.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QSpinBox>

class TestKT240M : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void theRotatorObeys_data()
    {
        QTest::addColumn<QString>("dialogue"); // numbers are polled azimuths
        const char *rows[][2] = {
            {"a dial that is dragged sends once",
             "100; hold; drag 20 (120); 101 (120); drag 30 (130); drop 30 -> M111 [STOP]; 101 -> M130; 105"},
            {"a dial that is brought back sends nothing",
             "100; hold; drag 20 (120); drag 0 (100); drop (100); 101"},
            {"a dial that is clicked before there is an azimuth", "hold; drop; -1; hold; drop"},
            {"a wheel that is turned sends once",
             "100; wheel (101); 105 (101); wheel (102); pause -> M115 M102 [STOP]"},
            {"STOP ends a wheel run", "100; 105; wheel (106); STOP -> M115 [STOP]; pause [STOP]"},
            {"a click ends no wheel run",
             "100; wheel (101); click (101); 105 (101); pause -> M115 M101 [STOP]"},
            {"STOP ends a hold of the dial",
             "100; 105; hold; drag 20 (125); key Esc -> M115 [STOP]; drop 30 [STOP]; 110 [STOP]"},
            {"a dial that is hidden while it is held", "100; hold; drag 20 (120); hide; drop 30; 105"},
            {"a dial that is disabled while it is held", "100; hold; drag 20 (120); disable; drop 30; 105"},
            {"CW ends a wheel run", "100; wheel (101); CW -> R [CW]; pause [CW]"},
            {"CCW ends a hold of the dial", "100; hold; drag 20 (120); key Left -> L [CCW]; drop 30 [CCW]"},
            {"another target ends a wheel run", "100; wheel (101); key Shift+F1 -> M200; pause"},
            {"a tracker's target does not", "100; wheel (101); net 150 -> M150 (101); pause -> M101"},
            {"an early STOP says when the antenna moves", "100; CW -> R [CW]; STOP; 106; tip again; STOP -> "
                                                          "M116 [STOP]; tip quiet; 106; STOP; 106; 106; 106; "
                                                          "112; tip quiet"},
            {"an antenna that somebody else turns has no target", "50; 60; target none"},
            {"a target before the first reading",
             "dial 200 -> M200; -1; target 200; 50; target 200; 60; target 200"},
            {"a choice that is given up leaves no target",
             "100; wheel (101); wheel (102); hide; target none; wheel (103); wheel (104); STOP; target none; "
             "hold; drag 20 (120); key Esc; target none; dial 200 -> M200; wheel (121); wheel (122); hide; "
             "target 200; 110; wheel (111); wheel (112); hide; target 200"},
            {"a target that ends a wheel run is shown while it waits",
             "100; 110; wheel (111); key Shift+F1 -> M120 [STOP]; target 200"},
            {"a lost line forgets what was asked for", "100; dial 200 -> M200; 120; CCW -> M130 [CCW]; "
                                                       "unplug; key Shift+F1; memory dark; CW; target none; "
                                                       "replug; 100; 105; 105"},
            {"a key while a button is held",
             "100; press CW -> R [CW]; key Left -> L [CCW]; release CW [CCW]"},

            // On a box whose rotor turns.
            {"counter-clockwise through north",
             "at 5 -> C; CCW -> L [CCW]; +500 -> C [CCW]; STOP -> M345 [STOP]"},
            {"keys turn, turn back and repeat",
             "at 100 -> C; key F11 -> R [CW]; key F11 [CW]; +500 -> C [CW]; key Left -> M120 [CCW]; "
             "+1500 -> C [CCW]; +0 -> C L [CCW]; +500 -> C [CCW]; STOP -> M100 [STOP]; +1500 -> C [STOP]; "
             "+0 -> C"},
            {"a memory while turning waits for rest, and is done with when reached",
             "at 100 -> C; key Shift+F1 -> M200; +500 -> C; key Shift+F2 -> M120 [STOP]; +2000 -> C [STOP]; "
             "+0 -> C M300; +9000 -> C; +0 -> C; +0 -> C"},
            {"a tracker's targets replace the one that waits, without another stop",
             "at 100 -> C; net 200 -> M200; +500 -> C; net 300 -> M120 [STOP]; net 301 [STOP]; "
             "+500 -> C [STOP]; net 302 [STOP]; +2000 -> C M302; +0 -> C"},
            {"a stop that was never sent lets the network's target stop the antenna",
             "at 100 -> C; CW -> R [CW]; STOP; +500 -> C; net 200 -> M120 [STOP]"},
            {"a tracker that repeats its target does not undo STOP",
             "at 100 -> C; net 200 -> M200; +500 -> C; STOP -> M120 [STOP]; net 200 [STOP]; "
             "+2000 -> C [STOP]; +0 -> C; net again; net 200; net 201 -> M201"},
            {"what is asked for in an outage is not done after it",
             "at 100 -> C; outage; dial 200; CW; net 210; key Shift+F1; memory dark; over; 105; 110; 110; "
             "net 210 -> M210"},
            {"the network stops, and turns left and right, as the buttons do",
             "at 100 -> C; net right -> R [CW]; net right [CW]; +500 -> C [CW]; net left -> M120 [CCW]; "
             "net stop -> M120 [STOP]; +2000 -> C [STOP]; +0 -> C; net 90 -> M090"}};
        for (const auto &row : rows)
            QTest::newRow(row[0]) << row[1];
    }
    void theRotatorObeys()
    {
        QFETCH(QString, dialogue);
        QCOMPARE(RotatorStation().play(dialogue), dialogue);
    }

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

    void stopIsReachedByTheRightButtonAndFromADialog()
    {
        RotatorStation station;
        station.play("100; 105");
        QTest::mouseClick(station.shown<CAntennaButton>("STOP"), Qt::RightButton);
        QCOMPARE(station.heard() + station.lit(), QString(" -> M115 [STOP]"));
        QDialog dialog(station.window.get());
        QSpinBox field(&dialog);
        dialog.open();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        QVERIFY(!dialog.isVisible()); // besides what it does there
        QCoreApplication::processEvents();
        QCOMPARE(station.heard() + station.lit(), QString(" -> M115 [STOP]")); // and once
    }

    void aRotationMovesTheAntennaAndEnds()
    {
        RotatorStation station;
        const CVextralAntenna *antenna = station.rotator->antenna(0);
        QVERIFY(!antenna->isReadingKnown());
        station.play("350; 355; 2");
        QVERIFY(antenna->isReadingKnown() && antenna->isRotating());
        QCOMPARE(antenna->rotation(), 355.0);
        station.poll(2);
        QVERIFY(!antenna->isRotating() && !station.rotator->azimuthalWidget()->isAnimating());
        QCOMPARE(antenna->angle(), 2.0);
        QCOMPARE(antenna->target(), -1.0);

        // A target that the rotor has just reached ends its rotation too.
        station.play("50; 60");
        QVERIFY(antenna->isRotating());
        station.play("display 60; 60");
        QVERIFY(!antenna->isRotating());
    }

    void thePanelScales()
    {
        RotatorStation station;
        station.rotator->applyInterfaceMode(3);
        station.panel->resize(400, 100);
        QCOMPARE(station.display->geometry(), QRect(QPoint(230, 5), QPoint(388, 49)));
        QCOMPARE(station.shown<CAntennaButton>("STOP")->geometry(), QRect(QPoint(80, 15), QPoint(148, 89)));
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
