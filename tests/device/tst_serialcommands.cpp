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

Q_DECLARE_METATYPE(LineFault)

namespace {

/// The base controller on a simulated stack switch that carries a pair of rotors, over a pseudo-terminal.
struct Line
{
    explicit Line(bool opened = true) : controller(&settings), pty(folder.filePath(QStringLiteral("box")))
    {
        pty.withBox([](SimulatedBox &box) { box.setRelayBoxId(0); });
        pty.start();
        if (opened)
            open();
    }

    void open()
    {
        controller.open(pty.linkPath());
        controller.stopMonitoring(); // queries come from the test alone
        pty.clearReceived();
    }

    QString heard()
    {
        QTest::qWait(0);
        return QString::fromLatin1(pty.commands().join(' '));
    }

    CSettings settings;
    CVextralRemoteControl controller;
    QTemporaryDir folder;
    PtyLine pty;
};

QString logPrefix()
{
    return QStringLiteral("................. CVextralRemoteControl::");
}

} // namespace

class TestSerialCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void everyCommandIsHeardByteForByte();
    void theFirstConnectionSynchronises();
    void aMisbehavingLineLeavesTheStatusInvalidInBoundedTime_data();
    void aMisbehavingLineLeavesTheStatusInvalidInBoundedTime();
    void aLateReplyAnswersTheNextQuery();
    void anglesAreReadAndRemembered();
    void theStatusWithAngleChangesTheAnglesOnSuccessOnly();
    void clicksDuringAReadAreServedOnceAndInOrder();
    void closingThePortInsideAReadEndsIt();
    void withoutAPortEverythingIsSafe();
    void aPortThatCannotBeOpenedIsExplained_data();
    void aPortThatCannotBeOpenedIsExplained();
};

void TestSerialCommands::everyCommandIsHeardByteForByte()
{
    Line line;
    LogLines log;
    QVERIFY(line.controller.rotateTo(359.9));
    QVERIFY(line.controller.rotateCCW());
    QVERIFY(line.controller.rotateCW());
    QVERIFY(line.controller.stop());
    for (int i = 0; i < 4; ++i)
        QVERIFY(line.controller.toggleRX(i) && line.controller.toggleTX(i));
    QVERIFY(line.controller.toggleRotor());
    QVERIFY(line.controller.toggleSplit(0) && line.controller.toggleRadio(0));
    line.controller.getStatus();
    line.controller.getStatusAndCurrentAngle();
    line.controller.getCurrentAngle();
    const QByteArray expected = "M359\r\r\n\r\nL\r\r\n\r\nR\r\r\n\r\nS\r\r\n\r\n"
                                "K1\r\nK5\r\nK2\r\nK6\r\nK3\r\nK7\r\nK4\r\nK8\r\nK9\r\nK0\r\nKG\r\nC\r\n";
    QCOMPARE(trafficText(line.pty.receivedBytes()), trafficText(expected));

    const QString frame(44, QLatin1Char('#'));
    const QStringList start = log.lines().mid(0, 7);
    QCOMPARE(start, (QStringList{frame, QStringLiteral("Comando girar"), frame, frame, frame,
                                 QStringLiteral("Comando CCW"), frame}));
    for (const char *text : {"Comando CW", "Comando STOP", "Comando TogleRX", "Comando TogleTX",
                             "Comando toggle Rotor", "Comando [K0] receber status",
                             "Comando [KG] receber status e angulo", "Comando [C] receber angulo"})
        QVERIFY2(log.contains(QLatin1String(text)), text);
}

void TestSerialCommands::theFirstConnectionSynchronises()
{
    Line line(false);
    LogLines log;
    QVERIFY(line.controller.open(line.pty.linkPath()));
    QCOMPARE(line.heard(), QStringLiteral("K0 K0 K9 K0"));
    QVERIFY(log.contains(QStringLiteral("CVextralRemoteControl::open() - 1 1 1 1 1 1")));
    QVERIFY(line.controller.open(QStringLiteral("/another/one")));
    QVERIFY(line.controller.close());
    QVERIFY(!line.controller.isOpen());

    line.pty.withBox([](SimulatedBox &box) { box.setRotorPair(true); });
    line.pty.clearReceived();
    QVERIFY(line.controller.open(line.pty.linkPath()));
    QCOMPARE(line.heard(), QStringLiteral("K0 K0 C K9 K0 C K9 K0 C"));
}

