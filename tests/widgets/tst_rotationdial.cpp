// SPDX-License-Identifier: MIT
#include "widgets/rotationdialwidget.h"

#include "widgetevents.h"

#include <QtTest>

namespace {

struct Dial : Recorded<CRotationDialWidget>
{
    void press(double y) { send(QEvent::MouseButtonPress, y, Qt::LeftButton, Qt::LeftButton); }
    void move(double y) { send(QEvent::MouseMove, y, Qt::NoButton, Qt::LeftButton); }
    void release(double y) { send(QEvent::MouseButtonRelease, y, Qt::LeftButton, Qt::NoButton); }
    void send(QEvent::Type type, double y, Qt::MouseButton button, Qt::MouseButtons held)
    {
        sendMouse(this, type, {40, y}, button, held);
    }
};

} // namespace

class TestRotationDial : public QObject
{
    Q_OBJECT

private slots:
    void draggingTurnsOneDegreePerPixel_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<double>("dy");
        QTest::addColumn<QString>("told");
        QTest::newRow("370 up") << 0 << -370. << "started, changing 10, changed 10";
        QTest::newRow("two turns down, through north") << 10 << 721. << "started, changing 9, changed 9";
        QTest::newRow("half a pixel above the widget") << 5 << -.5 << "started, changing 6, changed 6";
        QTest::newRow("a full turn") << 90 << -360. << "started, changing 90";
        QTest::newRow("unwrapped start") << 400 << 0. << "started, changing 40, changed 40";
    }
    void draggingTurnsOneDegreePerPixel()
    {
        QFETCH(int, start);
        QFETCH(double, dy);
        Dial dial;
        dial.setValue(start, true);
        dial.press(0);
        dial.move(dy);
        dial.release(dy);
        QTEST(dial.log.join(", "), "told");
    }

    void onlyTheLeftButtonAloneTurns()
    {
        Dial dial;
        dial.setPressed(true); // by the program, not by the mouse
        dial.move(5);
        dial.send(QEvent::MouseButtonRelease, 20, Qt::RightButton, Qt::NoButton);
        dial.send(QEvent::MouseButtonPress, 20, Qt::LeftButton, Qt::LeftButton | Qt::RightButton);
        dial.move(5);
        dial.release(5);
        QCOMPARE(dial.log, QStringList());

        dial.press(20);
        dial.send(QEvent::MouseButtonRelease, 15, Qt::RightButton, Qt::LeftButton);
        dial.move(0);
        dial.release(0);
        QCOMPARE(dial.log, (QStringList{"started", "changed 5"}));
    }

    void polledValuesWaitForTheOperator()
    {
        Dial dial;
        // A receiver of the start may still set the value to start from.
        connect(&dial, &Dial::onRotationStarted, &dial, [&] { dial.setValue(120, false); });
        dial.press(20);
        dial.setValue(200, false);
        QCOMPARE(dial.value(), 120);
        dial.setValue(200, true);
        dial.move(19);
        QCOMPARE(dial.value(), 121);
        dial.release(19);
        dial.setValue(200, false);
        QCOMPARE(dial.value(), 200);
    }
};

QTEST_MAIN(TestRotationDial)
#include "tst_rotationdial.moc"
