// SPDX-License-Identifier: MIT
#include "widgets/rotorselectorwidget.h"

#include "widgetevents.h"

#include <QSignalSpy>
#include <QtTest>

class TestRotorSelector : public QObject
{
    Q_OBJECT

private slots:
    void clicksPickByThirds()
    {
        CRotorSelectorWidget selector;
        selector.setCount(1);
        QSignalSpy picked(&selector, &CRotorSelectorWidget::onCurrentIndexChanged);
        sendMouse(&selector, QEvent::MouseButtonPress, {20, 10}, Qt::RightButton, Qt::RightButton);
        // The second cell, rounded into it, the third, which the count lacks, its last pixel, beside the
        // strip.
        for (double x : {20.0, 19.5, 40.0, 59.0, 60.0, 0.0})
            sendMouse(&selector, QEvent::MouseButtonPress, {x, 19}, Qt::LeftButton, Qt::LeftButton);
        QCOMPARE(picked, (QList<QVariantList>{{0}, {0}, {1}, {1}, {-1}}));
    }

    void cellsShowWhatTheProgramSelectsInSilence()
    {
        CRotorSelectorWidget selector;
        selector.resize(80, 20);
        QSignalSpy picked(&selector, &CRotorSelectorWidget::onCurrentIndexChanged);
        for (int index = -1; index < 3; ++index) {
            selector.setCurrentIndex(index);
            selector.setCount(3);
            const QImage image = selector.grab().toImage();
            for (int cell = 1; cell < 4; ++cell) { // the one of no rotor is never filled
                const QPoint inside = CRotorSelectorWidget::cellRect(20, cell).topLeft() + QPoint(2, 2);
                QCOMPARE(image.pixelColor(inside) == QColor(Qt::white), cell == index + 1);
            }
        }
        selector.setCount(0);
        QCOMPARE(selector.currentIndex(), -1);
        QVERIFY(picked.isEmpty());
    }
};

QTEST_MAIN(TestRotorSelector)
#include "tst_rotorselector.moc"
