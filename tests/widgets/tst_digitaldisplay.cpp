#include "widgets/rotationdigitaldisplaywidget.h"

#include "widgetevents.h"

#include <QWheelEvent>
#include <QtTest>

class TestDigitalDisplay : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_display = std::make_unique<CRotationDigitalDisplayWidget>();
        m_display->resize(90, 45);
        m_log = recordRotation(m_display.get());
    }

    void valuesFoldOnce()
    {
        const QMap<int, int> stored{{359, 359}, {360, 0}, {725, 365}, {-1, 359}, {-400, -40}};
        for (auto row = stored.begin(); row != stored.end(); ++row) {
            m_display->setValue(row.key(), false);
            QCOMPARE(m_display->value(), row.value());
        }
        QCOMPARE(*m_log, QStringList());
    }

    void wheelSteps()
    {
        struct Step
        {
            int value, delta, stepped, steppedByTens;
        };
        for (const Step &step : {Step{359, 120, 0, 0}, Step{0, -120, 359, 350}, Step{47, 120, 48, 50},
                                 Step{47, -120, 46, 30}, Step{5, -120, 4, 350}, Step{7, 0, 8, 10}}) {
            m_display->setValue(step.value, true);
            wheel(step.delta);
            QCOMPARE(m_display->value(), step.stepped);
            m_display->setValue(step.value, true);
            press(Qt::MiddleButton);
            wheel(step.delta);
            QCOMPARE(m_display->value(), step.steppedByTens);
            release(Qt::MiddleButton);
        }
        m_display->setFixed(true);
        wheel(120);
        QCOMPARE(m_display->value(), 10);
    }

    void aRunOfWheelStepsReportsOnceAfterThePause()
    {
        wheel(120);
        wheel(120);
        m_display->setValue(200, false);
        wheel(120);
        QVERIFY(QMetaObject::invokeMethod(m_display.get(), "onWheelTimerCheck"));
        QCOMPARE(*m_log, (QStringList{"started", "changing 2", "changing 3", "changed 3"}));
        m_display->setValue(200, false);
        QCOMPARE(m_display->value(), 200);
        wheel(-120);
        QCOMPARE(m_log->last(), QStringLiteral("started"));
    }

    void aClickWithoutChangeOnlyStarts()
    {
        press(Qt::LeftButton);
        m_display->setValue(200, false);
        sendMouse(m_display.get(), QEvent::MouseMove, {5, 30}, Qt::NoButton, Qt::LeftButton);
        release(Qt::LeftButton);
        QCOMPARE(*m_log, (QStringList{"started", "changing 0"}));
        QVERIFY(!m_display->isEditing());

        press(Qt::MiddleButton);
        release(Qt::MiddleButton);
        QCOMPARE(m_log->size(), 2);
    }

    void aReleaseReportsTheChangeAndEndsTheWheelRun()
    {
        press(Qt::LeftButton);
        wheel(120);
        release(Qt::LeftButton);
        wheel(120);
        QCOMPARE(*m_log, (QStringList{"started", "started", "changed 1", "started"}));
    }

    void digitsShowTheState()
    {
        const auto picture = [this] { return m_display->grab().toImage(); };
        m_display->setValue(88, true);
        const QImage plain = picture();
        m_display->setEditing(true);
        const QImage edited = picture();
        QVERIFY2(edited != plain, "the points are not lit");
        m_display->setHighlighted(true);
        QVERIFY(picture() != edited);
        m_display->setEnabled(false);
        const QImage disabled = picture();
        m_display->setValue(100, true);
        QCOMPARE(picture(), disabled);
    }

private:
    void press(Qt::MouseButton button)
    {
        sendMouse(m_display.get(), QEvent::MouseButtonPress, {5, 5}, button, button);
    }
    void release(Qt::MouseButton button)
    {
        sendMouse(m_display.get(), QEvent::MouseButtonRelease, {5, 5}, button, Qt::NoButton);
    }
    void wheel(int delta)
    {
        QWheelEvent event({}, {}, {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_display.get(), &event);
    }

    std::unique_ptr<CRotationDigitalDisplayWidget> m_display;
    std::shared_ptr<QStringList> m_log;
};

QTEST_MAIN(TestDigitalDisplay)
#include "tst_digitaldisplay.moc"
