// SPDX-License-Identifier: MIT
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "settings/settings.h"
#include "support/scriptedwindow.h"
#include "widgets/memorybutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/rotorselectorwidget.h"

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
        settings.rotorIds[1] = 0;
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
        QCOMPARE(antenna->editor()->findChild<CRotorSelectorWidget *>()->currentIndex(), 0);
        QCOMPARE(window.get<QPushButton>("memoButton3")->text(), QString("123"));
    }

    void eachKeyServesOneShortcut()
    {
        for (int radios : {0, 3}) { // F9 is the third radio's, or switches the rotor
            Window window([radios](Box &box) { box.radios = radios; }, radios == 0 ? 2 : 0);
            for (const char *key : {"F1", "F4", "F5", "F9"})
                window.press(key);
            QCOMPARE(window.sent(), QString(radios == 0 ? "RX0 RX3 TX0 K9" : "RX0 RX3 TX0 radio2"));
            for (const QShortcut *shortcut : window.findChildren<QShortcut *>())
                QVERIFY(!shortcut->autoRepeat());
        }
    }

    void modesKeepTheirSizes()
    {
        struct Row
        {
            QString mode;
            bool mapSupport;
            int shown; // extended, mini, supermini
        };
        for (const Row &row : {Row{"extended", true, 0}, Row{"Mini", true, 0}, Row{"mini", true, 1},
                               Row{"supermini", true, 2}, Row{"extended", false, 1}}) {
            QList<QSize> sizes{{800, 600}, {500, 240}, {510, 200}};
            CSettings before;
            before.interfaceMode = row.mode;
            before.extendedSize = sizes[0];
            before.miniSize = sizes[1];
            before.superMiniSize = sizes[2];
            before.save();
            Window window([&row](Box &box) { box.mapSupport = row.mapSupport; });
            QCOMPARE(window.size(), sizes[row.shown]);
            QCOMPARE(window.get<QWidget>("propertiesButton")->isVisible(), row.shown == 0);
            QCOMPARE(window.get<QWidget>("memoryButtonsFrame")->isVisible(), row.shown != 2);
            QCOMPARE(window.map()->interfaceMode() == 1, row.shown == 0);
            QCOMPARE(window.map()->isVisible(), row.mapSupport && row.shown != 2);

            sizes[row.shown] += QSize(20, 10);
            window.resize(sizes[row.shown]);
            const CSettings after;
            QCOMPARE((QList<QSize>{after.extendedSize, after.miniSize, after.superMiniSize}), sizes);
        }
    }

    /// The state and the size as a window manager reports them.
    void onlyASizeThatTheOperatorChoseIsKept()
    {
        for (const auto state : {Qt::WindowMaximized, Qt::WindowMinimized, Qt::WindowFullScreen}) {
            for (const bool isPanelFirst : {false, true}) {
                Window window;
                const QSize size = window.size();
                const auto enter = [&window](Qt::WindowState entered) {
                    window.setWindowState(entered);
                    QCoreApplication::processEvents();
                    return window.windowState() == entered;
                };
                if (isPanelFirst)
                    window.click("propertiesButton");
                QVERIFY(enter(state));
                if (state != Qt::WindowMinimized) { // in which nothing can be clicked
                    window.click("propertiesButton");
                    window.click("hidePropertiesButton");
                    QCoreApplication::processEvents();
                    QCOMPARE(CSettings().extendedSize, size);
                }
                QVERIFY(enter(Qt::WindowNoState));
                window.click("hidePropertiesButton");
                QCOMPARE(window.size(), size);

                window.click("propertiesButton");
                QVERIFY(enter(state));
                window.close();
                QCOMPARE(CSettings().extendedSize, size);
            }
        }
    }

    /// The state and the size as a window manager reports them.
    void theOrderOfSizeAndStateDoesNotMatter()
    {
        for (const bool isStateFirst : {true, false}) {
            Window window;
            const QSize chosen(600, 500);
            window.resize(chosen);
            for (const auto state : {Qt::WindowMaximized, Qt::WindowNoState, Qt::WindowFullScreen}) {
                const QSize size = state == Qt::WindowNoState ? chosen : QSize(796, 596);
                if (isStateFirst)
                    window.overrideWindowState(state);
                window.windowHandle()->resize(size);
                QCoreApplication::processEvents();
                if (!isStateFirst)
                    window.overrideWindowState(state);
                QCOMPARE(window.size(), size);
                QCOMPARE(CSettings().extendedSize, chosen);
            }
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
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString("memoButton10"));
        emit window.get<CMemoryButton>("memoButton10")->onMemoryValueChanged(30);
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString()); // it holds something else now
        window.click("memoButton10");
        window.box()->lineOpen = false;
        window.box()->rotateTo(200.0);
        QCOMPARE(window.litMemories(), QString()); // nothing left the line
        window.box()->lineOpen = true;
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

    void aHeldKeyTurnsUntilItIsReallyLetGo()
    {
        const std::pair<Qt::Key, int> rows[] = {
            {Qt::Key_Left, 180}, {Qt::Key_F10, 180}, {Qt::Key_Right, 179}, {Qt::Key_F11, 179}};
        for (const auto &[key, end] : rows) {
            Window window;
            window.box()->angles = {33.6};
            QTest::keyPress(&window, key);
            QCOMPARE(window.sent(), QString("M%1").arg(end));
            QCOMPARE(window.antenna(0)->target(), -1.0);
            QCOMPARE(window.antenna(0)->previousTarget(), double(end));
            QTest::keyRelease(&window, key); // auto-repeat: release and press in one go
            QTest::keyPress(&window, key);
            QVERIFY(!QTest::qWaitFor([&window] { return !window.sent().isEmpty(); }, 400));
            QTest::keyRelease(&window, key);
            QCOMPARE(window.sent(), QString());
            QTRY_COMPARE(window.box()->sent, QStringList{"S"});
            QCOMPARE(window.antenna(0)->target(), 33.6);
        }
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

    /// But in a field, whose own keys they are.
    void theKeysTurnWhereverTheFocusIs()
    {
        for (const char *focused : {"enabledCheckBox", "qt_tabwidget_tabbar", "zoomInButton",
                                    "hidePropertiesButton", "turnToSpinBox", "nameEdit"}) {
            Window window;
            window.click("propertiesButton");
            auto *widget = window.get<QWidget>(focused);
            widget->setFocus();
            QTest::keyPress(widget, Qt::Key_Left);
            QTest::keyRelease(widget, Qt::Key_Left);
            const bool isField = qobject_cast<QSpinBox *>(widget) || qobject_cast<QLineEdit *>(widget);
            const auto all = [&window] { return window.box()->sent.join(' '); };
            QVERIFY2(QTest::qWaitFor([&] { return all() == "M180 S"; }, 500) != isField, focused);
            QVERIFY2(!isField || all().isEmpty(), focused);
        }
    }

    void onlyItsOwnReleaseEndsARotation()
    {
        Window window;
        // The press was a shortcut's.
        QTest::keyRelease(&window, Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(!QTest::qWaitFor([&window] { return !window.sent().isEmpty(); }, 400));
        QTest::keyPress(&window, Qt::Key_Left);
        QCOMPARE(window.sent(), QString("M180"));
        QTest::keyRelease(&window, Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(!QTest::qWaitFor([&window] { return !window.sent().isEmpty(); }, 400));
        QTest::keyRelease(&window, Qt::Key_Left);
        QTRY_COMPARE(window.box()->sent, QStringList{"S"});
    }

    void inADialogTheKeysAreTheWidgetsOwn()
    {
        Window window;
        auto *tabs = window.get<QTabWidget>("tabWidget");
        window.press("Ctrl+F5");
        QTest::keyClick(tabs->tabBar(), Qt::Key_Right);
        QCOMPARE(tabs->currentIndex(), 1);
        QVERIFY(!window.sent().contains('M'));
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
