#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "support/loglines.h"
#include "support/scriptedcontroller.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(CDeviceStatus)

namespace {

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

    CVextralRemoteControlWidget panel;
    CVextralAzimuthalWidget map;
    ScriptedController controller;
};

} // namespace

class TestRotorMonitoring : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void theSynchronisationPassReadsBothRotorsAndComesBack();
    void theSynchronisationPassGivesUpWhenTheRotorDoesNotSwitch();
    void aFailedTickDarkensPowerAndChangesNothingElse();
    void lampsFollowTheStatus_data();
    void lampsFollowTheStatus();
    void anotherRelayBoxIsReportedOnEveryTick();
    void aRotationRunsFromTheFirstMovingTickToItsEnd();
    void aJumpIsNotFollowedAtOnce();
    void atRestADifferingAngleChangesTheTargetOnly();
    void theUnselectedRotorsDisplayShowsItsStoredAngle();
    void rotorsAreSwitchedOnlyWhenNoneTurns_data();
    void rotorsAreSwitchedOnlyWhenNoneTurns();
    void aTargetTurnsTheRotorOrMovesAFixedAntenna();
    void theRotorButtonTogglesAndUndoesAFailedToggle_data();
    void theRotorButtonTogglesAndUndoesAFailedToggle();
    void polledAnglesDoNotFightTheOperator();
    void panelAndMapAreHandedOverOnce();
};

void TestRotorMonitoring::theSynchronisationPassReadsBothRotorsAndComesBack()
{
    Station station;
    using C = ScriptedController;
    station.controller.statuses = {C::status(0), C::status(0), C::status(1), C::status(0)};
    station.controller.angles = {10.7, 200.0, 11.0};
    station.controller.startMonitoring();
    QCOMPARE(station.controller.sent.join(QLatin1Char(' ')), QStringLiteral("K0 K0 K9 K0 K9 K0"));
    QCOMPARE(station.antenna(0)->angle(), 11.0);
    QCOMPARE(station.antenna(1)->angle(), 200.0);
    QCOMPARE(station.antenna(0)->target(), -1.0);
    QVERIFY(station.antenna(0)->isEnabled() && station.antenna(1)->isEnabled()
            && !station.antenna(2)->isEnabled());
    QCOMPARE(station.map.currentAntenna(), station.antenna(0));
    QCOMPARE(station.map.displayOf(station.antenna(1))->value(), 200);
}

void TestRotorMonitoring::theSynchronisationPassGivesUpWhenTheRotorDoesNotSwitch()
{
    Station station;
    LogLines log;
    station.controller.statuses = {ScriptedController::status(-1)};
    station.controller.startMonitoring();
    QCOMPARE(station.controller.sent.join(QLatin1Char(' ')), QStringLiteral("K0 K0 K9 K0"));
    const QString dashes(81, QLatin1Char('-'));
    const QStringList expected{
        QStringLiteral("CVextralRemoteControl::startMonitoring() - IN"),
        dashes,
        QStringLiteral("CVextralRemoteControl::monitore() - Nao deu certo a troca de rotor"),
        dashes,
        QStringLiteral("CVextralRemoteControl::startMonitoring() - 1"),
        QStringLiteral("CVextralRemoteControl::startMonitoring() - OUT")};
    QCOMPARE(log.lines(), expected);
}

void TestRotorMonitoring::aFailedTickDarkensPowerAndChangesNothingElse()
{
    class WithPower : public ScriptedController
    {
        bool hasSendAndPower() override { return true; }
    };
    CVextralRemoteControlWidget panel;
    WithPower controller;
    controller.setRemoteControlWidget(&panel);
    CDeviceStatus lit = ScriptedController::status(-1);
    lit.antennaRx[2] = true;
    lit.modelFlags[0] = true;
    controller.statuses = {lit};
    controller.tick();
    QVERIFY(panel.powerIndicator()->isChecked() && controller.isDeviceResponding());
    QVERIFY(panel.sendIndicator()->isChecked());

    controller.statuses = {CDeviceStatus()};
    controller.tick();
    QVERIFY(!panel.powerIndicator()->isChecked() && !controller.isDeviceResponding());
    QVERIFY(panel.antennaButtons().at(2)->isChecked());

    controller.statuses = {lit};
    controller.tick();
    QVERIFY(panel.powerIndicator()->isChecked() && controller.isDeviceResponding());
    controller.stopMonitoring();
    QVERIFY(!controller.isDeviceResponding());
}

