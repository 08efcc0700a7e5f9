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
    void draggingTurnsOneDegreePerPixel()
    {
        struct Row
        {
            int start;
            double dy;
            QString told;
        };
        for (const Row &row :
             {Row{0, -370, "started, changing 10, changed 10"},
              Row{10, 721, "started, changing 9, changed 9"}, // twice round, through north
              Row{5, -.5, "started, changing 6, changed 6"},  // from inside to above the widget
              Row{90, -360, "started, changing 90"}}) {
            Dial dial;
            dial.setValue(row.start, true);
            dial.press(0);
            dial.move(row.dy);
            dial.release(row.dy);
            QCOMPARE(dial.log.join(", "), row.told);
        }
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
};

QTEST_MAIN(TestRotationDial)
#include "tst_rotationdial.moc"
