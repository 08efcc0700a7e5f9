#include "widgets/rotationdialwidget.h"

#include "widgetevents.h"

#include <QtTest>

class TestRotationDial : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dial = std::make_unique<CRotationDialWidget>();
        m_log = recordRotation(m_dial.get());
    }

    void draggingTurnsOneDegreePerPixel_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<double>("dy");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("370 up") << 0 << -370. << QStringList{"started", "changing 10", "changed 10"};
        QTest::newRow("1 up through north")
            << 359 << -1. << QStringList{"started", "changing 0", "changed 0"};
        QTest::newRow("two turns down") << 10 << 721. << QStringList{"started", "changing 9", "changed 9"};
        QTest::newRow("half a pixel above the widget")
            << 5 << -.5 << QStringList{"started", "changing 6", "changed 6"};
        QTest::newRow("a full turn") << 90 << -360. << QStringList{"started", "changing 90"};
        QTest::newRow("unwrapped start") << 400 << 0. << QStringList{"started", "changing 40", "changed 40"};
    }
    void draggingTurnsOneDegreePerPixel()
    {
        QFETCH(int, start);
        QFETCH(double, dy);
        m_dial->setValue(start, true);
        QCOMPARE(m_dial->value(), start);
        press(0);
        move(dy);
        release(dy);
        QTEST(*m_log, "log");
    }

    void onlyTheLeftButtonAloneTurns()
    {
        m_dial->setPressed(true); // by the program, not by the mouse
        send(QEvent::MouseButtonRelease, 20, Qt::RightButton, Qt::NoButton);
        send(QEvent::MouseButtonPress, 20, Qt::LeftButton, Qt::LeftButton | Qt::RightButton);
        move(5);
        release(5);
        QCOMPARE(*m_log, QStringList());

        press(20);
        send(QEvent::MouseButtonRelease, 15, Qt::RightButton, Qt::LeftButton);
        move(0);
        release(0);
        QCOMPARE(*m_log, (QStringList{"started", "changed 5"}));
    }

    void polledValuesWaitForTheOperator()
    {
        // A receiver of the start may still set the value to start from.
        connect(m_dial.get(), &CRotationDialWidget::onRotationStarted, m_dial.get(),
                [this] { m_dial->setValue(120, false); });
        press(20);
        m_dial->setValue(200, false);
        QCOMPARE(m_dial->value(), 120);
        m_dial->setValue(200, true);
        QCOMPARE(m_dial->value(), 200);
        move(19);
        QCOMPARE(m_dial->value(), 121);
        release(19);
        m_dial->setValue(200, false);
        QCOMPARE(m_dial->value(), 200);
    }

private:
    void press(double y) { send(QEvent::MouseButtonPress, y, Qt::LeftButton, Qt::LeftButton); }
    void move(double y) { send(QEvent::MouseMove, y, Qt::NoButton, Qt::LeftButton); }
    void release(double y) { send(QEvent::MouseButtonRelease, y, Qt::LeftButton, Qt::NoButton); }
    void send(QEvent::Type type, double y, Qt::MouseButton button, Qt::MouseButtons held)
    {
        sendMouse(m_dial.get(), type, {40, y}, button, held);
    }

    std::unique_ptr<CRotationDialWidget> m_dial;
    std::shared_ptr<QStringList> m_log;
};

QTEST_MAIN(TestRotationDial)
#include "tst_rotationdial.moc"
