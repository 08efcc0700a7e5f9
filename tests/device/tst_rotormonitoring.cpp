// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "support/scriptedcontroller.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QSignalSpy>
#include <QTest>

using Statuses = QList<CDeviceStatus>;
Q_DECLARE_METATYPE(CDeviceStatus)

namespace {

const CDeviceStatus noAnswer;
const CDeviceStatus noRotor = ScriptedController::status(-1);
const CDeviceStatus resting = ScriptedController::status(0);
const CDeviceStatus turning = ScriptedController::status(0, true);
const CDeviceStatus otherRotor = ScriptedController::status(1);

/// A controller of two rotors that is bound to a panel and a map: antenna 0 on rotor 0, antenna 1 on rotor 1,
/// antennas 2 and 3 on none.
struct Station
{
    Station()
    {
        controller.setRemoteControlWidget(&panel);
        controller.setAzimuthalWiget(&map);
        map.setDevice(&controller);
        controller.setMonitorInterval(3600 * 1000); // polls come from tick() alone
        controller.setRelayBoxId(0);
    }

    CVextralAntenna *antenna(int index) const { return controller.antenna(index); }

    /// A poll, on which the box says this; -1 is an angle that cannot be read.
    void tick(const CDeviceStatus &status, double angle = -1.0)
    {
        if (!controller.isMonitoring())
            controller.startMonitoring(); // with a synchronisation pass that a mute box makes short
        controller.statuses = {status};
        controller.angles = {angle};
        controller.sent.clear();
        controller.monitore();
    }

    QString sent()
    {
        const QString text = controller.sent.join(' ');
        controller.sent.clear();
        return text;
    }

    QString lamps() const
    {
        QString text;
        for (const CAntennaButton *button : panel.antennaButtons())
            text += QString::number(button->isChecked()) + (button->isRedState() ? "r" : "");
        text += " TX ";
        for (const CLedButton *button : panel.txButtons())
            text += QString::number(button->isChecked());
        text += panel.sendIndicator()->isChecked() ? " SEND" : "";
        return text + (panel.powerIndicator()->isChecked() ? " POWER" : "");
    }

    struct Controller : ScriptedController
    {
        bool hasSendAndPower() override { return true; }
    };

    CVextralRemoteControlWidget panel;
    CVextralAzimuthalWidget map;
    Controller controller;
};

} // namespace

