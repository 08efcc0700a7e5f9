// SPDX-License-Identifier: MIT
#include "widgets/rotationdigitaldisplaywidget.h"

#include "widgetevents.h"

#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <array>
#include <functional>
#include <map>

namespace {

struct Digits : Recorded<CRotationDigitalDisplayWidget>
{
    void press(Qt::MouseButton button) { sendMouse(this, QEvent::MouseButtonPress, {5, 5}, button, button); }
    void release(Qt::MouseButton button)
    {
        sendMouse(this, QEvent::MouseButtonRelease, {5, 5}, button, Qt::NoButton);
    }
    void wheel(int delta)
    {
        QWheelEvent event({}, {}, {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(this, &event);
    }
};

} // namespace

class TestDigitalDisplay : public QObject
{
    Q_OBJECT

private slots:
    void wheelSteps()
    {
        Digits display;
        for (const auto &[value, delta, stepped, steppedByTens] :
             {std::array{359, 120, 0, 0}, std::array{0, -120, 359, 350}, std::array{47, 120, 48, 50},
              std::array{47, -120, 46, 30}, std::array{5, -120, 4, 350}, std::array{7, 0, 8, 10}}) {
            display.setValue(value, true);
            display.wheel(delta);
            QCOMPARE(display.value(), stepped);
            display.setValue(value, true);
            display.press(Qt::MiddleButton);
            display.wheel(delta);
            QCOMPARE(display.value(), steppedByTens);
            display.release(Qt::MiddleButton);
        }
        display.setValue(725, true);
        QCOMPARE(display.value(), 365); // folded once
        display.setFixed(true);
        display.wheel(120);
        QCOMPARE(display.value(), 365);
    }

    void aRunOfWheelStepsReportsASecondAfterTheLast()
    {
        Digits display;
        display.wheel(120);
        QVERIFY(!QSignalSpy(&display, &Digits::onRotationChanged).wait(600));
        display.setValue(200, false);
        display.wheel(120);
        QElapsedTimer time;
        time.start();
        QTRY_VERIFY(!display.isEditing());
        QVERIFY2(time.elapsed() > 900 && time.elapsed() < 2500, qPrintable(QString::number(time.elapsed())));
        display.wheel(-120);
        QCOMPARE(display.log, (QStringList{"started", "changing 2", "changed 2", "started"}));
    }

    void editingEndsWithWhatBeganIt()
    {
        struct Row
        {
            QString actions;
            bool editing;
            QString log; // until what runs has run out
        };
        for (const Row &row :
             {Row{"press; hide", false, "started"}, Row{"press; disable", false, "started"},
              Row{"wheel; hide", false, "started"}, Row{"wheel; disable", false, "started"},
              Row{"wheel; press; release; poll 7", true, "started, started, changed 1"},
              Row{"press; poll 7; release", false, "started"},
              Row{"press; wheel; release; wheel", true, "started, started, changed 1, started, changed 2"},
              Row{"press; claim; release; poll 7", false, "started"},
              Row{"press; claim; second button; release; poll 7", false, "started"},
              Row{"claim; poll 7", true, ""},
              Row{"press; claim; wheel; give up", false, "started, started"}}) {
            Digits display;
            display.show();
            const std::map<QString, std::function<void()>> verbs = {
                {"press", [&] { display.press(Qt::LeftButton); }},
                {"second button", [&] { display.press(Qt::RightButton); }},
                {"release", [&] { display.release(Qt::LeftButton); }},
                {"wheel", [&] { display.wheel(120); }},
                {"hide", [&] { display.hide(); }},
                {"disable", [&] { display.setEnabled(false); }},
                {"claim", [&] { display.setEditing(true); }},
                {"poll 7", [&] { display.setValue(7, false); }},
                {"give up", [&] { display.giveUp(); }}};
            for (const QString &action : row.actions.split("; "))
                verbs.at(action)();
            QVERIFY2(display.isEditing() == row.editing, qPrintable(row.actions));
            if (row.actions.contains("wheel"))
                QTest::qWait(1300);
            QVERIFY2(display.log.join(", ") == row.log, qPrintable(row.actions));
        }
    }
};

QTEST_MAIN(TestDigitalDisplay)
#include "tst_digitaldisplay.moc"
