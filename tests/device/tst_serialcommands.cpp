#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "settings/settings.h"
#include "simbox/ptyline.h"
#include "simbox/traffictext.h"
#include "support/loglines.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

Q_DECLARE_METATYPE(LineFault)

namespace {

/// The base controller on a simulated stack switch, over a pseudo-terminal. The box gets its pair of rotors
/// once the port is open, because synchronising them takes long.
struct Line
{
    explicit Line(bool opened = true) : controller(&settings), pty(folder.filePath("box"))
    {
        pty.withBox([](SimulatedBox &box) { box.setRelayBoxId(0); });
        pty.start();
        if (opened) {
            open(controller);
            setRotorPair(true);
        }
    }

    void setRotorPair(bool present)
    {
        pty.withBox([present](SimulatedBox &box) { box.setRotorPair(present); });
    }

    /// Queries come from the test alone from then on.
    void open(CVextralRemoteControl &opening)
    {
        opening.open(pty.linkPath());
        opening.stopMonitoring();
        pty.clearReceived();
    }

    QString heard()
    {
        const QString text = pty.commands().join(' ');
        pty.clearReceived();
        return text;
    }

    CSettings settings;
    CVextralRemoteControl controller;
    QTemporaryDir folder;
    PtyLine pty;
};

} // namespace

class TestSerialCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void everyCommandIsHeardByteForByte()
    {
        Line line;
        const LogLines log;
        CVextralRemoteControl &controller = line.controller;
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
        QCOMPARE(trafficText(line.pty.receivedBytes()), trafficText(expected));
        const QString frame(44, '#');
        QCOMPARE(log.lines().mid(4, 3), (QStringList{frame, "Comando CCW", frame}));
    }

    void theFirstConnectionSetsTheLineUpAndSynchronises()
    {
        Line line(false);
        const LogLines log;
        // Before the controller, which keeps it to itself.
        const int terminal = ::open(qPrintable(line.pty.slavePath()), O_RDONLY | O_NOCTTY);
        QVERIFY(line.controller.open(line.pty.linkPath()));
        QCOMPARE(line.heard(), QString("K0 K0 K9 K0"));
        QVERIFY(log.contains("CVextralRemoteControl::monitore() - Nao deu certo a troca de rotor"));
        termios found = {};
        QCOMPARE(tcgetattr(terminal, &found), 0);
        ::close(terminal);
        QCOMPARE(cfgetospeed(&found), speed_t(B9600));
        QCOMPARE(found.c_cflag & (CSIZE | CSTOPB | PARENB | CRTSCTS), tcflag_t(CS8));
        QCOMPARE(found.c_iflag & (IXON | IXOFF), tcflag_t(0));

        QVERIFY(line.controller.open("/another/one")); // is open already
        QVERIFY(line.controller.close() && !line.controller.isOpen());
        line.setRotorPair(true);
        QVERIFY(line.controller.open(line.pty.linkPath()));
        QCOMPARE(line.heard(), QString("K0 K0 C K9 K0 C K9 K0 C"));
    }

    void aReplyThatMakesNoSenseIsToldInBoundedTime_data()
    {
        QTest::addColumn<LineFault>("fault");
        QTest::addColumn<QString>("log");
        QTest::newRow("silence") << LineFault::silence() << "getStatus() empty";
        QTest::newRow("refused") << LineFault::error() << "Comando [K0] receber status veio erro [?>\n]";
        QTest::newRow("short line") << LineFault::replacedBy("ST=\r\n") << "getStatus() - error [ST=]";
        QTest::newRow("another prefix")
            << LineFault::replacedBy("XY=12345\r\n") << "getStatus() - content error [XY=12345]";
    }
    void aReplyThatMakesNoSenseIsToldInBoundedTime()
    {
        QFETCH(LineFault, fault);
        QFETCH(QString, log);
        Line line;
        const LogLines lines;
        line.pty.setFault(fault, 1);
        QElapsedTimer time;
        time.start();
        QVERIFY(!line.controller.getStatus().valid);
        QVERIFY2(time.elapsed() < 100 + 3 * 100 + 150, qPrintable(QString::number(time.elapsed())));
        QVERIFY2(lines.lines().last().endsWith(log), qPrintable(lines.lines().join('\n')));
    }

    void anglesAreReadWithAndWithoutTheStatus()
    {
        Line line;
        line.pty.withBox([](SimulatedBox &box) { box.rotor(0).setPosition(123); });
        CVextralRemoteControl &controller = line.controller;
        QCOMPARE(controller.getCurrentAngle(), 123.0);
        line.pty.setFault(LineFault::silence(), 1);
        QCOMPARE(controller.getCurrentAngle(), -1.0);
        // Once a line begins otherwise, the rounds that are left fail with it.
        line.pty.setFault(LineFault::replacedBy("noise\r\nAZ=045\r\n"), 1);
        QCOMPARE(controller.getCurrentAngle(), -1.0);

        line.pty.withBox([](SimulatedBox &box) {
            box.setReceivePort(0, true); // a status byte of zero would hide the angle
            box.rotor(0).setPosition(271);
        });
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
        Line line;
        line.setRotorPair(box != "has no rotors");
        if (box == "turns")
            line.pty.withBox([](SimulatedBox &turning) { turning.handle("R"); });
        if (box == "is silent")
            line.pty.setFault(LineFault::silence(), 1);
        QCOMPARE(line.controller.setCurrentRotor(rotor), selected);
        QCOMPARE(line.heard(), heard);
    }

    void clicksDuringAReadAreServedOnceAndInOrder()
    {
        Line line(false);
        CDeviceLumen4S controller(line.settings);
        line.open(controller);
        QTimer::singleShot(0, &controller, [&] { controller.toggleRX(2); });
        QTimer::singleShot(0, &controller, [&] { controller.toggleTX(0); });
        QVERIFY(controller.getStatus().valid);
        QList<QByteArray> heard = line.pty.commands();
        QCOMPARE(heard.removeAll("K0"), 5); // the read itself and two after each toggle
        QCOMPARE(heard, (QList<QByteArray>{"K3", "K5"}));
    }

    void closingThePortInsideAReadEndsIt()
    {
        Line line;
        QTimer::singleShot(0, &line.controller, [&] {
            line.controller.close();
            line.controller.open(line.pty.linkPath());
        });
        QVERIFY(!line.controller.getStatus().valid);
        QVERIFY(line.controller.isOpen());
        QVERIFY(line.controller.getStatus().valid);
    }

    void withoutAPortEverythingIsSafe()
    {
        Line line(false);
        CVextralRemoteControl &controller = line.controller;
        controller.setCurrentRotor(1);
        controller.onRotationTargetChanged(7);
        controller.monitore();
        QVERIFY(!controller.rotateTo(5) && !controller.rotateCCW() && !controller.rotateCW());
        QVERIFY(!controller.stop() && !controller.toggleRX(0) && !controller.toggleTX(3));
        QVERIFY(!controller.getStatus().valid && !controller.getStatusAndCurrentAngle().valid);
        QCOMPARE(controller.getCurrentAngle(), -1.0);

        QVERIFY(!controller.open("/nowhere/port"));
        QVERIFY(!controller.stop() && !controller.getStatus().valid);
        // The port object of a failed open stays until close().
        QVERIFY(!controller.open(line.pty.linkPath()));
        QVERIFY(controller.close() && controller.open(line.pty.linkPath()));
    }

    void aPortThatCannotBeOpenedIsExplained()
    {
        Line line(false);
        CDeviceLumen4S controller(line.settings);
        CVextralRemoteControlWidget panel;
        controller.setRemoteControlWidget(&panel);
        const CLedButton *power = panel.powerIndicator();
        const auto told = [&](const QString &port) {
            controller.close();
            controller.open(port);
            return power->toolTip();
        };
        QCOMPARE(told("/nowhere/ttyS9"), QString("There is no serial port \"/nowhere/ttyS9\"."
                                                 " Choose another one under File, Preferences."));
        QFile plain(line.folder.filePath("plain"));
        QVERIFY(plain.open(QIODevice::WriteOnly));
        QVERIFY2(told(plain.fileName()).startsWith(plain.fileName() + " could not be opened: "),
                 qPrintable(power->toolTip()));
        const QString name = line.pty.linkPath();
        {
            QSerialPort other(name);
            QVERIFY(other.open(QIODevice::ReadWrite));
            QCOMPARE(told(name), name + " is in use by another program.");
        }
        told(name);
        QVERIFY(!power->isChecked());
        controller.monitore();
        QCOMPARE(power->toolTip(), "Connected through " + name + '.');
        QVERIFY(power->isChecked());
    }
};

QTEST_MAIN(TestSerialCommands)
#include "tst_serialcommands.moc"
