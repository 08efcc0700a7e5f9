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

    void theCellOfTheChosenRotorIsFilled()
    {
        CRotorSelectorWidget selector;
        selector.resize(80, 20);
        selector.setCount(2);
        for (int rotor : {-1, 0, 1}) {
            selector.setCurrentIndex(rotor);
            const QImage image = selector.grab().toImage();
            QCOMPARE(image.pixelColor(23, 3) == QColor(Qt::white), rotor == 0);
            QCOMPARE(image.pixelColor(43, 3) == QColor(Qt::white), rotor == 1);
        }
    }
};

QTEST_MAIN(TestRotorSelector)
#include "tst_rotorselector.moc"
