// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "support/station.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"

#include <QDialog>
#include <QLineEdit>

class TestOperatorSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initResources();
        if (qgetenv("VEXTRAL_LINE") == "ser2net" && !Ser2Net::isInstalled())
            QSKIP("ser2net is not installed");
    }

    void aSessionFromStartToStart()
    {
        Station::writeFreshSettings();
        Station station;
        BoxLine &line = station.line;
        station.startProgram();
        QCOMPARE(line.commands(), QList<QByteArray>({"K0", "K0", "K9", "K0"}));
        const qint64 started = line.traffic().last().milliseconds;
        QTRY_COMPARE(line.commands().size(), 6);
        const qint64 twoPollsMs = line.traffic().last().milliseconds - started;
        QVERIFY2(qAbs(twoPollsMs - 3000) < 300, qPrintable(QString::number(twoPollsMs)));
        QCOMPARE(station.window->windowTitle(), QString("Vextral - Lumen3-S 1 "));
        QCOMPARE(station.shown(), QString("RX 0000 TX 0000 POWER"));
        station.pollEvery(Station::noPollsMs);
        line.clearReceived();

        // Switching: each toggle is read back twice, the lamps follow at the next poll.
        const QList<CAntennaButton *> antennas = station.panel()->antennaButtons();
        station.press(Qt::Key_F2);
        QCOMPARE(station.heard(), QString("K2 K0 K0"));
        QTest::mouseClick(station.panel()->txButtons().at(0), Qt::LeftButton);
        QCOMPARE(station.heard(), QString("K5 K0 K0"));
        QTest::mouseClick(antennas[3], Qt::LeftButton);
        QCOMPARE(station.heard(), QString("K4 K0 K0"));
        station.poll();
        QCOMPARE(station.shown(), QString("RX 0101 TX 1000 POWER"));
        line.withBox([](SimulatedBox &box) { box.setReceivePort(0, true); }); // somebody at the box itself
        station.press(Qt::Key_F2);
        station.press(Qt::Key_F5);
        station.poll();
        QCOMPARE(station.heard(), QString("K0 K2 K0 K0 K5 K0 K0 K0"));
        QCOMPARE(station.shown(), QString("RX 1001 TX 0000 POWER"));
        line.withBox([](SimulatedBox &box) { box.setAux(true); });
        station.press(Qt::Key_F7);
        station.poll();
        QCOMPARE(station.shown(), QString("RX 0010 TX 0010 POWER"));
        QVERIFY(antennas[0]->isRedState());
        line.withBox([](SimulatedBox &box) { box.setAux(false); });
        line.clearReceived();

        // Settings: a stack name, and an antenna's name that the panel shows at once.
        station.press(Qt::Key_F5, Qt::ControlModifier);
        auto *dialog = station.get<QDialog>("CSettingsDIalog");
        station.poll(); // goes on under the dialog
        QCOMPARE(station.heard(), QString("K0"));
        station.get<QTabWidget>("tabWidget")->setCurrentIndex(1);
        const auto enter = [](QLineEdit *edit, const QString &text) {
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, text);
            QTest::keyClick(edit, Qt::Key_Return);
        };
        enter(station.controller()->antenna(1)->editor()->findChild<QLineEdit *>("nameEdit"), "North/East");
        QVERIFY(dialog->isVisible());
        QCOMPARE(antennas[1]->text(), QString("North\nEast"));
        enter(station.get<QLineEdit>("stackNameLineEdit"), "Hill");
        QVERIFY(!dialog->isVisible());
        QCOMPARE(station.window->windowTitle(), QString("Vextral - Lumen3-S 1 Hill"));
        QCOMPARE(station.heard(), QString());

        // Another relay box, and back.
        line.withBox([](SimulatedBox &box) { box.setRelayBoxId(4); });
        station.poll();
        station.waitUntilConnected();
        QCOMPARE(station.heard(), QString("K0 K0 K0 K9 K0"));
        QCOMPARE(station.window->windowTitle(), QString("Vextral - Lumen3-S 4 4"));
        line.withBox([](SimulatedBox &box) { box.setRelayBoxId(1); });
        station.poll();
        station.waitUntilConnected();
        QCOMPARE(station.window->windowTitle(), QString("Vextral - Lumen3-S 1 Hill"));
        station.poll();
        QCOMPARE(station.heard(), QString("K0 K0 K0 K9 K0 K0"));

        // Close and start again: everything is remembered.
        station.window->resize(640, 222);
        QTRY_COMPARE(station.window->size(), QSize(640, 222));
        QCoreApplication::processEvents();
        station.window->close();
        station.window.reset();
        QCOMPARE(station.heard(), QString());
        station.startProgram();
        QCOMPARE(station.window->size(), QSize(640, 222));
        QCOMPARE(station.window->windowTitle(), QString("Vextral - Lumen3-S 1 Hill"));
        QCOMPARE(station.panel()->antennaButtons().at(1)->text(), QString("North\nEast"));
        station.poll();
        QCOMPARE(station.shown(), QString("RX 1001 TX 0010 POWER"));
    }

    void withoutAPortTheWindowIsSafeToUse()
    {
        Station::writeFreshSettings("/nowhere/port");
        Station station;
        station.startProgram();
        for (int key = Qt::Key_F1; key <= Qt::Key_F12; ++key) {
            station.press(Qt::Key(key));
            station.press(Qt::Key(key), Qt::ShiftModifier);
        }
        station.press(Qt::Key_Left);
        QTest::qWait(300); // the held key's end
        QVERIFY(!station.panel()->powerIndicator()->isChecked());
        QVERIFY(station.panel()->powerIndicator()->toolTip().contains("no serial port \"/nowhere/port\""));
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(station.heard(), QString());
    }
};

QTEST_MAIN(TestOperatorSession)
#include "tst_operatorsession.moc"
