#include "widgets/4sanchorlayout.h"

#include <QtTest>

class Test4SAnchorLayout : public QObject
{
    Q_OBJECT

private slots:
    void childrenFollowTheirModes_data()
    {
        QTest::addColumn<QVector<int>>("modes"); // left, top, right, bottom
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("geometry");
        const QSize grown(150, 120);
        QTest::newRow("stay put") << QVector<int>{1, 1, 1, 1} << grown << corners(60, 20, 89, 39);
        QTest::newRow("move") << QVector<int>{2, 2, 2, 2} << grown << corners(110, 90, 139, 109);
        QTest::newRow("stretch across") << QVector<int>{1, 2, 2, 2} << grown << corners(60, 90, 139, 109);
        QTest::newRow("stretch down") << QVector<int>{1, 1, 1, 2} << grown << corners(60, 20, 89, 109);
        QTest::newRow("free left, bottom") << QVector<int>{0, 1, 2, 0} << grown << corners(5, 20, 139, 45);
        QTest::newRow("free top, right") << QVector<int>{1, 0, 3, 1} << grown << corners(60, 8, 99, 39);
        QTest::newRow("scale, others ignored")
            << QVector<int>{3, 1, 2, 0} << grown << corners(90, 48, 133, 93);
        QTest::newRow("shrink") << QVector<int>{2, 2, 2, 2} << QSize(70, 45) << corners(30, 15, 59, 34);
    }
    void childrenFollowTheirModes()
    {
        QFETCH(QVector<int>, modes);
        QFETCH(QSize, size);
        QWidget container;
        container.resize(100, 50);
        QWidget child(&container);
        child.setGeometry(corners(60, 20, 89, 39));
        C4SAnchorLayout layout(&container);
        layout.addWidget(modes[0], modes[1], modes[2], modes[3], &child);
        child.setGeometry(corners(5, 8, 99, 45));
        container.resize(size);
        layout.relayout();
        QTEST(child.geometry(), "geometry");
    }

    void captureDesignStartsAnewWithoutDeadChildren()
    {
        QWidget container;
        container.resize(100, 50);
        auto *dead = new QWidget(&container);
        QWidget scaled(&container);
        C4SAnchorLayout layout(&container);
        layout.addWidget(3, 3, 3, 3, dead);
        layout.addWidget(3, 3, 3, 3, &scaled);
        delete dead;
        container.resize(200, 100);
        scaled.setGeometry(50, 40, 30, 30);
        layout.captureDesign();
        QCOMPARE(scaled.geometry(), QRect(50, 40, 30, 30));
        QCOMPARE(container.minimumSize(), QSize(200, 100));

        container.resize(400, 200);
        layout.relayout();
        QCOMPARE(scaled.geometry(), corners(100, 80, 158, 138));
    }

private:
    static QRect corners(int x1, int y1, int x2, int y2) { return {QPoint(x1, y1), QPoint(x2, y2)}; }
};

QTEST_MAIN(Test4SAnchorLayout)
#include "tst_4sanchorlayout.moc"
