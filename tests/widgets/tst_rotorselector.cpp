#include "widgets/rotorselectorwidget.h"

#include "widgetevents.h"

#include <QSignalSpy>
#include <QtTest>

class TestRotorSelector : public QObject
{
    Q_OBJECT

private slots:
    void clicksPickByThirds_data()
    {
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<QVariantList>("reported");
        QTest::newRow("first of 1") << QPointF(20, 10) << QVariantList{0};
        QTest::newRow("rounded into 1") << QPointF(19.5, 10) << QVariantList{0};
        QTest::newRow("first of 2, beyond the count") << QPointF(40, 10) << QVariantList{1};
        QTest::newRow("last pixel") << QPointF(59, 19) << QVariantList{1};
        QTest::newRow("right of the strip") << QPointF(60, 10) << QVariantList{};
    }
    void clicksPickByThirds()
    {
        QFETCH(QPointF, position);
        CRotorSelectorWidget selector;
        selector.setCount(1);
        QSignalSpy spy(&selector, &CRotorSelectorWidget::onCurrentIndexChanged);
        sendMouse(&selector, QEvent::MouseButtonPress, position, Qt::RightButton, Qt::RightButton);
        QVERIFY(spy.isEmpty());
        sendMouse(&selector, QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton);
        QTEST(spy.value(0), "reported");
        QCOMPARE(selector.currentIndex(), spy.value(0).value(0, -1).toInt());
    }

    void theProgramSetsTheIndexInSilence()
    {
        CRotorSelectorWidget selector;
        QSignalSpy spy(&selector, &CRotorSelectorWidget::onCurrentIndexChanged);
        selector.setCurrentIndex(1);
        selector.setCount(1);
        QCOMPARE(selector.currentIndex(), 1);
        selector.setCount(0);
        QCOMPARE(selector.currentIndex(), -1);
        QVERIFY(spy.isEmpty());
    }

    void cellsShowTheSelection()
    {
        for (int index = -1; index < 3; ++index) {
            CRotorSelectorWidget selector;
            selector.resize(80, 20);
            selector.setCount(3);
            selector.setCurrentIndex(index);
            const QImage image = selector.grab().toImage();
            for (int cell = 1; cell < 4; ++cell) { // the one of no rotor is never filled
                const QPoint inside = CRotorSelectorWidget::cellRect(20, cell).topLeft() + QPoint(2, 2);
                QCOMPARE(image.pixelColor(inside) == QColor(Qt::white), cell == index + 1);
            }
        }
    }
};

QTEST_MAIN(TestRotorSelector)
#include "tst_rotorselector.moc"
