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

    void theKeysTurnWhereverTheFocusIs_data()
    {
        QTest::addColumn<QString>("focused");
        QTest::addColumn<QString>("sent");
        QTest::newRow("the tick") << "enabledCheckBox"
                                  << "M180 S";
        QTest::newRow("the tabs") << "qt_tabwidget_tabbar"
                                  << "M180 S";
        QTest::newRow("a tool button") << "zoomInButton"
                                       << "M180 S";
        QTest::newRow("a number field, whose own key it is") << "turnToSpinBox"
                                                             << "";
        QTest::newRow("a text field, whose own key it is") << "nameEdit"
                                                           << "";
    }
    void theKeysTurnWhereverTheFocusIs()
    {
        QFETCH(QString, focused);
        QFETCH(QString, sent);
        ScriptedWindow window;
        window.click("propertiesButton");
        auto *widget = window.findChild<QWidget *>(focused);
        widget->setFocus();
        QTest::keyPress(widget, Qt::Key_Left);
        QTest::keyRelease(widget, Qt::Key_Left);
        const auto all = [&window] { return window.box()->sent.join(' '); };
        QCOMPARE(QTest::qWaitFor([&] { return all() == "M180 S"; }, 500), !sent.isEmpty());
        QCOMPARE(all(), sent);
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
