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
        QTest::newRow("last of X") << QPointF(19, 10) << QVariantList{-1};
        QTest::newRow("first of 1") << QPointF(20, 10) << QVariantList{0};
        QTest::newRow("rounded into 1") << QPointF(19.5, 10) << QVariantList{0};
        QTest::newRow("first of 2, beyond the count") << QPointF(40, 10) << QVariantList{1};
        QTest::newRow("last pixel") << QPointF(59, 19) << QVariantList{1};
        QTest::newRow("right of the strip") << QPointF(60, 10) << QVariantList{};
        QTest::newRow("below the strip") << QPointF(10, 20) << QVariantList{};
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

    void cellsShowTheSelection_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("cells"); // none, outlined, selected, filled
        QTest::newRow("X") << 3 << -1 << "sooo";
        QTest::newRow("rotor 1") << 3 << 0 << "ofoo";
        QTest::newRow("beyond the strip") << 3 << 2 << "ooof";
        QTest::newRow("no rotors") << 0 << 0 << "o---";
    }
    void cellsShowTheSelection()
    {
        QFETCH(int, count);
        QFETCH(int, index);
        CRotorSelectorWidget selector;
        selector.resize(80, 20);
        selector.setCount(count);
        selector.setCurrentIndex(index);
        QImage image(80, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        selector.render(&image, {}, {}, {});

        QString cells;
        for (int cell = 0; cell < 4; ++cell) {
            const QRect outline = CRotorSelectorWidget::cellRect(20, cell);
            const int edge = image.pixelColor(outline.left() + 8, outline.bottom() + 1).green();
            const bool filled = image.pixelColor(outline.topLeft() + QPoint(2, 2)) == QColor(Qt::white);
            cells += filled ? 'f' : edge > 100 ? 's' : edge > 30 ? 'o' : '-';
        }
        QTEST(cells, "cells");
    }
};

QTEST_MAIN(TestRotorSelector)
#include "tst_rotorselector.moc"
