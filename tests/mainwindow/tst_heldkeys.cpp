// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "support/scriptedwindow.h"

#include <QtTest>
#include <QtWidgets>

class TestHeldKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { removeSettingsAndMaps(); }

    /// But in a field, whose own keys they are.
    void theKeysTurnWhereverTheFocusIs()
    {
        for (const char *focused : {"enabledCheckBox", "qt_tabwidget_tabbar", "zoomInButton",
                                    "hidePropertiesButton", "turnToSpinBox", "nameEdit"}) {
            ScriptedWindow window;
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
        ScriptedWindow window;
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
        ScriptedWindow window;
        auto *tabs = window.get<QTabWidget>("tabWidget");
        window.press("Ctrl+F5");
        QTest::keyClick(tabs->tabBar(), Qt::Key_Right);
        QCOMPARE(tabs->currentIndex(), 1);
        QVERIFY(!window.sent().contains('M'));
    }
};

QTEST_MAIN(TestHeldKeys)
#include "tst_heldkeys.moc"
