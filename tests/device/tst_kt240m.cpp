#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "settings/settingsfile.h"
#include "support/rotatorstation.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QDialog>
#include <QSignalSpy>
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
            {"a key while a button is held",
             "100; press CW -> R [CW]; key Left -> L [CCW]; release CW [CCW]"}};
        for (const auto &row : rows)
            QTest::newRow(row[0]) << row[1];
    }
    void theRotatorObeys()
    {
        QFETCH(QString, dialogue);
        QCOMPARE(RotatorStation().play(dialogue), dialogue);
    }

    void stopIsReachedInEveryWay()
    {
        RotatorStation station;
        station.play("100; 105");
        auto *button = station.shown<CAntennaButton>("STOP");
        QDialog dialog(station.window.get());
        QSpinBox field(&dialog);
        const std::vector<std::function<void()>> ways = {
            [&] { QTest::mouseClick(button, Qt::LeftButton); },
            [&] { QTest::mouseClick(button, Qt::RightButton); },
            [&] { QTest::keyClick(station.window.get(), Qt::Key_Escape); },
            [&] {
                dialog.open();
                QVERIFY(QTest::qWaitForWindowActive(&dialog));
                QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
                QVERIFY(!dialog.isVisible()); // besides what it does there
            }};
        for (const std::function<void()> &stop : ways) {
            stop();
            QCoreApplication::processEvents();
            QCOMPARE(station.heard() + station.lit(), QString(" -> M115 [STOP]")); // and once
        }
    }

    void anEarlyStopSaysWhenTheAntennaMoves()
    {
        RotatorStation station;
        const auto *stop = station.shown<CAntennaButton>("STOP");
        const QString quiet = stop->toolTip();
        const QString again = "the antenna is moving, press again";
        const QPair<QString, QString> rows[] = {
            {"100; CW -> R [CW]; STOP; 106", again},
            {"STOP -> M116 [STOP]", quiet},
            {"106; STOP; 106; 106; 106; 112", quiet}}; // too late to matter
        for (const auto &[dialogue, tip] : rows) {
            QCOMPARE(station.play(dialogue), dialogue);
            QCOMPARE(stop->toolTip(), tip);
        }
    }

    void anAntennaThatSomebodyElseTurnsHasNoTarget()
    {
        RotatorStation station;
        const CVextralAntenna *antenna = station.rotator->antenna(0);
        station.poll(50);
        station.poll(60);
        QVERIFY(antenna->isRotating());
        QCOMPARE(antenna->target(), -1.0);

        RotatorStation other;
        other.act("dial", "200");
        for (const double azimuth : {-1.0, 50.0, 60.0}) {
            other.poll(azimuth);
            QCOMPARE(other.rotator->antenna(0)->target(), 200.0);
        }
    }

    void aChoiceThatIsGivenUpLeavesNoTargetLine()
    {
        RotatorStation station;
        const CVextralAntenna *antenna = station.rotator->antenna(0);
        station.poll(100.4);
        for (const char *choice : {"wheel; wheel; hide", "wheel; wheel; STOP", "hold; drag 20; key Esc"}) {
            station.play(choice);
            QVERIFY2(!antenna->hasPendingTarget(), choice);
        }
        station.play("dial 200; wheel; wheel; hide");
        QCOMPARE(antenna->target(), 200.0);
        station.play("110; wheel; wheel; hide");
        QCOMPARE(antenna->target(), 200.0);
    }

    void aTargetIsNotKeptForALineThatIsLost()
    {
        RotatorStation station;
        const QString underWay = "100; dial 200 -> M200; 120; CCW -> M130 [CCW]";
        QCOMPARE(station.play(underWay), underWay);
        station.line.pullOut();
        QCoreApplication::processEvents();
        QVERIFY(!station.rotator->isOpen());
        QCOMPARE(station.lit(), QString());
        QSignalSpy started(station.rotator, &CVextralRemoteControl::onStartRotating);
        station.act("key", "Shift+F1");
        QVERIFY(started.isEmpty()); // or the memory's lamp would be lit
        station.act("CW", "");
        QTRY_COMPARE(station.lit(), QString());
        QVERIFY(!station.rotator->antenna(0)->hasPendingTarget());

        station.rotator->setMonitorInterval(10);
        station.rotator->startMonitoring();
        station.line.plugIn();
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
