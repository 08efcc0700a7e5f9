#include "widgets/rotationdigitaldisplaywidget.h"

#include "widgetevents.h"

#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <array>

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

    void aReleaseReportsAChangeAndEndsTheWheelRun()
    {
        Digits display;
        display.press(Qt::LeftButton);
        display.setValue(200, false);
        display.release(Qt::LeftButton);
        QVERIFY(!display.isEditing());
        QCOMPARE(display.log, QStringList{"started"});
        display.press(Qt::LeftButton);
        display.wheel(120);
        display.release(Qt::LeftButton);
        display.wheel(120);
        QCOMPARE(display.log, (QStringList{"started", "started", "started", "changed 1", "started"}));
    }

    void digitsShowTheState()
    {
        Digits display;
        display.resize(90, 45);
        const auto picture = [&] { return display.grab().toImage(); };
        const QImage north = picture();
        display.setValue(88, true);
        const QImage plain = picture();
        QVERIFY(plain != north);
        display.setEditing(true);
        const QImage edited = picture();
        QVERIFY2(edited != plain, "the points are not lit");
        display.setHighlighted(true);
        QVERIFY(picture() != edited);
        display.setEnabled(false);
        const QImage disabled = picture();
        display.setValue(100, true);
        QCOMPARE(picture(), disabled);
    }
};

QTEST_MAIN(TestDigitalDisplay)
#include "tst_digitaldisplay.moc"