void TestRotorMonitoring::lampsFollowTheStatus_data()
{
    QTest::addColumn<bool>("aux");
    QTest::addColumn<QString>("antennas");
    QTest::newRow("receiving") << false << QStringLiteral("1010");
    QTest::newRow("transmitting shows the transmit lines") << true << QStringLiteral("0110");
}

void TestRotorMonitoring::lampsFollowTheStatus()
{
    QFETCH(bool, aux);
    QFETCH(QString, antennas);
    Station station;
    LogLines log;
    CDeviceStatus status = ScriptedController::status(-1);
    status.antennaRx[0] = status.antennaRx[2] = true;
    status.antennaTx[1] = status.antennaTx[2] = true;
    status.auxFlag = aux;
    station.controller.updateStatusDisplay(status);
    QString shownAntennas;
    QString shownTx;
    for (int i = 0; i < 4; ++i) {
        shownAntennas +=
            station.panel.antennaButtons().at(i)->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
        shownTx += station.panel.txButtons().at(i)->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
        QCOMPARE(station.panel.antennaButtons().at(i)->isRedState(), aux);
    }
    QCOMPARE(shownAntennas, antennas);
    QCOMPARE(shownTx, QStringLiteral("0110"));
    QVERIFY(log.contains(QStringLiteral("ANTENA [0] = > 1"))
            && log.contains(QStringLiteral("ANTENA [3] = > 0")));
    QVERIFY(station.controller.sent.isEmpty());
}

void TestRotorMonitoring::anotherRelayBoxIsReportedOnEveryTick()
{
    Station station;
    QSignalSpy changed(&station.controller, &CVextralRemoteControl::onRelayBoxIdChanged);
    CDeviceStatus status = ScriptedController::status(-1);
    status.relayBoxId = 5;
    station.controller.statuses = {status};
    station.controller.tick();
    station.controller.tick();
    QCOMPARE(changed.size(), 2);
    QCOMPARE(changed.first(), (QVariantList{0, 5}));
    station.controller.setRelayBoxId(5);
    station.controller.tick();
    QCOMPARE(changed.size(), 2);
}

void TestRotorMonitoring::aRotationRunsFromTheFirstMovingTickToItsEnd()
{
    Station station;
    CVextralAntenna *antenna = station.antenna(0);
    QSignalSpy done(antenna, &CVextralAntenna::onRotationDone);
    station.controller.statuses = {ScriptedController::status(0)};
    station.controller.angles = {100.0};
    station.controller.tick();
    antenna->setAngle(100.0);
    antenna->setTarget(120.0);

    station.controller.statuses = {ScriptedController::status(0, true)};
    station.controller.angles = {102.0};
    station.controller.tick();
    QVERIFY(antenna->isRotating());
    QCOMPARE(station.map.animationStep(), 0.0);
    station.controller.angles = {110.0};
    station.controller.tick();
    QCOMPARE(antenna->angle(), 110.0);
    QVERIFY(qAbs(station.map.animationStep() - 8.0 / station.map.animationTicks()) < 1e-9);
    QCOMPARE(done.size(), 0);

    // A failed angle read passes the antenna over.
    station.controller.angles = {-1.0};
    station.controller.tick();
    QCOMPARE(antenna->angle(), 110.0);

    station.controller.statuses = {ScriptedController::status(0)};
    station.controller.angles = {120.0};
    station.controller.tick();
    QCOMPARE(done.size(), 1);
    QVERIFY(!antenna->isRotating());
    QCOMPARE(antenna->angle(), 120.0);
    QCOMPARE(antenna->target(), -1.0);
}

void TestRotorMonitoring::aJumpIsNotFollowedAtOnce()
{
    Station station;
    station.controller.setMonitorInterval(880); // ten ticks of the animation
    CVextralAntenna *antenna = station.antenna(0);
    CVextralAntenna *later = station.antenna(1);
    later->setRotorId(0);
    station.controller.statuses = {ScriptedController::status(0, true)};
    station.controller.angles = {100.0};
    station.controller.tick();
    station.controller.angles = {105.0};
    station.controller.tick();
    QCOMPARE(station.map.animationStep(), 0.5);

    LogLines log;
    station.controller.angles = {126.0};
    station.controller.tick();
    QVERIFY(log.contains(QStringLiteral("................. Jump 10.00 interval 2.10")));
    QCOMPARE(antenna->angle(), 110.0); // one period of the former step
    QVERIFY(antenna->isRotating());
    QCOMPARE(later->angle(), 105.0); // the tick ended before it

    station.controller.tick();
    QCOMPARE(antenna->angle(), 126.0);
}

