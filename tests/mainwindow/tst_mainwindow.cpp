#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "settings/settings.h"
#include "support/scriptedwindow.h"
#include "widgets/memorybutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QtTest>
#include <QtWidgets>

using Box = ScriptedBox;
using Window = ScriptedWindow;

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { removeSettingsAndMaps(); }

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
        QCOMPARE(antenna->editor()->findChild<QLineEdit *>("nameEdit")->text(), settings.names[1]);
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

    void onlyASizeThatTheOperatorChoseIsKept_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("maximised") << int(Qt::WindowMaximized);
        QTest::newRow("minimised") << int(Qt::WindowMinimized);
        QTest::newRow("full screen") << int(Qt::WindowFullScreen);
    }
    void onlyASizeThatTheOperatorChoseIsKept()
    {
        QFETCH(int, state);
        Window window;
        const QSize size = window.size();
        QCoreApplication::processEvents();
        window.setWindowState(Qt::WindowState(state));
        QCoreApplication::processEvents();
        QVERIFY(window.windowState() & Qt::WindowState(state));
        window.click("propertiesButton");
        QCoreApplication::processEvents();
        window.click("hidePropertiesButton");
        QCoreApplication::processEvents();
        QCOMPARE(CSettings().extendedSize, size);
        window.close();
        QCOMPARE(CSettings().extendedSize, size);
    }

    /// The platform sends the state and then the size; where that is the present one it sends the state only.
    void theOrderOfSizeAndStateDoesNotMatter_data()
    {
        QTest::addColumn<bool>("stateFirst");
        QTest::newRow("state, size") << true;
        QTest::newRow("size, state") << false;
    }
    void theOrderOfSizeAndStateDoesNotMatter()
    {
        QFETCH(bool, stateFirst);
        Window window;
        const QSize frame = window.frameGeometry().size() - window.size();
        const QSize whole = window.screen()->availableSize() - frame;
        const auto follow = [&](Qt::WindowStates state, const QSize &size) {
            if (!stateFirst)
                window.resize(size);
            window.setWindowState(state);
            QCoreApplication::processEvents();
        };
        for (const QSize &chosen : {QSize(600, 500), QSize(620, 510)}) {
            window.resize(chosen);
            QCOMPARE(CSettings().extendedSize, chosen);
            follow(Qt::WindowMaximized, whole);
            QCOMPARE(window.size(), whole);
            QCOMPARE(CSettings().extendedSize, chosen);
            follow(Qt::WindowNoState, chosen);
            QCOMPARE(CSettings().extendedSize, chosen);
        }
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
        auto *memory = window.get<CMemoryButton>("memoButton10");
        emit memory->onMemoryValueChanged(200);
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString("memoButton10"));
        emit memory->onMemoryValueChanged(30);
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString()); // it holds something else now
        window.click("memoButton10");
        window.box()->lineOpen = false;
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString()); // nothing left the line
        window.box()->lineOpen = true;
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
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
