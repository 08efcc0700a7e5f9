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

    void wheelSteps_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("delta");
        QTest::addColumn<bool>("middleHeld");
        QTest::addColumn<int>("stepped");
        QTest::newRow("up through north") << 359 << 120 << false << 0;
        QTest::newRow("down through north") << 0 << -120 << false << 359;
        QTest::newRow("no delta counts as up") << 7 << 0 << false << 8;
        QTest::newRow("tens up") << 47 << 120 << true << 50;
        QTest::newRow("tens down") << 47 << -120 << true << 30;
        QTest::newRow("tens down from 5") << 5 << -120 << true << 350;
        QTest::newRow("tens up from 355") << 355 << 120 << true << 0;
    }
    void wheelSteps()
    {
        QFETCH(int, value);
        QFETCH(int, delta);
        QFETCH(bool, middleHeld);
        m_display->setValue(value, true);
        press(middleHeld ? Qt::MiddleButton : Qt::RightButton);
        wheel(delta);
        QTEST(m_display->value(), "stepped");
        m_display->setFixed(true);
        wheel(delta);
        QTEST(m_display->value(), "stepped");
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

    void digitsAndPointsHaveTheirPlaces()
    {
        using Display = CRotationDigitalDisplayWidget;
        QCOMPARE(Display::digitRect({90, 45}, 1), QRect(0, -8, 30, 55));
        QCOMPARE(Display::digitRect({80, 45}, 3), QRect(0, -8, 78, 55));
        QCOMPARE(Display::pointRect({176, 36}, 2), QRect(7, -8, 116, 46));
    }

    void digitsShowTheState()
    {
        const QColor plain(102, 102, 102), orange(255, 153, 0), dark(51, 51, 51);
        m_display->setValue(88, true);
        const QImage image = m_display->grab().toImage();
        QVERIFY(contains(image, plain) && !contains(image, orange));
        m_display->setEditing(true);
        QVERIFY2(m_display->grab().toImage() != image, "the points are not lit");
        m_display->setHighlighted(true);
        QVERIFY(contains(m_display->grab().toImage(), orange));

        m_display->setEnabled(false);
        const QImage disabled = m_display->grab().toImage();
        QVERIFY(contains(disabled, dark) && !contains(disabled, orange));
        m_display->setValue(100, true);
        QCOMPARE(m_display->grab().toImage(), disabled);
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
    static bool contains(const QImage &image, const QColor &color)
    {
        for (int i = 0; i < image.width() * image.height(); ++i) {
            if (image.pixelColor(i % image.width(), i / image.width()) == color)
                return true;
        }
        return false;
    }

    std::unique_ptr<CRotationDigitalDisplayWidget> m_display;
    std::shared_ptr<QStringList> m_log;
};

QTEST_MAIN(TestDigitalDisplay)
#include "tst_digitaldisplay.moc"
