// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "settings/settings.h"
#include "simbox/traffictext.h"
#include "support/loglines.h"
#include "support/simulatedline.h"

#include <QTest>
#include <QTimer>

#include <memory>

Q_DECLARE_METATYPE(LineFault)

namespace {

struct Controller : CVextralRemoteControl
{
    using CVextralRemoteControl::CVextralRemoteControl;
    using CVextralRemoteControl::isMonitoring;
};

/// The base controller on a simulated stack switch with a pair of rotors.
struct Station
{
    explicit Station(bool opened = true)
    {
        controller.setLineFactory(port.factory());
        controller.setMonitorInterval(3600 * 1000); // polls come from the test alone
        port.box().setRelayBoxId(0);
        port.box().setRotorPair(true);
        if (opened)
            controller.open("box");
        port.heard();
    }

    SimulatedPort port;
    CSettings settings;
    Controller controller{&settings};
};

} // namespace

/// What is said between the program and a box, on a line that takes no time.
class TestBoxDialogue : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void everyCommandIsHeardByteForByte()
    {
        Station station;
        Controller &controller = station.controller;
        const int before = station.port.receivedBytes().size();
        QVERIFY(controller.rotateTo(359.9) && controller.rotateCCW() && controller.rotateCW());
        QVERIFY(controller.stop());
        for (int i = 0; i < 4; ++i)
            QVERIFY(controller.toggleRX(i) && controller.toggleTX(i));
        QVERIFY(controller.toggleRotor());
        QVERIFY(controller.toggleSplit(0) && controller.toggleRadio(0));
        controller.getStatus();
        controller.getStatusAndCurrentAngle();
        controller.getCurrentAngle();
        const QByteArray expected = "M359\r\r\n\r\nL\r\r\n\r\nR\r\r\n\r\nS\r\r\n\r\n"
                                    "K1\r\nK5\r\nK2\r\nK6\r\nK3\r\nK7\r\nK4\r\nK8\r\nK9\r\nK0\r\nKG\r\nC\r\n";
        QCOMPARE(trafficText(station.port.receivedBytes().mid(before)), trafficText(expected));
    }

    void commandsAreLoggedBeforeTheyAreSentButReceivePortsAfter()
    {
        Station station;
        const LogLines log;
        station.port.onHeard = [](const QByteArray &command) { qDebug("heard %s", command.constData()); };
        station.controller.rotateCCW();
        station.controller.toggleRX(1);
        station.controller.toggleTX(2);
        const QString frame(44, '#');
        QCOMPARE(log.lines(),
                 (QStringList{frame, "Comando CCW", frame, "heard L", "heard K2", frame, "Comando TogleRX",
                              frame, frame, "Comando TogleTX", frame, "heard K7"}));
    }

    void theFirstConnectionSynchronisesBothRotors()
    {
        Station station(false);
        station.port.box().setRotorPair(false);
        const LogLines log;
        QVERIFY(station.controller.open("box"));
        QCOMPARE(station.port.heard(), QString("K0 K0 K9 K0"));
        QVERIFY(log.contains("CVextralRemoteControl::monitore() - Nao deu certo a troca de rotor"));

        QVERIFY(station.controller.open("/another/one")); // is open already
        QVERIFY(station.controller.close() && !station.controller.isOpen());
        station.port.box().setRotorPair(true);
        QVERIFY(station.controller.open("box"));
        QCOMPARE(station.port.heard(), QString("K0 K0 C K9 K0 C K9 K0 C"));
    }

    void whatHappensInsideTheSynchronisationPassCounts_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<bool>("opened");
        QTest::addColumn<QString>("heard");
        QTest::newRow("closed") << "close" << false << "K0";
        QTest::newRow("closed and opened") << "close open" << true << "K0 K0 K0 C K9 K0 C K9 K0 C";
        QTest::newRow("a rotor turned, which is not switched then") << "turn" << true << "K0 M200 K0 C";
        QTest::newRow("lost, which is tried again") << "pull" << true << "K0";
    }
    void whatHappensInsideTheSynchronisationPassCounts()
    {
        QFETCH(QString, what);
        QFETCH(bool, opened);
        QFETCH(QString, heard);
        Station station(false);
        Controller &controller = station.controller;
        QTimer::singleShot(0, &controller, [&] {
            if (what.startsWith("close"))
                controller.close();
            if (what.endsWith("open"))
                controller.open("box");
            if (what == "turn")
                controller.rotateTo(200);
            if (what == "pull")
                station.port.pullOut();
        });
        QCOMPARE(controller.open("box"), opened);
        QCOMPARE(controller.isMonitoring(), opened);
        QCOMPARE(station.port.heard(), heard);
    }

    void aReplyThatMakesNoSenseIsToldInBoundedTime_data()
    {
        QTest::addColumn<LineFault>("fault");
        QTest::addColumn<int>("ms");
        QTest::addColumn<QString>("log");
        QTest::newRow("silence") << LineFault::silence() << 400 << "getStatus() empty";
        QTest::newRow("refused") << LineFault::error() << 100
                                 << "Comando [K0] receber status veio erro [?>\n]";
        QTest::newRow("short line") << LineFault::replacedBy("ST=\r\n") << 300 << "getStatus() - error [ST=]";
        QTest::newRow("another prefix")
            << LineFault::replacedBy("XY=12345\r\n") << 100 << "getStatus() - content error [XY=12345]";
    }
    void aReplyThatMakesNoSenseIsToldInBoundedTime()
    {
        QFETCH(LineFault, fault);
        QFETCH(int, ms);
        QFETCH(QString, log);
        Station station;
        const LogLines lines;
        station.port.setFault(fault, 1);
        const int before = station.port.time();
        QVERIFY(!station.controller.getStatus().valid);
        QCOMPARE(station.port.time() - before, ms);
        QVERIFY2(lines.lines().last().endsWith(log), qPrintable(lines.lines().join('\n')));
    }

    void anglesAreReadWithAndWithoutTheStatus()
    {
        Station station;
        SimulatedPort &port = station.port;
        port.box().rotor(0).setPosition(123);
        Controller &controller = station.controller;
        QCOMPARE(controller.getCurrentAngle(), 123.0);
        port.setFault(LineFault::silence(), 1);
        QCOMPARE(controller.getCurrentAngle(), -1.0);
        // Once a line begins otherwise, the rounds that are left fail with it.
        port.setFault(LineFault::replacedBy("noise\r\nAZ=045\r\n"), 1);
        QCOMPARE(controller.getCurrentAngle(), -1.0);

        port.box().setReceivePort(0, true); // a status byte of zero would hide the angle
        port.box().rotor(0).setPosition(271);
        const CDeviceStatus status = controller.getStatusAndCurrentAngle();
        QVERIFY(status.valid && status.rotorSelected[0]);
        QCOMPARE(status.angle, 271.0);
    }

    void rotorsAreSwitchedOnlyWhenNoneTurns_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<int>("rotor");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("heard");
        QTest::newRow("already") << "rests" << 0 << true << "K0";
        QTest::newRow("switches") << "rests" << 1 << true << "K0 K9 K0";
        QTest::newRow("the other one turns") << "turns" << 1 << false << "K0";
        QTest::newRow("does not take") << "has no rotors" << 1 << false << "K0 K9 K0";
        QTest::newRow("no answer") << "is silent" << 1 << false << "K0";
        QTest::newRow("not a rotor of this box") << "rests" << 2 << false << "";
        QTest::newRow("below the range") << "rests" << -1 << false << "K0 K9 K0";
    }
    void rotorsAreSwitchedOnlyWhenNoneTurns()
    {
        QFETCH(QString, box);
        QFETCH(int, rotor);
        QFETCH(bool, selected);
        QFETCH(QString, heard);
        Station station;
        station.port.box().setRotorPair(box != "has no rotors");
        if (box == "turns")
            station.port.box().handle("R");
        if (box == "is silent")
            station.port.setFault(LineFault::silence(), 1);
        QCOMPARE(station.controller.setCurrentRotor(rotor), selected);
        QCOMPARE(station.port.heard(), heard);
    }

    void clicksDuringAReadAreServedOnceAndInOrder()
    {
        Station station(false);
        CDeviceLumen4S box(station.settings);
        box.setLineFactory(station.port.factory());
        box.open("box");
        station.port.heard();
        QTimer::singleShot(0, &box, [&] { box.toggleRX(2); });
        QTimer::singleShot(0, &box, [&] { box.toggleTX(0); });
        QVERIFY(box.getStatus().valid);
        const QString heard = station.port.heard();
        QCOMPARE(heard.count("K0"), 5); // the read itself and two after each toggle
        QCOMPARE(QString(heard).remove("K0").simplified(), QString("K3 K5"));
    }

    void openingTheLineAnewInsideAReadEndsItAndSaysNothingOfTheNewLine()
    {
        Station station;
        const auto openAnew = [&] {
            station.controller.close();
            station.controller.open("box");
        };
        QTimer::singleShot(0, &station.controller, openAnew);
        QVERIFY(!station.controller.getStatus().valid);
        QTimer::singleShot(0, &station.controller, openAnew);
        station.controller.monitore();
        QCOMPARE(station.controller.lineState().kind, LineState::Kind::Answering);
        QVERIFY(station.controller.isDeviceResponding());

        station.port.pullOut();
        QCoreApplication::processEvents();
        QVERIFY(!station.controller.isDeviceResponding());
    }

    void withoutALineEverythingIsSafe()
    {
        Station station(false);
        Controller &controller = station.controller;
        controller.setCurrentRotor(1);
        controller.onRotationTargetChanged(7);
        controller.monitore();
        QVERIFY(!controller.rotateTo(5) && !controller.rotateCCW() && !controller.rotateCW());
        QVERIFY(!controller.stop() && !controller.toggleRX(0) && !controller.toggleTX(3));
        QVERIFY(!controller.getStatus().valid && !controller.getStatusAndCurrentAngle().valid);
        QCOMPARE(controller.getCurrentAngle(), -1.0);

        station.port.pullOut();
        QVERIFY(!controller.open("box"));
        QVERIFY(!controller.stop() && !controller.getStatus().valid);
        // The line of a failed open stays until close().
        station.port.plugIn();
        QVERIFY(!controller.open("box"));
        QVERIFY(controller.close() && controller.open("box"));
    }
};

QTEST_MAIN(TestBoxDialogue)
#include "tst_boxdialogue.moc"
