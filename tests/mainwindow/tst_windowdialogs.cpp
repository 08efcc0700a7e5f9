// SPDX-License-Identifier: MIT
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "mainwindow/closerequests.h"
#include "settings/settings.h"
#include "support/scriptedwindow.h"
#include "widgets/antennabutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"
#include "widgets/widgetevents.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

using Box = ScriptedBox;
using Window = ScriptedWindow;

class TestWindowDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { removeSettingsAndMaps(); }

    void theSettingsDialogBorrowsTheEditors()
    {
        Window window;
        auto *tabs = window.get<QTabWidget>("tabWidget");
        window.press("Ctrl+F5");
        auto *dialog = window.get<QDialog>("CSettingsDIalog");
        QVERIFY(dialog->isModal() && dialog->isAncestorOf(tabs) && tabs->isVisible());

        window.get<QRadioButton>("miniUiRadioButton")->setChecked(true);
        window.get<QLineEdit>("stackNameLineEdit")->setText("Hill");
        dialog->accept();
        QVERIFY(window.map()->interfaceMode() != 1);
        QCOMPARE(window.windowTitle(), QString("Vextral - Lumen Quad 4 1 Hill"));

        window.get<QAction>("actionPreferences")->trigger();
        window.get<QRadioButton>("extendedUIRadioButton")->setChecked(true);
        dialog->reject();
        QVERIFY(window.map()->interfaceMode() != 1);
        QVERIFY(window.get<QWidget>("tabWidgetFrame")->isAncestorOf(tabs));
    }

    void eachWindowKeepsItsOwnTabs()
    {
        for (const bool firstGoes : {true, false}) {
            auto first = std::make_unique<Window>(); // whose dialog the second borrows
            auto second = std::make_unique<Window>();
            QVERIFY(QMetaObject::invokeMethod(second.get(), "onShowSettingsDialog"));
            std::unique_ptr<Window> &going = firstGoes ? first : second;
            Window &staying = firstGoes ? *second : *first;
            going.reset();
            QPointer<QTabWidget> tabs = staying.get<QTabWidget>("tabWidget");
            QVERIFY(tabs && tabs->count() == 4);
            QVERIFY(QMetaObject::invokeMethod(&staying, "onShowSettingsDialog"));
            QVERIFY(staying.get<QDialog>("CSettingsDIalog")->isAncestorOf(tabs));
            QCOMPARE(tabs->count(), 4);
        }
    }

    void anotherRelayBoxBringsItsConfiguration()
    {
        CSettings settings;
        settings.names[0] = "Beam";
        settings.save();
        Window window;
        // The box is heard once more while its change is still at work.
        connect(&window, &QWidget::windowTitleChanged, window.box(),
                [&window] { emit window.box()->onRelayBoxIdChanged(1, 2); });
        emit window.box()->onRelayBoxIdChanged(1, 2);
        QCOMPARE(window.box()->openedPorts.size(), 2);
        QCOMPARE(window.box()->relayBoxId(), 2);
        QCOMPARE(window.windowTitle(), QString("Vextral - Lumen Quad 4 2 2"));
        QCOMPARE(window.antenna(0)->name(), QString("Beam"));
        CSettings second;
        second.names[0] = "Dipole";
        second.rotorIds[0] = 1;
        second.comPortName = "COM2";
        second.save();

        emit window.box()->onRelayBoxIdChanged(2, 1);
        QCOMPARE(window.box()->shownName, QString("Beam"));
        window.press("Ctrl+F5");
        window.get<QLineEdit>("stackNameLineEdit")->setText("Hill");
        emit window.box()->onRelayBoxIdChanged(1, 2);
        QCOMPARE(window.box()->shownName, QString("Dipole"));
        QCOMPARE(window.antenna(0)->rotorId(), 1);
        QCOMPARE(window.box()->openedPorts.last(), QString("COM2"));
        QCOMPARE(window.get<QLineEdit>("serialPortLineEdit")->text(), QString("COM2"));
        window.get<QDialog>("CSettingsDIalog")->reject();
        // What was typed for box 1 was saved before box 2 came.
        emit window.box()->onRelayBoxIdChanged(2, 1);
        QCOMPARE(CSettings().relayBoxName, QString("Hill"));
    }

    void anotherConfigurationEndsWhatIsBeingChosen()
    {
        CSettings settings;
        settings.enabled[0] = true; // or its display takes no wheel
        settings.save();
        Window window([](Box &box) { box.labelEditor = true; });
        window.click("propertiesButton");
        QTest::mouseClick(window.antenna(0)->editor()->findChild<QWidget *>("colorWidget"), Qt::LeftButton);
        QPointer<QColorDialog> colours = window.findChild<QColorDialog *>();
        QVERIFY(colours);
        colours->setCurrentColor(Qt::green);
        window.press("Ctrl+F6");
        auto *display = window.map()->displayOf(window.antenna(0));
        turnWheel(display);
        QVERIFY(display->isEditing());
        window.sent();
        emit window.box()->onRelayBoxIdChanged(1, 2);
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY(!display->isEditing());
        QVERIFY(!QTest::qWaitFor([&window] { return window.sent().contains('M'); }, 1200));
        if (colours)
            colours->accept();
        QCOMPARE(CSettings().colors[0], QColor(Qt::blue));
    }

    void aTypedNameIsKeptByOkAndDroppedByCancel()
    {
        Window window;
        auto *name = window.antenna(1)->editor()->findChild<QLineEdit *>("nameEdit");
        for (const bool accepted : {false, true}) {
            window.press("Ctrl+F5");
            name->setText("Dipole");
            window.get<QDialog>("CSettingsDIalog")->done(accepted ? QDialog::Accepted : QDialog::Rejected);
            const QString kept = accepted ? "Dipole" : "Antena2";
            QCOMPARE(name->text(), kept);
            QCOMPARE(CSettings().names[1], kept);
            QCOMPARE(window.antenna(1)->name(), kept);
        }
    }

    void theMenuNamesTheKeysAndCloses()
    {
        Window window;
        QCOMPARE(window.get<QAction>("actionPreferences")->shortcut(), QKeySequence("Ctrl+F5"));
        window.press("Ctrl+F5"); // the key still reaches its shortcut
        auto *dialog = window.get<QDialog>("CSettingsDIalog");
        QVERIFY(dialog->isVisible());
        QVERIFY(!window.close()); // the dialog is in the way, and comes to the front
        QVERIFY(window.isVisible());
        QTRY_VERIFY(dialog->isActiveWindow());

        // The window system's request, of which Qt tells nothing while the dialog blocks the window.
        QDialog other;
        other.show();
        const auto isInFrontAfter = [&](const CloseRequests::ClientMessage &message) {
            other.activateWindow();
            CloseRequests::Result result = 0;
            auto copy = message;
            return QTest::qWaitFor([&other] { return QApplication::activeWindow() == &other; })
                && !QAbstractEventDispatcher::instance()->filterNativeEvent("xcb_generic_event_t", &copy,
                                                                            &result)
                && QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }, 500);
        };
        const auto id = quint32(window.winId());
        QVERIFY(isInFrontAfter({33, 32, 0, id, 1, 2, 3, {0, 0, 0}}));
        QVERIFY(!isInFrontAfter({33, 32, 0, id, 1, 2, 3, {id, 0, 0}})); // asks whether the program is alive
        other.close();
        dialog->reject();
        window.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &window);
        window.press("Ctrl+Q");
        QVERIFY(!window.isVisible());
    }

    void theMapImageIsReplacedOnlyByOneThatCouldBeCopied()
    {
        const QString installed = QCoreApplication::applicationDirPath() + "/AzimuthalMap.png";
        const QTemporaryDir folder;
        const QString chosen = folder.filePath("mine.bmp");
        QVERIFY(QImage(20, 10, QImage::Format_RGB32).save(chosen));
        Window window;
        const auto choose = [&window](const QString &file, QMessageBox::StandardButton answer) {
            window.click("pushButton");
            QTest::mouseClick(window.findChild<QMessageBox *>()->button(answer), Qt::LeftButton);
            if (auto *dialog = window.findChild<QFileDialog *>()) {
                emit dialog->fileSelected(file);
                dialog->close();
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        choose(chosen, QMessageBox::No);
        QVERIFY(!QFile::exists(installed));
        QVERIFY(window.get<QWidget>("mapNoticeLabel")->isVisible());
        choose(chosen, QMessageBox::Yes);
        QVERIFY(!window.get<QWidget>("mapNoticeLabel")->isVisible());
        for (const QString &file : {folder.filePath("gone.png"), installed, folder.path()}) {
            QCOMPARE(QImage(installed).size(), QSize(20, 10));
            choose(file, QMessageBox::Yes);
        }
        QCOMPARE(QImage(installed).size(), QSize(20, 10));

        QFile text(folder.filePath("text.png"));
        QVERIFY(text.open(QFile::WriteOnly) && text.write("no picture") > 0);
        text.close();
        choose(text.fileName(), QMessageBox::Yes);
        const auto *refusal = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(refusal && refusal->text().contains("text.png"));
        QCOMPARE(QImage(installed).size(), QSize(20, 10));
    }

    void labelsAreEditedWhereTheModelAllows()
    {
        QVERIFY(!Window().get<QAction>("actionLabels")->isEnabled());
        Window window([](Box &box) {
            box.labelEditor = true;
            box.radios = 1;
        });
        auto *name = window.antenna(1)->editor()->findChild<QLineEdit *>("nameEdit");
        window.press("Ctrl+F6");
        auto *dialog = window.get<QDialog>("CAntennaLabelEditorDialog");
        QVERIFY(dialog);
        const auto copies = dialog->findChildren<CAntennaButton *>(); // four antennas and the radio
        auto *text = dialog->findChild<QPlainTextEdit *>();
        text->setPlainText("nothing is selected");
        for (int copy : {1, 4}) {
            copies[copy]->click();
            text->setPlainText(QString("Two\nlines %1").arg(copy));
        }
        QVERIFY(copies[4]->isChecked() && !copies[1]->isChecked());
        dialog->accept();
        const auto *panel = window.get<CVextralRemoteControlWidget>("remoteControlWidget");
        QCOMPARE(panel->radioButtons().at(0)->text(), QString("Two\nlines 4"));
        QCOMPARE(window.antenna(1)->name(), QString("Two\nlines 1"));
        QCOMPARE(CSettings().names[0], QString("Antena1"));
        QCOMPARE(CSettings().names[1], QString("Two\nlines 1"));
        QCOMPARE(CSettings().radioNames[0], QString("Two\nlines 4"));
        QTest::keyClick(name, Qt::Key_Return); // the field shows the new name
        QVERIFY(CSettings().names[1].contains("lines 1"));
    }

    void labelsBeyondThoseInTheSettingsAreShownOnly()
    {
        Window window([](Box &box) {
            box.labelEditor = true;
            box.antennaTotal = 12;
            const CSettings settings;
            box.createAntennas(&settings);
        });
        window.press("Ctrl+F6");
        auto *dialog = window.get<QDialog>("CAntennaLabelEditorDialog");
        const auto copies = dialog->findChildren<CAntennaButton *>();
        QCOMPARE(copies.size(), 12);
        const QString eleventh = window.antenna(10)->name();
        for (int copy : {9, 10}) {
            copies[copy]->click();
            dialog->findChild<QPlainTextEdit *>()->setPlainText(QString("Far %1").arg(copy));
        }
        dialog->accept();
        QCOMPARE(window.antenna(9)->name(), QString("Far 9"));
        QCOMPARE(window.antenna(10)->name(), eleventh);
        QCOMPARE(CSettings().memories[0], QString("M1"));
    }
};

QTEST_MAIN(TestWindowDialogs)
#include "tst_windowdialogs.moc"