void TestSerialCommands::aMisbehavingLineLeavesTheStatusInvalidInBoundedTime_data()
{
    QTest::addColumn<LineFault>("fault");
    QTest::addColumn<QString>("log");
    const QString getStatus = logPrefix() + QStringLiteral("getStatus()");
    QTest::newRow("silence") << LineFault::silence() << getStatus + QStringLiteral(" empty");
    QTest::newRow("cut before the line end")
        << LineFault::cutAfter(5) << getStatus + QStringLiteral(" empty");
    QTest::newRow("error reply") << LineFault::error()
                                 << QStringLiteral("Comando [K0] receber status veio erro [?>\n]");
    QTest::newRow("short line") << LineFault::replacedBy("ST=\r\n")
                                << getStatus + QStringLiteral(" - error [ST=]");
    QTest::newRow("another prefix") << LineFault::replacedBy("XY=12345\r\n")
                                    << getStatus + QStringLiteral(" - content error [XY=12345]");
    QTest::newRow("the other query's reply")
        << LineFault::otherReply() << getStatus + QStringLiteral(" - content error [AZ=000]");
    QTest::newRow("zeros") << LineFault::nuls(20) << getStatus + QStringLiteral(" - content error []");
    QTest::newRow("no line end") << LineFault::flood(300) << getStatus + QStringLiteral(" empty");
    QTest::newRow("echo") << LineFault::echo() << QString();
}

void TestSerialCommands::aMisbehavingLineLeavesTheStatusInvalidInBoundedTime()
{
    QFETCH(LineFault, fault);
    QFETCH(QString, log);
    Line line;
    LogLines lines;
    line.pty.setFault(fault, 1);
    QElapsedTimer time;
    time.start();
    const CDeviceStatus status = line.controller.getStatus();
    QVERIFY2(time.elapsed() < 100 + 3 * 100 + 150, qPrintable(QString::number(time.elapsed())));
    QVERIFY(log.isEmpty() || !status.valid);
    QVERIFY2(log.isEmpty() || lines.contains(log), qPrintable(lines.lines().join(QLatin1Char('\n'))));
}

void TestSerialCommands::aLateReplyAnswersTheNextQuery()
{
    Line line;
    line.pty.setFault(LineFault::delayed(450), 1);
    QVERIFY(!line.controller.getStatus().valid);
    line.pty.withBox([](SimulatedBox &box) { box.setReceivePort(0, true); });
    QVERIFY(!line.controller.getStatus().antennaRx[0]);
    QVERIFY(line.controller.getStatus().antennaRx[0]);
}

void TestSerialCommands::anglesAreReadAndRemembered()
{
    Line line;
    line.pty.withBox([](SimulatedBox &box) {
        box.setRotorPair(true);
        box.rotor(0).setPosition(123);
    });
    QCOMPARE(line.controller.getCurrentAngle(), 123.0);
    QCOMPARE(line.controller.lastReadAngle(), 123.0);
    LogLines log;
    line.pty.setFault(LineFault::silence(), 1);
    QCOMPARE(line.controller.getCurrentAngle(), -1.0);
    QCOMPARE(line.controller.lastReadAngle(), 123.0);
    QVERIFY(
        log.contains(QStringLiteral(">>>> [FALHA ao ler angulo. \"-1\" será utilizado para indicar erro]")));
    line.controller.toggleRotor();
    QCOMPARE(line.controller.lastReadAngle(), -1.0);

    // Once a line begins otherwise, the rounds that are left fail with it.
    line.pty.setFault(LineFault::replacedBy("noise\r\nAZ=045\r\n"), 1);
    QCOMPARE(line.controller.getCurrentAngle(), -1.0);
    QVERIFY(log.contains(QStringLiteral(">>> Ang.Lido[noiseAZ=045]")));
}

void TestSerialCommands::theStatusWithAngleChangesTheAnglesOnSuccessOnly()
{
    Line line;
    LogLines log;
    line.pty.withBox([](SimulatedBox &box) {
        box.setRotorPair(true);
        box.setReceivePort(0, true);
        box.rotor(0).setPosition(271);
    });
    const CDeviceStatus status = line.controller.getStatusAndCurrentAngle();
    QVERIFY(status.valid && status.rotorSelected[0]);
    QCOMPARE(status.angle, 271.0);
    QCOMPARE(line.controller.lastReadAngle(), 271.0);
    QVERIFY(log.contains(QStringLiteral("................. Tudo lido [271.00]")));

    const QPair<LineFault, QString> failures[] = {
        {LineFault::silence(), QStringLiteral(" conteúdo vazio")},
        {LineFault::replacedBy("T=1\r\n"), QStringLiteral(" - conteúdo meio errado: [T=1]")},
        {LineFault::replacedBy("X=AB123\r\n"), QStringLiteral(" - conteúdo errado. Veio: [X=AB123]")}};
    for (const auto &[fault, text] : failures) {
        line.pty.setFault(fault, 1);
        QVERIFY(!line.controller.getStatusAndCurrentAngle().valid);
        QVERIFY2(log.contains(logPrefix() + QStringLiteral("getStatusAndCurrentAngle()") + text),
                 qPrintable(text));
    }
    QCOMPARE(line.controller.lastReadAngle(), 271.0);
}

