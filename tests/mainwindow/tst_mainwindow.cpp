#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "settings/settings.h"
#include "support/scriptedcontroller.h"
#include "widgets/antennabutton.h"
#include "widgets/memorybutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

namespace {

/// Tells what the panel was laid out for last.
class Box : public ScriptedController
{
public:
    using ScriptedController::ScriptedController;
    bool hasOwnPanel() override { return true; }
    void relayoutPanel(int, int) override { shownName = antenna(0)->name(); }

    QString shownName;
};

/// A shown window on a scripted controller.
class Window : public CMainWindow
{
public:
    explicit Window(const std::function<void(Box &)> &prepare = {}, int rotors = 2)
        : CMainWindow([prepare, rotors](const CSettings &) {
              auto *box = new Box(rotors);
              box->statuses = {ScriptedController::status(0)};
              box->angles = {30.0};
              if (prepare)
                  prepare(*box);
              return box;
          })
    {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
        box()->sent.clear();
    }

    template <typename Widget>
    Widget *get(const char *name)
    {
        return findChild<Widget *>(QString(name));
    }

    void press(const QString &keys) { QTest::keySequence(this, QKeySequence(keys)); }
    void click(const char *button) { get<QPushButton>(button)->click(); }

    QString sent()
    {
        const QString text = box()->sent.join(' ');
        box()->sent.clear();
        return text;
    }

    /// The names of the memory buttons that are lit.
    QString litMemories()
    {
        QString names;
        for (const QPushButton *button : get<QWidget>("memoryButtonsFrame")->findChildren<QPushButton *>())
            names += button->isChecked() ? button->objectName() : QString();
        return names;
    }

    Box *box() { return static_cast<Box *>(CurrentObjects::controller()); }
    CVextralAntenna *antenna(int index) { return box()->antenna(index); }
    CVextralAzimuthalWidget *map() { return get<CVextralAzimuthalWidget>("azimuthalWidget"); }
};

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void init()
    {
        QDir folder(QCoreApplication::applicationDirPath());
        for (const QString &file : folder.entryList({"VextralRemoteControl.ini*", "*.png*"}))
            folder.remove(file);
    }

    void theWindowStandsOnItsSettings()
    {
        CSettings settings;
        settings.names[1] = "North/East & co";
        settings.angles[1] = 359.7;
        settings.enabled[1] = true;
        settings.memories[2] = "123";
        settings.relayBoxId = 7;
        settings.relayBoxName = "Hill";
        settings.comPortName = "COM9";
        settings.save();
        Window window;
        QCOMPARE(window.windowTitle(), QString("Vextral - Lumen Quad 4 7 Hill"));
        QCOMPARE(window.box()->openedPorts, QStringList{"COM9"});
        const CVextralAntenna *antenna = window.antenna(1);
        QCOMPARE(antenna->target(), 359.7);
        QVERIFY(antenna->isEnabled() && !antenna->isRotating());
        QCOMPARE(window.map()->displayOf(antenna)->value(), 0);
        QCOMPARE(antenna->editor()->nameEdit()->text(), settings.names[1]);
        QCOMPARE(window.get<QPushButton>("memoButton3")->text(), QString("123"));
    }

    void eachKeyServesOneShortcut_data()
    {
        QTest::addColumn<int>("radios");
        QTest::addColumn<int>("rotors");
        QTest::addColumn<QString>("last");
        QTest::newRow("rotors") << 0 << 2 << "K9";
        QTest::newRow("neither") << 0 << 0 << "K9";
        QTest::newRow("radios, the third of which needs F9") << 3 << 0 << "radio2";
    }
    void eachKeyServesOneShortcut()
    {
        QFETCH(int, radios);
        QFETCH(int, rotors);
        QFETCH(QString, last);
        Window window([radios](Box &box) { box.radios = radios; }, rotors);
        for (const char *key : {"F1", "F4", "F5", "F9"})
            window.press(key);
        QCOMPARE(window.sent(), "RX0 RX3 TX0 " + last);
        for (const QShortcut *shortcut : window.findChildren<QShortcut *>())
            QVERIFY(!shortcut->autoRepeat());
    }