class TestRotorMonitoring : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void theSynchronisationPassReadsBothRotorsAndComesBack()
    {
        Station station;
        station.controller.statuses = {resting, resting, otherRotor, resting};
        station.controller.angles = {10.7, 200.0, 11.0};
        station.controller.startMonitoring();
        QCOMPARE(station.sent(), QString("K0 K0 K9 K0 K9 K0"));
        QCOMPARE(station.antenna(0)->angle(), 11.0);
        QCOMPARE(station.antenna(1)->angle(), 200.0);
        QCOMPARE(station.antenna(0)->target(), -1.0);
        QVERIFY(station.antenna(0)->isEnabled() && station.antenna(1)->isEnabled());
        QVERIFY(!station.antenna(2)->isEnabled());
        QCOMPARE(station.map.currentAntenna(), station.antenna(0));
        QCOMPARE(station.map.displayOf(station.antenna(1))->value(), 200);
    }

    void lampsFollowTheStatusAndAFailedPollDarkensPowerAlone()
    {
        Station station;
        CDeviceStatus status = noRotor;
        status.antennaRx[0] = status.antennaRx[2] = true;
        status.antennaTx[1] = status.antennaTx[2] = true;
        status.modelFlags[0] = true;
        station.tick(status);
        QCOMPARE(station.lamps(), QString("1010 TX 0110 SEND POWER"));
        station.tick(noAnswer);
        QCOMPARE(station.lamps(), QString("1010 TX 0110 SEND"));
        status.auxFlag = true; // it transmits
        station.tick(status);
        QCOMPARE(station.lamps(), QString("0r1r1r0r TX 0110 SEND POWER"));
        QCOMPARE(station.sent(), QString("K0"));
    }

    void anotherRelayBoxIsReportedOnEveryTick()
    {
        Station station;
        QSignalSpy changed(&station.controller, &CVextralRemoteControl::onRelayBoxIdChanged);
        CDeviceStatus status = noRotor;
        status.relayBoxId = 5;
        station.tick(status);
        station.tick(status);
        station.controller.setRelayBoxId(5);
        station.tick(status);
        QCOMPARE(changed, (QList<QVariantList>{{0, 5}, {0, 5}}));
    }

    void aRotationRunsFromTheFirstMovingTickToItsEnd()
    {
        Station station;
        CVextralAntenna *antenna = station.antenna(0);
        QSignalSpy done(antenna, &CVextralAntenna::onRotationDone);
        antenna->setAngle(100.0);
        antenna->setTarget(120.0);
        station.tick(turning, 102.0);
        QVERIFY(antenna->isRotating());
        QCOMPARE(station.map.animationStep(), 0.0);
        station.tick(turning, 110.0);
        QCOMPARE(antenna->angle(), 110.0);
        QCOMPARE(station.map.animationStep(), 8.0 / station.map.animationTicks());
        station.tick(turning, -1.0);
        QCOMPARE(antenna->angle(), 110.0);
        QCOMPARE(done.size(), 0);
        station.tick(resting, 120.0);
        QCOMPARE(done.size(), 1);
        QVERIFY(!antenna->isRotating());
        QCOMPARE(antenna->angle(), 120.0);
        QCOMPARE(antenna->target(), -1.0);

        // At rest another angle changes the target only.
        station.tick(resting, 123.0);
        QCOMPARE(done.size(), 1);
        QCOMPARE(antenna->angle(), 120.0);
        QCOMPARE(antenna->target(), 123.0);
    }

    void aJumpIsNotFollowedAtOnce()
    {
        Station station;
        station.controller.setMonitorInterval(880); // ten ticks of the animation
        CVextralAntenna *antenna = station.antenna(0);
        CVextralAntenna *later = station.antenna(1);
        later->setRotorId(0);
        station.tick(turning, 100.0);
        station.tick(turning, 105.0);
        QCOMPARE(station.map.animationStep(), 0.5);
        station.tick(turning, 126.0);
        QCOMPARE(antenna->angle(), 110.0); // one period of the former step
        QVERIFY(antenna->isRotating());
        QCOMPARE(later->angle(), 105.0); // the tick ended before it
        station.tick(turning, 126.0);
        QCOMPARE(antenna->angle(), 126.0);
    }

    void theUnselectedRotorsDisplayShowsItsStoredAngle()
    {
        Station station;
        station.tick(resting, 50.0);
        station.antenna(1)->setAngle(211.9);
        station.antenna(2)->setAngle(33.0); // on no rotor
        station.tick(resting, 50.0);
        QCOMPARE(station.map.displayOf(station.antenna(1))->value(), 211);
        QCOMPARE(station.map.displayOf(station.antenna(2))->value(), 0);
    }

    void aTargetTurnsTheRotorOrMovesAFixedAntenna()
    {
        Station station;
        const auto turn = [&](CVextralAntenna *antenna, double target, const CDeviceStatus &status) {
            station.controller.statuses = {status};
            antenna->setTarget(target);
            station.controller.turnAntennaFromCurrentToTarget(antenna);
            return station.sent();
        };
        CVextralAntenna *antenna = station.antenna(0);
        QCOMPARE(turn(antenna, 77.9, resting), QString("K0 M77.9"));
        QCOMPARE(station.panel.dial()->value(), 77);
        QCOMPARE(turn(station.antenna(1), 5.0, turning), QString("K0"));
        QCOMPARE(turn(station.antenna(2), 123.0, resting), QString());
        QCOMPARE(station.antenna(2)->angle(), 123.0);

        station.controller.duringStatus = [&] { antenna->clearTarget(); }; // a poll drops it
        QCOMPARE(turn(antenna, 200.0, resting), QString("K0 M200"));
    }

    void theRotorButtonTogglesAndUndoesAFailedToggle_data()
    {
        QTest::addColumn<Statuses>("statuses");
        QTest::addColumn<QString>("sent");
        QTest::addColumn<int>("current");
        QTest::newRow("switches") << Statuses{resting, otherRotor} << "K0 K9 K0" << 1;
        QTest::newRow("already active") << Statuses{otherRotor} << "K0" << 0;
        QTest::newRow("lost on the way") << Statuses{resting, noAnswer} << "K0 K9 K0 K9" << 0;
        QTest::newRow("no answer") << Statuses{noAnswer} << "K0" << 0;
    }
    void theRotorButtonTogglesAndUndoesAFailedToggle()
    {
        QFETCH(Statuses, statuses);
        QFETCH(QString, sent);
        QFETCH(int, current);
        Station station;
        station.controller.statuses = statuses;
        emit station.panel.onToggleRotorButtonChange(1);
        QCOMPARE(station.sent(), sent);
        QCOMPARE(station.map.currentAntenna(), station.antenna(current));
    }

    void polledAnglesDoNotFightTheOperator()
    {
        Station station;
        CRotationDigitalDisplayWidget *display = station.panel.digitalDisplay();
        station.tick(resting, 40.0);
        QCOMPARE(display->value(), 40);
        emit display->onRotationStarted();
        emit display->onRotationChanging(90);
        QCOMPARE(station.antenna(0)->target(), 90.0);
        station.tick(resting, 40.0);
        QCOMPARE(display->value(), 90);
        station.sent();
        emit display->onRotationChanged(91);
        QCOMPARE(station.sent(), QString("K0 M91"));
        QVERIFY(!display->isEditing() && !station.panel.dial()->isPressed());
    }
};

QTEST_MAIN(TestRotorMonitoring)
#include "tst_rotormonitoring.moc"
