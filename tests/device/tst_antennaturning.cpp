// SPDX-License-Identifier: MIT
#include "antenna/spinbox.h"
#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "support/simulatedline.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"
#include "widgets/widgetevents.h"

#include <QFile>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

/// A box with a pair of rotors, a map and a panel. Antenna 0 is on rotor 0, which is selected, antennas 1 and
/// 2 share rotor 1, antenna 3 is fixed.
struct Station
{
    Station()
    {
        port.box().setRelayBoxId(0);
        port.box().setRotorPair(true);
        port.box().rotor(0).setPosition(40);
        port.box().rotor(1).setPosition(150);
        settings.rotorIds[2] = 1;
        controller.applyRotorAssignment(&settings);
        controller.setRemoteControlWidget(&panel);
        controller.setAzimuthalWiget(&map);
        map.setDevice(&controller);
        controller.setLineFactory(port.factory());
        controller.setMonitorInterval(3600 * 1000); // polls come from the test alone
        controller.open("box");
        controller.monitore();
        port.heard();
    }

    CVextralAntenna *antenna(int index) const { return controller.antenna(index); }
    CRotationDigitalDisplayWidget *display(int index) const { return map.displayOf(antenna(index)); }
    int shown(int index) const { return display(index)->value(); }

    /// While the box answers this command for the next time, this happens.
    void during(const QByteArray &command, const std::function<void()> &event)
    {
        port.onHeard = [this, command, event](const QByteArray &heard) {
            if (heard != command)
                return;
            port.onHeard = nullptr;
            QTimer::singleShot(0, &controller, event);
        };
    }

    SimulatedPort port;
    CVextralRemoteControlWidget panel;
    CVextralAzimuthalWidget map;
    CSettings settings;
    CVextralRemoteControl controller{&settings};
};

using Order = std::function<void(Station &)>;

} // namespace

