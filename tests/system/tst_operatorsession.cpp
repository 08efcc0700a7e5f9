#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "device/vextralremotecontrol.h"
#include "simbox/traffictext.h"
#include "support/station.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>

class TestOperatorSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { Station::writeFreshSettings(); }

    void theFirstConnectionSynchronisesAndThenPolls();
    void aSessionFromStartToStart();
    void withoutAPortTheWindowIsSafeToUse();
};

void TestOperatorSession::theFirstConnectionSynchronisesAndThenPolls()
{
    Station station;
    station.startProgram();
    station.show();
    QTRY_VERIFY_WITH_TIMEOUT(station.line.commands().size() >= 7, 8000);
    const QByteArray expected = "K0\r\nK0\r\nK9\r\nK0\r\nK0\r\nK0\r\nK0\r\n";
    QCOMPARE(trafficText(station.line.receivedBytes().left(expected.size())), trafficText(expected));
    qint64 lastPoll = 0;
    int polls = 0;
    const auto traffic = station.line.traffic();
    for (const PtyLine::Traffic &piece : traffic) {
        if (!piece.fromProgram || ++polls < 5)
            continue;
        if (polls > 5)
            QVERIFY2(qAbs(piece.milliseconds - lastPoll - 1500) < 150,
                     qPrintable(QString::number(piece.milliseconds - lastPoll)));
        lastPoll = piece.milliseconds;
    }
}

void TestOperatorSession::aSessionFromStartToStart()
{
    Station station;
    station.startProgram();
    station.show();
    QCOMPARE(station.heard(), QStringLiteral("K0 K0 K9 K0"));
    QCOMPARE(station.window()->windowTitle(), QStringLiteral("Vextral - Lumen3-S 1 "));
    station.settle();
    QCOMPARE(station.shown(), QStringLiteral("RX 0000 TX 0000 -"));

    // Switching: each toggle is read back twice, the lamps follow at the next poll.
    station.press(Qt::Key_F2);
    QCOMPARE(station.heard(), QStringLiteral("K2 K0 K0"));
    station.click(station.panel()->txButtons().at(0));
    QCOMPARE(station.heard(), QStringLiteral("K5 K0 K0"));
    station.click(station.panel()->antennaButtons().at(3));
    QCOMPARE(station.heard(), QStringLiteral("K4 K0 K0"));
    station.poll();
    QCOMPARE(station.heard(), QStringLiteral("K0"));
    QCOMPARE(station.shown(), QStringLiteral("RX 0101 TX 1000 POWER"));
    QCOMPARE(station.panel()->powerIndicator()->toolTip(),
             QStringLiteral("Connected through %1.").arg(Station::boxLink()));
    station.press(Qt::Key_F2);
    station.press(Qt::Key_F5);
    station.line.withBox(
        [](SimulatedBox &box) { box.setReceivePort(0, true); }); // somebody at the box itself
    station.poll();
    QCOMPARE(station.heard(), QStringLiteral("K2 K0 K0 K5 K0 K0 K0"));
    QCOMPARE(station.shown(), QStringLiteral("RX 1001 TX 0000 POWER"));
    station.line.withBox([](SimulatedBox &box) { box.setAux(true); });
    station.press(Qt::Key_F7);
    station.poll();
    QCOMPARE(station.shown(), QStringLiteral("RX 0010 TX 0010 POWER"));
    QVERIFY(station.panel()->antennaButtons().at(0)->isRedState());
    station.line.withBox([](SimulatedBox &box) { box.setAux(false); });
    station.line.clearReceived();

    // Settings: a stack name, and an antenna's name that the panel shows at once.
    station.press(Qt::Key_F5, Qt::ControlModifier);
    auto *dialog = station.get<QDialog>("CSettingsDIalog");
    QVERIFY(dialog->isVisible());
    station.poll(); // goes on under the dialog
    QCOMPARE(station.heard(), QStringLiteral("K0"));
    QLineEdit *name = station.controller()->antenna(1)->editor()->nameEdit();
    station.get<QTabWidget>("tabWidget")->setCurrentIndex(1);
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, QStringLiteral("North/East"));
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(dialog->isVisible());
    QCOMPARE(station.panel()->antennaButtons().at(1)->text(), QStringLiteral("North\nEast"));
    auto *stackName = station.get<QLineEdit>("stackNameLineEdit");
    stackName->setFocus();
    QTest::keyClicks(stackName, QStringLiteral("Hill"));
    QTest::keyClick(stackName, Qt::Key_Return);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(station.window()->windowTitle(), QStringLiteral("Vextral - Lumen3-S 1 Hill"));
    QCOMPARE(station.heard(), QString());

    // Another relay box, and back.
    station.line.withBox([](SimulatedBox &box) { box.setRelayBoxId(4); });
    station.poll();
    QCOMPARE(station.heard(), QStringLiteral("K0 K0 K0 K9 K0"));
    QCOMPARE(station.window()->windowTitle(), QStringLiteral("Vextral - Lumen3-S 4 4"));
    station.poll();
    QCOMPARE(station.heard(), QStringLiteral("K0"));
    station.line.withBox([](SimulatedBox &box) { box.setRelayBoxId(1); });
    station.poll();
    QCOMPARE(station.heard(), QStringLiteral("K0 K0 K0 K9 K0"));
    QCOMPARE(station.window()->windowTitle(), QStringLiteral("Vextral - Lumen3-S 1 Hill"));

    // Close and start again: everything is remembered.
    station.window()->resize(640, 222);
    QTRY_COMPARE(station.window()->size(), QSize(640, 222));
    QCoreApplication::processEvents();
    station.closeProgram();
    QCOMPARE(station.heard(), QString());
    station.startProgram();
    station.show();
    QCOMPARE(station.heard(), QStringLiteral("K0 K0 K9 K0"));
    QCOMPARE(station.window()->size(), QSize(640, 222));
    QCOMPARE(station.window()->windowTitle(), QStringLiteral("Vextral - Lumen3-S 1 Hill"));
    QCOMPARE(station.panel()->antennaButtons().at(1)->text(), QStringLiteral("North\nEast"));
    station.settle();
    station.poll();
    QCOMPARE(station.shown(), QStringLiteral("RX 1001 TX 0010 POWER"));
}

void TestOperatorSession::withoutAPortTheWindowIsSafeToUse()
{
    Station::writeFreshSettings(QStringLiteral("/nowhere/port"));
    Station station;
    station.startProgram();
    station.show();
    for (int key = Qt::Key_F1; key <= Qt::Key_F12; ++key) {
        station.press(static_cast<Qt::Key>(key));
        station.press(static_cast<Qt::Key>(key), Qt::ShiftModifier);
    }
    for (CAntennaButton *button : station.panel()->antennaButtons())
        station.click(button);
    for (CLedButton *button : station.panel()->txButtons())
        station.click(button);
    station.press(Qt::Key_Left);
    station.press(Qt::Key_Right);
    QTest::qWait(300); // the held key's end
    QVERIFY(!station.panel()->powerIndicator()->isChecked());
    QVERIFY(station.panel()->powerIndicator()->toolTip().contains(
        QStringLiteral("no serial port \"/nowhere/port\"")));
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(station.heard(), QString());
}

QTEST_MAIN(TestOperatorSession)
#include "tst_operatorsession.moc"
