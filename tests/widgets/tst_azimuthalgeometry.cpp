#include "widgets/azimuthalgeometry.h"

#include <QtTest>

using namespace AzimuthalGeometry;

using Rects = QVector<QRect>;

namespace {

constexpr QSize referenceSize(672, 480); // radius 200
const Compass reference{{336.0, 240.0}, 200.0};

bool isNear(const QPointF &a, const QPointF &b)
{
    return QLineF(a, b).length() < 1e-6;
}

} // namespace

class TestAzimuthalGeometry : public QObject
{
    Q_OBJECT

private slots:
    void displaysStandAtTheEdges_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("count");
        QTest::addColumn<Rects>("expected");
        QTest::newRow("four") << referenceSize << 4
                              << Rects{{562, 20, 90, 45},
                                       {562, 415, 90, 45},
                                       {20, 415, 90, 45},
                                       {20, 20, 90, 45}};
        QTest::newRow("six") << referenceSize << 6
                             << Rects{{562, 20, 90, 45}, {562, 207, 90, 45}, {562, 415, 90, 45},
                                      {20, 415, 90, 45}, {20, 207, 90, 45},  {20, 20, 90, 45}};
        QTest::newRow("four, truncated")
            << QSize(441, 300) << 4
            << Rects{{362, 20, 59, 29}, {362, 251, 59, 29}, {20, 251, 59, 29}, {20, 20, 59, 29}};
        QTest::newRow("five") << referenceSize << 5 << Rects();
    }
    void displaysStandAtTheEdges()
    {
        QFETCH(QSize, size);
        QFETCH(int, count);
        const std::vector<QRect> rects = cornerDisplayRects(size, count);
        QTEST(Rects(rects.begin(), rects.end()), "expected");
    }

    void displaysStandInARow_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("rotors");
        QTest::addColumn<Rects>("expected");
        QTest::newRow("more displays than rotors")
            << 3 << 2 << Rects{{0, 20, 185, 90}, {185, 20, 185, 90}, {371, 20, 185, 90}};
        QTest::newRow("three rotors")
            << 3 << 3 << Rects{{0, 20, 123, 90}, {123, 20, 123, 90}, {247, 20, 123, 90}};
        QTest::newRow("no rotor") << 4 << 0 << Rects();
    }
    void displaysStandInARow()
    {
        QFETCH(int, count);
        QFETCH(int, rotors);
        const std::vector<QRect> rects = rowDisplayRects({371, 110}, count, rotors);
        QTEST(Rects(rects.begin(), rects.end()), "expected");
    }

    void azimuthsRunClockwiseFromTheTop()
    {
        const QMap<double, QPointF> directions{
            {0.0, {0, -1}}, {90.0, {1, 0}}, {180.0, {0, 1}}, {270.0, {-1, 0}}};
        for (auto row = directions.begin(); row != directions.end(); ++row) {
            QVERIFY(isNear(pointAt(reference, row.key(), 100.0), reference.centre + row.value() * 100.0));
            QVERIFY(isNear(pointAtRing(reference, row.key(), -32.0), reference.centre + row.value() * 168.0));
            QVERIFY(isNear(arrowTransform(reference, row.key(), 0.5).map(QPointF(0.0, -165.0)),
                           reference.centre + row.value() * 82.5));
        }
    }

    void everyThirdTickButTheFirstIsLong()
    {
        const std::vector<QLineF> tens = tenDegreeTicks(reference, 0.5);
        QCOMPARE(tens.size(), std::size_t(36));
        for (int i = 0; i < 36; ++i) {
            // The first tick points east and the ticks run against the clock.
            const double azimuth = (450 - 10 * i) % 360;
            const double end = i > 0 && i % 3 == 0 ? 207.0 : 202.0;
            QVERIFY2(isNear(tens[i].p1(), pointAt(reference, azimuth, 194.0)),
                     qPrintable(QString::number(i)));
            QVERIFY2(isNear(tens[i].p2(), pointAt(reference, azimuth, end)), qPrintable(QString::number(i)));
        }
    }

    void labelsStandAtTheirAzimuths()
    {
        const std::vector<CompassLabel> labels = compassLabels(reference, 1.0);
        QCOMPARE(labels.size(), std::size_t(12));
        for (int i = 0; i < 12; ++i) {
            const bool startsThere = i >= 1 && i <= 3;
            QCOMPARE(labels[i].text, QString::number(30 * i));
            QCOMPARE(labels[i].centred, !startsThere);
            const QPointF anchor = pointAt(reference, 30.0 * i, startsThere ? 220.0 : 235.0);
            // The path of a circle runs a little unevenly.
            QVERIFY2(QLineF(labels[i].anchor, anchor).length() < 2.0, qPrintable(labels[i].text));
        }
        QVERIFY(compassLabels(compassIn({80, 80}), 1.0).empty());
    }

    void fixedMarkersStandFurtherOutByIndex()
    {
        const double sixth = 200.0 / 6.0;
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, 0.0, 0), {336.0, 240.0 - sixth - 10.0}));
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, 90.0, 3), {336.0 + 4 * sixth + 10.0, 240.0}));
    }

    void lettersGrowWithTheRadius()
    {
        QCOMPARE(labelFontSize(-40.0), 10);
        QCOMPARE(labelFontSize(200.0), 14);
        QCOMPARE(captionFontSize(200.0), 10);
        QCOMPARE(captionFontSize(410.0), 22);
    }

    void lettersAreKeptInView()
    {
        const QRectF view(0, 0, 100, 50);
        QCOMPARE(shiftInto(view, view), QPointF());
        QCOMPARE(shiftInto(view, {10, -7, 10, 10}), QPointF(0, 7));
        QCOMPARE(shiftInto(view, {95, 45, 10, 10}), QPointF(-5, -5));
        QCOMPARE(shiftInto(view, {-3, 0, 120, 10}), QPointF(3, 0));
    }
};

QTEST_MAIN(TestAzimuthalGeometry)
#include "tst_azimuthalgeometry.moc"