void TestRotorMonitoring::atRestADifferingAngleChangesTheTargetOnly()
{
    Station station;
    LogLines log;
    CVextralAntenna *antenna = station.antenna(0);
    antenna->setAngle(100.0);
    station.controller.statuses = {ScriptedController::status(0)};
    station.controller.angles = {103.0};
    QSignalSpy done(antenna, &CVextralAntenna::onRotationDone);
    station.controller.tick();
    QCOMPARE(antenna->angle(), 100.0);
    QCOMPARE(antenna->target(), 103.0);
    QVERIFY(log.contains(QStringLiteral("................. finalizando tgt[103.00]ani[0.00]a[100.00]")));
    QCOMPARE(done.size(), 0);
}

void TestRotorMonitoring::theUnselectedRotorsDisplayShowsItsStoredAngle()
{
    Station station;
    station.controller.statuses = {ScriptedController::status(0)};
    station.controller.angles = {50.0};
    station.controller.beginMonitoring();
    station.antenna(1)->setAngle(211.9);
    station.antenna(2)->setAngle(33.0); // on no rotor
    station.controller.tick();
    QCOMPARE(station.map.displayOf(station.antenna(1))->value(), 211);
    QCOMPARE(station.map.displayOf(station.antenna(2))->value(), 0);
}

void TestRotorMonitoring::rotorsAreSwitchedOnlyWhenNoneTurns_data()
{
    using C = ScriptedController;
    QTest::addColumn<int>("rotor");
    QTest::addColumn<QList<CDeviceStatus>>("statuses");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QString>("log");
    const QString prefix = QStringLiteral("CVextralRemoteControl::setCurrentRotor() - ");
    QTest::newRow("already") << 1 << QList<CDeviceStatus>{C::status(1)} << true
                             << prefix + QStringLiteral("Ja era o rotor corrente...");
    QTest::newRow("no answer") << 1 << QList<CDeviceStatus>{CDeviceStatus()} << false
                               << prefix + QStringLiteral("error ao tenter rotor corrente...");
    QTest::newRow("the other one turns") << 1 << QList<CDeviceStatus>{C::status(0, true)} << false
                                         << prefix + QStringLiteral("Ha um outro rotor em uso girando");
    QTest::newRow("switches") << 1 << QList<CDeviceStatus>{C::status(0), C::status(1)} << true
                              << prefix + QStringLiteral("vai trocar rotor");
    QTest::newRow("does not take") << 1 << QList<CDeviceStatus>{C::status(0), C::status(0)} << false
                                   << QStringLiteral("Comando K9");
    QTest::newRow("not a rotor of this box") << 2 << QList<CDeviceStatus>{C::status(0)} << false << QString();
    QTest::newRow("below the range") << -1 << QList<CDeviceStatus>{C::status(0), C::status(0)} << false
                                     << QStringLiteral("Comando K9");
}

void TestRotorMonitoring::rotorsAreSwitchedOnlyWhenNoneTurns()
{
    QFETCH(int, rotor);
    QFETCH(QList<CDeviceStatus>, statuses);
    QFETCH(bool, selected);
    QFETCH(QString, log);
    Station station;
    LogLines lines;
    station.controller.statuses = statuses;
    QCOMPARE(station.controller.setCurrentRotor(rotor), selected);
    QVERIFY(log.isEmpty() ? lines.lines().isEmpty() : lines.contains(log));
}

void TestRotorMonitoring::aTargetTurnsTheRotorOrMovesAFixedAntenna()
{
    Station station;
    LogLines log;
    station.controller.statuses = {ScriptedController::status(0)};
    station.antenna(0)->setTarget(77.9);
    station.controller.turnAntennaFromCurrentToTarget(station.antenna(0));
    QVERIFY(station.controller.sent.contains(QStringLiteral("M77.9")));
    QCOMPARE(station.panel.dial()->value(), 77);

    station.controller.sent.clear();
    station.controller.statuses = {ScriptedController::status(0, true)};
    station.antenna(1)->setTarget(5.0);
    station.controller.turnAntennaFromCurrentToTarget(station.antenna(1));
    QCOMPARE(station.controller.sent.join(QLatin1Char(' ')), QStringLiteral("K0"));
    QVERIFY(log.contains(
        QStringLiteral("CVextralRemoteControl::turnAntennaFromCurrentToTarget() - Rotor 1 nao responde")));

    station.controller.sent.clear();
    station.antenna(2)->setTarget(123.0);
    station.controller.turnAntennaFromCurrentToTarget(station.antenna(2));
    QCOMPARE(station.antenna(2)->angle(), 123.0);
    station.controller.turnAntennaFromCurrentToTarget(nullptr);

    // While the rotor is selected, a poll drops the target, or the operator chooses another one.
    station.controller.statuses = {ScriptedController::status(0)};
    station.antenna(0)->setTarget(200.0);
    station.controller.duringStatus = [&station] { station.antenna(0)->clearTarget(); };
    station.controller.turnAntennaFromCurrentToTarget(station.antenna(0));
    QCOMPARE(station.controller.sent.join(QLatin1Char(' ')), QStringLiteral("K0 M200"));
    station.controller.sent.clear();
    station.controller.duringStatus = [&station] {
        station.antenna(0)->setTarget(90.0);
        station.controller.turnAntennaFromCurrentToTarget(station.antenna(0));
    };
    station.controller.turnAntennaFromCurrentToTarget(station.antenna(0));
    QCOMPARE(station.controller.sent.join(QLatin1Char(' ')), QStringLiteral("K0 K0 M90"));
    station.controller.sent.clear();

    ScriptedController stranger;
    station.antenna(3)->setTarget(9.0);
    stranger.turnAntennaFromCurrentToTarget(station.antenna(3));
    QCOMPARE(station.antenna(3)->angle(), 0.0);
    QVERIFY(station.controller.sent.isEmpty());
}

