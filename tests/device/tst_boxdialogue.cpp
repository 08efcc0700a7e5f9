// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "settings/settings.h"
#include "simbox/traffictext.h"
#include "support/simulatedline.h"

#include <QTest>
#include <QTimer>

#include <memory>

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

    void theFirstConnectionSynchronisesBothRotors()
    {
        Station station(false);
        station.port.box().setRotorPair(false);
        QVERIFY(station.controller.open("box"));
        QCOMPARE(station.port.heard(), QString("K0 K0 K9 K0"));

        QVERIFY(station.controller.open("/another/one")); // is open already
        QVERIFY(station.controller.close() && !station.controller.isOpen());
        station.port.box().setRotorPair(true);
        QVERIFY(station.controller.open("box"));
        QCOMPARE(station.port.heard(), QString("K0 K0 C K9 K0 C K9 K0 C"));
    }

    void whatHappensInsideTheSynchronisationPassCounts()
    {
        const struct
        {
            QString what;
            bool opened;
            QString heard;
        } rows[] = {{"close", false, "K0"},
                    {"close and open", true, "K0 K0 K0 C K9 K0 C K9 K0 C"},
                    {"turn, and its rotor stays selected", true, "K0 M200 K0 C"},
                    {"pull, which is tried again", true, "K0"}};
        for (const auto &row : rows) {
            Station station(false);
            Controller &controller = station.controller;
            QTimer::singleShot(0, &controller, [&] {
                if (row.what.startsWith("close"))
                    controller.close();
                if (row.what.endsWith("open"))
                    controller.open("box");
                if (row.what.startsWith("turn"))
                    controller.rotateTo(200);
                if (row.what.startsWith("pull"))
                    station.port.pullOut();
            });
            QVERIFY2(controller.open("box") == row.opened, qPrintable(row.what));
            QVERIFY2(controller.isMonitoring() == row.opened, qPrintable(row.what));
            QCOMPARE(row.what + ": " + station.port.heard(), row.what + ": " + row.heard);
        }
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

        // A line that is open but takes no orders would deliver them later.
        station.port.heard();
        station.port.setOutage(true);
        controller.toggleRX(0);
        controller.stop();
        QCOMPARE(station.port.heard(), QString());
    }
};

QTEST_MAIN(TestBoxDialogue)
#include "tst_boxdialogue.moc"
