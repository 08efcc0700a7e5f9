#include "widgets/azimuthalgeometry.h"

#include <QtTest>

#include <cmath>

using namespace AzimuthalGeometry;

using Rects = QVector<QRect>;

namespace {

constexpr QSize referenceSize(672, 480); // radius 200
const Compass reference{{336.0, 240.0}, 200.0};

double distanceTo(const Compass &compass, const QPointF &point)
{
    return QLineF(compass.centre, point).length();
}

/// The azimuth at which a point stands, found without the functions under test.
double azimuthOf(const Compass &compass, const QPointF &point)
{
    const QPointF offset = point - compass.centre;
    const double degrees = qRadiansToDegrees(std::atan2(offset.x(), -offset.y()));
    return degrees < -1e-6 ? degrees + 360.0 : degrees;
}

bool isNear(const QPointF &a, const QPointF &b)
{
    return QLineF(a, b).length() < 1e-6;
}

} // namespace

class TestAzimuthalGeometry : public QObject
{
    Q_OBJECT

private slots:
    void compassFillsTheShorterSide()
    {
        QCOMPARE(compassIn(referenceSize).centre, reference.centre);
        QCOMPARE(compassIn(referenceSize).radius, reference.radius);
        QCOMPARE(compassIn({421, 900}).radius, 170.5);
        QCOMPARE(compassIn({300, 20}).radius, -30.0);
    }

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
        QTest::newRow("none") << referenceSize << 0 << Rects();
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
        QTest::newRow("a display for each rotor") << 2 << 2 << Rects{{0, 20, 185, 90}, {185, 20, 185, 90}};
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

    void azimuthsRunClockwiseFromTheTop_data()
    {
        QTest::addColumn<double>("azimuth");
        QTest::addColumn<QPointF>("direction");
        QTest::newRow("north") << 0.0 << QPointF(0, -1);
        QTest::newRow("east") << 90.0 << QPointF(1, 0);
        QTest::newRow("south") << 180.0 << QPointF(0, 1);
        QTest::newRow("west") << 270.0 << QPointF(-1, 0);
        QTest::newRow("unknown is beside north") << -1.0 << QPointF(-0.0174524, -0.9998477);
    }
    void azimuthsRunClockwiseFromTheTop()
    {
        QFETCH(double, azimuth);
        QFETCH(QPointF, direction);
        const QPointF tip(0.0, -165.0);
        QVERIFY(QLineF(pointAt(reference, azimuth, 100.0), reference.centre + direction * 100.0).length()
                < 1e-4);
        QVERIFY(QLineF(pointAtRing(reference, azimuth, -32.0), reference.centre + direction * 168.0).length()
                < 1e-4);
        QVERIFY(QLineF(arrowTransform(reference, azimuth, 0.5).map(tip), reference.centre + direction * 82.5)
                    .length()
                < 1e-4);
    }

    void everyThirdTickButTheFirstIsLong()
    {
        const double scale = 0.5;
        const std::vector<QLineF> tens = tenDegreeTicks(reference, scale);
        const std::vector<QLineF> fives = fiveDegreeTicks(reference, scale);
        QCOMPARE(tens.size(), std::size_t(36));
        QCOMPARE(fives.size(), std::size_t(36));
        for (int i = 0; i < 36; ++i) {
            // The first tick points east and the ticks run against the clock.
            const double azimuth = (450 - 10 * i) % 360;
            const bool isLong = i > 0 && i % 3 == 0;
            const QByteArray which = "painter angle " + QByteArray::number(10 * i);
            QVERIFY2(std::abs(azimuthOf(reference, tens[i].p2()) - azimuth) < 1e-6, which.constData());
            QVERIFY2(std::abs(distanceTo(reference, tens[i].p1()) - 194.0) < 1e-6, which.constData());
            QVERIFY2(std::abs(distanceTo(reference, tens[i].p2()) - (isLong ? 207.0 : 202.0)) < 1e-6,
                     which.constData());
            QVERIFY2(isNear(fives[i].p1(), pointAt(reference, azimuth - 5.0, 194.0)), which.constData());
            QVERIFY2(isNear(fives[i].p2(), pointAt(reference, azimuth - 5.0, 200.0)), which.constData());
        }
    }

    void labelsStandAtTheirAzimuths()
    {
        const std::vector<CompassLabel> labels = compassLabels(reference, 1.0);
        QCOMPARE(labels.size(), std::size_t(12));
        for (int i = 0; i < 12; ++i) {
            const CompassLabel &label = labels[i];
            const bool startsThere = i >= 1 && i <= 3;
            QCOMPARE(label.text, QString::number(30 * i));
            QCOMPARE(label.centred, !startsThere);
            // The path of a circle runs a little unevenly.
            QVERIFY2(std::abs(std::remainder(azimuthOf(reference, label.anchor) - 30.0 * i, 360.0)) < 0.5,
                     qPrintable(label.text));
            QCOMPARE(distanceTo(reference, label.anchor), startsThere ? 220.0 : 235.0);
        }
        QCOMPARE(baselineOf(labels[0], 8.0, 14.0), labels[0].anchor + QPointF(-4.0, 7.0));
        QCOMPARE(baselineOf(labels[2], 8.0, 14.0), labels[2].anchor + QPointF(0.0, 7.0));
        QVERIFY(compassLabels(compassIn({80, 80}), 1.0).empty());
    }

    void fixedMarkersStandFurtherOutByIndex()
    {
        const double sixth = 200.0 / 6.0;
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, 0.0, 0), {336.0, 240.0 - sixth - 10.0}));
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, 90.0, 3), {336.0 + 4 * sixth + 10.0, 240.0}));
    }

    void captionsKeepToTheirDisplays()
    {
        const QRect display(562, 20, 90, 45);
        QCOMPARE(nameBaseline(display, 0, 60.0), QPointF(592.0, 16.0));
        QCOMPARE(nameBaseline(display, 1, 60.0), QPointF(592.0, 16.0));
        QCOMPARE(nameBaseline(display, 2, 60.0), QPointF(562.0, 16.0));
        QCOMPARE(rotorBaseline(display, 15.0, 14.0), QPointF(637.0, 75.0));
        QCOMPARE(rowBaseline(display), QPointF(562.0, 15.0));
        QCOMPARE(markerBaseline({100.0, 50.0}, 15.0), QPointF(92.5, 54.0));
    }

    void lettersGrowWithTheRadius()
    {
        QCOMPARE(labelFontSize(-40.0), 10);
        QCOMPARE(labelFontSize(200.0), 14);
        QCOMPARE(markerFontSize(0.0), 10);
        QCOMPARE(markerFontSize(scaleOf(200.0)), 14);
        QCOMPARE(captionFontSize(200.0), 10);
        QCOMPARE(captionFontSize(410.0), 22);
        QCOMPARE(markerRadius(scaleOf(171.0)), 12);
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