class TestAntennaTurning : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { QFile::remove(SettingsFile::path()); }
    void cleanup() { QFile::remove(SettingsFile::path()); }

    void theNewestOrderWins()
    {
        const auto turn = [](int degrees, int antenna = 0) {
            return [=](Station &s) { s.controller.turnTo(s.antenna(antenna), degrees); };
        };
        const auto press = [](int antenna) {
            return [=](Station &s) { emit s.display(antenna)->onRotationStarted(); };
        };
        const auto type = [](int degrees) { return [=](Station &s) { typeTurnTo(s, degrees); }; };
        const Order stop = [](Station &s) { s.controller.stop(); };
        const Order rotorButton = [](Station &s) { emit s.panel.onToggleRotorButtonChange(1); };
        const Order nothing = [](Station &) {};
        const struct
        {
            const char *name;
            Order first;
            Order meanwhile;
            QString heard;
        } rows[] = {{"alone", turn(200), nothing, "K0 M200"},
                    {"STOP", turn(200), stop, "K0 S"},
                    {"CCW", turn(200), [](Station &s) { s.controller.rotateCCW(); }, "K0 L"},
                    {"CW", turn(200), [](Station &s) { s.controller.rotateCW(); }, "K0 R"},
                    {"another target", turn(200), turn(90), "K0 K0 M090"},
                    {"typed, alone", type(200), nothing, "K0 K0 M200"},
                    {"typed, typed again", type(200), type(90), "K0 K0 K0 M090"},
                    {"typed, STOP", type(200), stop, "K0 S"},

                    {"other rotor, STOP", turn(200, 1), stop, "K0 S"},
                    {"other rotor, another target", turn(200, 1), turn(90), "K0 K0 M090"},
                    {"another target for the other rotor", turn(200), turn(90, 1), "K0 K0 K9 K0 M090"},
                    {"the other display", turn(200), press(1), "K0 K0 K9 K0 C"},
                    {"F9", turn(200), [](Station &s) { s.controller.toggleRotor(); }, "K0 K9"},
                    {"rotor button", turn(200), rotorButton, "K0 K0 K9 K0"},
                    {"other rotor, STOP after K9", turn(200, 1), stop, "K0 K9 K0 S"},
                    {"display, STOP", press(1), stop, "K0 S"},
                    {"rotor button, a target", rotorButton, turn(90), "K0 K0 M090"}};
        for (const auto &row : rows) {
            Station s;
            s.during(row.heard.startsWith("K0 K9 K0 S") ? "K9" : "K0", [&] { row.meanwhile(s); });
            row.first(s);
            const QString heard = s.port.heard();
            QVERIFY2(heard == row.heard, qPrintable(row.name + (": " + heard)));
        }
    }

    void theOtherRotorIsTurnedWhenItIsThereAndNoneTurns()
    {
        const QPair<Order, QString> rows[] = {
            {[](Station &s) { s.port.box().handle("R"); }, "K0"},
            {[](Station &s) { s.port.loseReply(); }, "K0"},
            {[](Station &s) { s.port.box().setRotorPair(false); }, "K0 K9 K0"},
            {[](Station &) {}, "K0 K9 K0 M005"}};
        for (const auto &[prepare, heard] : rows) {
            Station s;
            prepare(s);
            s.controller.turnTo(s.antenna(1), 5);
            QCOMPARE(s.port.heard(), heard);
        }
    }

    void theRotorButtonMakesItsAntennaCurrentOrUndoesItsToggle()
    {
        Station s;
        emit s.panel.onToggleRotorButtonChange(1);
        QCOMPARE(s.port.heard(), QString("K0 K9 K0"));
        QCOMPARE(s.map.currentAntenna(), s.antenna(1));
        emit s.panel.onToggleRotorButtonChange(1); // is there already
        QCOMPARE(s.port.heard(), QString("K0"));
        s.port.onHeard = [&](const QByteArray &command) {
            if (command == "K9")
                s.port.loseReply();
        };
        emit s.panel.onToggleRotorButtonChange(0);
        QCOMPARE(s.port.heard(), QString("K0 K9 K0 K9"));
        QCOMPARE(s.map.currentAntenna(), s.antenna(1));
    }

    void anAntennaThatLosesItsRotorMeanwhileIsNotTakenForAFixedOne()
    {
        Station s;
        s.antenna(1)->setAngle(150);
        s.during("K0", [&] { s.antenna(1)->setRotorId(-1); });
        s.controller.turnTo(s.antenna(1), 200);
        QCOMPARE(s.antenna(1)->angle(), 150.0);
    }

    void aPressMakesItsAntennaCurrentAlsoOnASharedRotor()
    {
        Station s;
        // The rotor was not selected before, so the poll makes the first antenna on it current.
        s.during("K9", [&] { s.controller.monitore(); });
        emit s.display(2)->onRotationStarted();
        QCOMPARE(s.port.heard(), QString("K0 K9 K0 K0 C C"));
        QCOMPARE(s.map.currentAntenna(), s.antenna(2));
        QCOMPARE(s.antenna(2)->angle(), 150.0);
        QVERIFY(s.panel.dial()->isPressed());

        s.panel.setEditing(false);
        s.during("K0", [&] { emit s.display(3)->onRotationStarted(); });
        emit s.display(0)->onRotationStarted();
        QCOMPARE(s.map.currentAntenna(), s.antenna(3)); // the operator's last press
        QVERIFY(s.panel.dial()->isPressed());
    }

    void theLiveDisplayShowsPolledAzimuthsAndNoTargets()
    {
        Station s;
        QCOMPARE(s.shown(0), 40);
        QCOMPARE(s.shown(1), 150); // of the other rotor
        QVERIFY(s.antenna(1)->isEnabled() && !s.antenna(3)->isEnabled());
        s.controller.turnTo(s.antenna(0), 200);
        QCOMPARE(s.shown(0), 40);
        QCOMPARE(s.panel.digitalDisplay()->value(), 200);
        s.port.advance(1000);
        s.controller.monitore();
        QCOMPARE(s.shown(0), int(s.port.box().rotor(0).position()));
        QCOMPARE(s.panel.digitalDisplay()->value(), s.shown(0));
        QVERIFY(s.antenna(0)->isRotating());
        QCOMPARE(int(s.antenna(0)->angle()), s.shown(0));
        s.port.advance(60000);
        s.controller.monitore();
        QCOMPARE(s.antenna(0)->angle(), 200.0);
        QVERIFY(!s.antenna(0)->isRotating());
        QCOMPARE(s.antenna(0)->target(), -1.0);

        // Another antenna becomes current between two steps of the wheel.
        const int other = s.shown(1);
        emit s.display(0)->onRotationStarted();
        emit s.display(0)->onRotationChanging(77);
        s.controller.monitore();
        QCOMPARE(s.panel.digitalDisplay()->value(), 77);
        s.map.setCurrentAntenna(s.antenna(1));
        emit s.display(0)->onRotationChanging(78);
        QCOMPARE(s.shown(1), other);
        QVERIFY(!s.display(1)->isEditing());
    }

    void aWheelRunThatIsGivenUpLeavesNoTargetLine()
    {
        Station s;
        s.display(0)->setEnabled(true);
        turnWheel(s.display(0));
        turnWheel(s.display(0));
        QCOMPARE(s.antenna(0)->target(), 42.0);
        s.display(0)->setEnabled(false);
        QVERIFY(!s.antenna(0)->hasPendingTarget());
    }

    void aTurnIsRefusedWithoutALineAndFixedAntennasAreStored()
    {
        Station s;
        QVERIFY(s.controller.turnTo(s.antenna(3), 123));
        QCOMPARE(s.shown(3), 123);
        QCOMPARE(CSettings().angles[3], 123.0);
        s.port.pullOut();
        QVERIFY(!s.controller.turnTo(s.antenna(0), 200));
        QVERIFY(!s.controller.turnTo(nullptr, 200));
        QCOMPARE(s.port.heard(), QString());
    }

private:
    static void typeTurnTo(Station &s, int degrees)
    {
        CVextralAntenna *antenna = s.antenna(0);
        antenna->setEnabled(true);
        CVextralAntennaUI *editor = antenna->editor();
        if (!editor) {
            editor = new CVextralAntennaUI(2, &s.map);
            antenna->setEditor(editor);
        }
        auto *turnTo = editor->findChild<CSpinBox *>("turnToSpinBox");
        turnTo->setValue(degrees);
        QTest::keyClick(turnTo, Qt::Key_Return);
    }
};

QTEST_MAIN(TestAntennaTurning)
#include "tst_antennaturning.moc"