void TestRotorMonitoring::theRotorButtonTogglesAndUndoesAFailedToggle_data()
{
    using C = ScriptedController;
    QTest::addColumn<QList<CDeviceStatus>>("statuses");
    QTest::addColumn<QString>("sent");
    QTest::addColumn<int>("current");
    QTest::newRow("switches") << QList<CDeviceStatus>{C::status(0), C::status(1)}
                              << QStringLiteral("K0 K9 K0") << 1;
    QTest::newRow("already active") << QList<CDeviceStatus>{C::status(1)} << QStringLiteral("K0") << 0;
    QTest::newRow("lost on the way") << QList<CDeviceStatus>{C::status(0), CDeviceStatus()}
                                     << QStringLiteral("K0 K9 K0 K9") << 0;
    QTest::newRow("no answer") << QList<CDeviceStatus>{CDeviceStatus()} << QStringLiteral("K0") << 0;
}

void TestRotorMonitoring::theRotorButtonTogglesAndUndoesAFailedToggle()
{
    QFETCH(QList<CDeviceStatus>, statuses);
    QFETCH(QString, sent);
    QFETCH(int, current);
    Station station;
    station.controller.statuses = statuses;
    emit station.panel.onToggleRotorButtonChange(1);
    QCOMPARE(station.controller.sent.join(QLatin1Char(' ')), sent);
    QCOMPARE(station.map.currentAntenna(), station.antenna(current));
}

void TestRotorMonitoring::polledAnglesDoNotFightTheOperator()
{
    Station station;
    station.controller.statuses = {ScriptedController::status(0)};
    station.controller.angles = {40.0};
    CRotationDigitalDisplayWidget *display = station.panel.digitalDisplay();
    station.controller.tick();
    QCOMPARE(display->value(), 40);
    emit display->onRotationStarted();
    emit display->onRotationChanging(90);
    QCOMPARE(station.antenna(0)->target(), 90.0);
    station.controller.tick();
    QCOMPARE(display->value(), 90);
    station.controller.sent.clear();
    emit display->onRotationChanged(91);
    QVERIFY(station.controller.sent.contains(QStringLiteral("M91")));
    QVERIFY(!display->isEditing() && !station.panel.dial()->isPressed());
}

void TestRotorMonitoring::panelAndMapAreHandedOverOnce()
{
    Station station;
    CVextralRemoteControlWidget second;
    station.controller.setRemoteControlWidget(&second);
    station.controller.setRemoteControlWidget(nullptr);
    QCOMPARE(station.controller.remoteControlWidget(), &station.panel);
    QVERIFY(second.antennaButtons().isEmpty());
    emit station.panel.onAtennaTXButtonChange(3);
    QCOMPARE(station.controller.sent, QStringList{QStringLiteral("TX3")});

    class MoreAntennas : public ScriptedController
    {
        int antennaCount() override { return 6; }
    };
    LogLines log;
    CVextralAzimuthalWidget map;
    MoreAntennas controller;
    controller.setAzimuthalWiget(&map);
    QCOMPARE(map.antennaCount(), 4);
    QCOMPARE(log.count(
                 QStringLiteral("CVextralRemoteControl::setAzimuthalWiget() - Warning: antenna de indice [5] "
                                "nao aparece no azimutal")),
             1);
}

QTEST_MAIN(TestRotorMonitoring)
#include "tst_rotormonitoring.moc"