    void modesKeepTheirSizes_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("mapSupport");
        QTest::addColumn<int>("shown"); // extended, mini, supermini
        QTest::newRow("extended") << "extended" << true << 0;
        QTest::newRow("any other word") << "Mini" << true << 0;
        QTest::newRow("mini") << "mini" << true << 1;
        QTest::newRow("supermini") << "supermini" << true << 2;
        QTest::newRow("without a map it is always mini") << "extended" << false << 1;
    }
    void modesKeepTheirSizes()
    {
        QFETCH(QString, mode);
        QFETCH(bool, mapSupport);
        QFETCH(int, shown);
        QList<QSize> sizes{{800, 600}, {500, 240}, {510, 200}};
        CSettings before;
        before.interfaceMode = mode;
        before.extendedSize = sizes[0];
        before.miniSize = sizes[1];
        before.superMiniSize = sizes[2];
        before.save();
        Window window([mapSupport](Box &box) { box.mapSupport = mapSupport; });
        QCOMPARE(window.size(), sizes[shown]);
        QCOMPARE(window.get<QWidget>("propertiesButton")->isVisible(), shown == 0);
        QCOMPARE(window.get<QWidget>("memoryButtonsFrame")->isVisible(), shown != 2);
        QCOMPARE(window.map()->interfaceMode() == 1, shown == 0);
        QCOMPARE(window.map()->isVisible(), mapSupport && shown != 2);

        sizes[shown] += QSize(20, 10);
        window.resize(sizes[shown]);
        QTRY_COMPARE(window.size(), sizes[shown]);
        QCoreApplication::processEvents();
        const CSettings after;
        QCOMPARE((QList<QSize>{after.extendedSize, after.miniSize, after.superMiniSize}), sizes);
    }

    void nothingOldShinesThroughAtAFractionalScale()
    {
        Window window;
        for (double scale : {1.25, 1.5, 1.75}) {
            const auto paintedOver = [&window, scale](Qt::GlobalColor old) {
                QPixmap picture(window.size() * scale);
                picture.setDevicePixelRatio(scale);
                picture.fill(old);
                window.render(&picture);
                return picture.toImage();
            };
            QCOMPARE(paintedOver(Qt::white), paintedOver(Qt::black));
        }
    }

    void thePropertiesPanelOpensAndClosesWithoutATrace()
    {
        Window window;
        const QSize size = window.size();
        window.click("propertiesButton");
        QCOMPARE(window.size(), size + QSize(350, 0));
        const double zoom = window.map()->zoom();
        for (const char *button : {"zoomInButton", "zoomInButton", "zoomInButton_2"})
            window.click(button);
        QCOMPARE(window.map()->zoom(), zoom + 0.2);
        window.click("hidePropertiesButton");
        QCOMPARE(window.size(), size);

        window.click("propertiesButton");
        window.close();
        QCoreApplication::processEvents();
        QCOMPARE(CSettings().extendedSize, size);
    }

    void memoriesTurnTheCurrentAntenna()
    {
        CSettings settings;
        settings.memories[0] = "045";
        settings.memories[8] = "5000";
        settings.memories[9] = "200";
        settings.save();
        Window window;
        window.click("memoButton1");
        QCOMPARE(window.sent(), QString("K0 M45"));
        QCOMPARE(window.antenna(0)->target(), 45.0);
        QCOMPARE(window.litMemories(), QString("memoButton1"));
        window.press("Shift+F10");
        QCOMPARE(window.sent(), QString("K0 M200"));
        window.click("memoButton2"); // a label
        window.click("memoButton9"); // no azimuth
        QCOMPARE(window.sent(), QString());
        QCOMPARE(window.litMemories(), QString("memoButton10"));
        emit window.antenna(0)->onRotationDone();
        QCOMPARE(window.litMemories(), QString());

        // The lamp tells of the target that is really approached.
        window.box()->duringStatus = [&window] { window.click("memoButton10"); };
        window.click("memoButton1");
        QCOMPARE(window.sent(), QString("K0 K0 M200"));
        QCOMPARE(window.litMemories(), QString("memoButton10"));
        window.box()->rotateTo(77.0);
        QCOMPARE(window.litMemories(), QString());
        emit window.get<CMemoryButton>("memoButton10")->onMemoryValueChanged(30);
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString()); // it holds something else now
        window.antenna(0)->setAngle(45.0);
        window.click("memoButton1");
        QCOMPARE(window.litMemories(), QString()); // it is there already
        window.sent();

        // The box refuses to switch rotors.
        window.box()->statuses = {CDeviceStatus()};
        window.click("memoButton1");
        QCOMPARE(window.sent(), QString("K0"));
        QCOMPARE(window.litMemories(), QString());
        window.map()->setCurrentAntenna(nullptr);
        window.press("Shift+F1");
        QCOMPARE(window.sent(), QString());
    }

    void theOppositeBearingFollowsTargetOrAngle()
    {
        struct Case
        {
            double angle, target;
            QString sent;
        };
        for (const Case &c : {Case{30.9, -1.0, "K0 M210"}, Case{30.0, 190.0, "K0 M10"},
                              Case{180.0, -1.0, "K0 M0"}, Case{-1.0, -1.0, ""}}) {
            Window window;
            window.antenna(0)->setAngle(c.angle);
            window.antenna(0)->setTarget(c.target);
            window.press("F12");
            QCOMPARE(window.sent(), c.sent);
            QCOMPARE(window.litMemories().isEmpty(), c.sent.isEmpty());
        }
    }

    void aLongPressEditsAMemoryAndRecallsNothing()
    {
        CSettings settings;
        settings.memories[3] = "90";
        settings.save();
        Window window;
        auto *memory = window.get<CMemoryButton>("memoButton4");
        QTest::mousePress(memory, Qt::LeftButton);
        QTRY_VERIFY(memory->isLongPressed());
        QTest::mouseRelease(memory, Qt::LeftButton);
        QVERIFY(!memory->isChecked());
        QWidget *editor = QApplication::focusWidget();
        QTest::keyClicks(editor, "12");
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(CSettings().memories[3], QString("12"));
        QCOMPARE(window.sent(), QString());
        window.press("Shift+F4");
        QCOMPARE(window.sent(), QString("K0 M12"));
    }

    void aHeldKeyTurnsUntilItIsReallyLetGo_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("end");
        QTest::newRow("Left") << Qt::Key_Left << 180;
        QTest::newRow("F10") << Qt::Key_F10 << 180;
        QTest::newRow("Right") << Qt::Key_Right << 179;
        QTest::newRow("F11") << Qt::Key_F11 << 179;
    }
    void aHeldKeyTurnsUntilItIsReallyLetGo()
    {
        QFETCH(Qt::Key, key);
        QFETCH(int, end);
        Window window;
        window.box()->angles = {33.6};
        auto *focused = window.get<QPushButton>("propertiesButton"); // which would take arrows for itself
        QTest::keyPress(focused, key);
        QCOMPARE(window.sent(), QString("M%1").arg(end));
        QCOMPARE(window.antenna(0)->target(), -1.0);
        QCOMPARE(window.antenna(0)->previousTarget(), double(end));
        QTest::keyRelease(focused, key); // auto-repeat: release and press in one go
        QTest::keyPress(focused, key);
        QVERIFY(!QTest::qWaitFor([&window] { return !window.sent().isEmpty(); }, 400));
        QTest::keyRelease(focused, key);
        QCOMPARE(window.sent(), QString());
        QTRY_COMPARE(window.box()->sent, QStringList{"S"});
        QCOMPARE(window.antenna(0)->target(), 33.6);
    }

    void aHeldKeyEndsWithoutAPositionOrAWindow()
    {
        Window window;
        window.box()->angles = {-1.0};
        QTest::keyPress(&window, Qt::Key_Left);
        QVERIFY(window.map()->isAnimating());
        QDialog other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QTRY_VERIFY(window.box()->sent.contains("S"));
        QVERIFY(!window.map()->isAnimating());
        QCOMPARE(window.antenna(0)->target(), -1.0);

        window.sent();
        QTest::keyPress(&window, Qt::Key_Right);
        window.close();
        QCOMPARE(window.sent(), QString("M179 S"));
    }

    void tabsFollowTheMapAndSwitchRotors()
    {
        Window window;
        auto *tabs = window.get<QTabWidget>("tabWidget");
        window.map()->setCurrentAntenna(window.antenna(2));
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(window.sent(), QString());
        tabs->setCurrentIndex(1);
        QCOMPARE(window.sent(), QString("K0 K0 K0")); // which rotor, may it switch, has it
        tabs->setCurrentIndex(3);
        window.map()->setCurrentAntenna(window.antenna(1));
        QCOMPARE(window.sent(), QString()); // the map's choice switches nothing
        tabs->setCurrentIndex(0);
        window.sent();
        window.box()->duringStatus = [tabs] { tabs->setCurrentIndex(3); };
        tabs->setCurrentIndex(1);
        QCOMPARE(window.sent(), QString("K0")); // the tab was left while the box was asked
    }

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
        choose(chosen, QMessageBox::Yes);
        for (const QString &file : {folder.filePath("gone.png"), installed, folder.path()}) {
            QCOMPARE(QImage(installed).size(), QSize(20, 10));
            choose(file, QMessageBox::Yes);
        }
        QCOMPARE(QImage(installed).size(), QSize(20, 10));
    }

    void labelsAreEditedWhereTheModelAllows()
    {
        QVERIFY(!Window().get<QAction>("actionLabels")->isEnabled());
        Window window([](Box &box) {
            box.labelEditor = true;
            box.radios = 1;
        });
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
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