void TestSerialCommands::clicksDuringAReadAreServedOnceAndInOrder()
{
    CSettings settings;
    CDeviceLumen4S controller(settings);
    QTemporaryDir folder;
    PtyLine pty(folder.filePath(QStringLiteral("box")));
    QVERIFY(pty.start());
    controller.open(pty.linkPath());
    controller.stopMonitoring();
    pty.clearReceived();
    QTimer::singleShot(0, &controller, [&controller] { controller.toggleRX(2); });
    QTimer::singleShot(0, &controller, [&controller] { controller.toggleTX(0); });
    QVERIFY(controller.getStatus().valid);
    QList<QByteArray> heard = pty.commands();
    QCOMPARE(heard.removeAll("K0"), 5); // the read itself and two after each toggle
    QCOMPARE(heard, (QList<QByteArray>{"K3", "K5"}));
}

void TestSerialCommands::closingThePortInsideAReadEndsIt()
{
    Line line;
    QTimer::singleShot(0, &line.controller, [&line] {
        line.controller.close();
        line.controller.open(line.pty.linkPath());
    });
    QVERIFY(!line.controller.getStatus().valid);
    QVERIFY(line.controller.isOpen());
    QVERIFY(line.controller.getStatus().valid);
}

void TestSerialCommands::withoutAPortEverythingIsSafe()
{
    Line line(false);
    LogLines log;
    CVextralRemoteControl &controller = line.controller;
    const auto tryEverything = [&controller] {
        controller.toggleRX(0);
        controller.toggleTX(3);
        controller.toggleRotor();
        controller.rotateTo(5);
        controller.rotateCCW();
        controller.rotateCW();
        controller.setCurrentRotor(1);
        controller.onRotationTargetChanged(7);
        controller.monitore();
        return controller.stop() || controller.getStatus().valid
            || controller.getStatusAndCurrentAngle().valid || controller.getCurrentAngle() >= 0
            || controller.currentRotor(nullptr) >= 0;
    };
    QVERIFY(!tryEverything());
    QVERIFY(log.contains(logPrefix() + QStringLiteral("getStatus() - Porta serial nao esta aberta")));
    QVERIFY(log.contains(logPrefix()
                         + QStringLiteral("getStatusAndCurrentAngle() - Porta serial nao esta aberta")));

    QVERIFY(!controller.open(QStringLiteral("/nowhere/port")));
    QVERIFY(log.contains(QStringLiteral("CVextralRemoteControl::open() - 1 1 1 1 1 0")));
    QVERIFY(!tryEverything());
    // The port object of a failed open stays until close().
    QVERIFY(!controller.open(line.pty.linkPath()));
    controller.close();
    QVERIFY(!tryEverything());
    QVERIFY(controller.open(line.pty.linkPath()));
}

void TestSerialCommands::aPortThatCannotBeOpenedIsExplained_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("busy") << QStringLiteral("busy");
    QTest::newRow("no port at all") << QStringLiteral("file");
    QTest::newRow("good") << QStringLiteral("good");
}

void TestSerialCommands::aPortThatCannotBeOpenedIsExplained()
{
    QFETCH(QString, kind);
    Line line(false);
    CDeviceLumen4S controller(line.settings);
    CVextralRemoteControlWidget panel;
    controller.setRemoteControlWidget(&panel);
    QSerialPort other;
    QString name = line.pty.linkPath();
    QString expected = QStringLiteral("Connected through %1.").arg(name);
    if (kind == QLatin1String("missing")) {
        name = QStringLiteral("/nowhere/ttyS9");
        expected = QStringLiteral("There is no serial port \"/nowhere/ttyS9\"."
                                  " Choose another one under File, Preferences.");
    } else if (kind == QLatin1String("busy")) {
        other.setPortName(name);
        QVERIFY(other.open(QIODevice::ReadWrite));
        expected = QStringLiteral("%1 is in use by another program.").arg(name);
    } else if (kind == QLatin1String("file")) {
        name = line.folder.filePath(QStringLiteral("plain"));
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        expected = name + QStringLiteral(" could not be opened: ");
    }
    controller.setRelayBoxId(0);
    const bool good = controller.open(name);
    QCOMPARE(good, kind == QLatin1String("good"));
    if (good)
        controller.monitore();
    QVERIFY2(panel.powerIndicator()->toolTip().startsWith(expected),
             qPrintable(panel.powerIndicator()->toolTip()));
    QCOMPARE(panel.powerIndicator()->isChecked(), good);
}

QTEST_MAIN(TestSerialCommands)
#include "tst_serialcommands.moc"
