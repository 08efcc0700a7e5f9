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
    void compassFillsTheShorterSide_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("radius");
        QTest::newRow("672x480") << referenceSize << 200.0;
        QTest::newRow("441x300") << QSize(441, 300) << 110.0;
        QTest::newRow("upright") << QSize(421, 900) << 170.5;
        QTest::newRow("80x80") << QSize(80, 80) << 0.0;
        QTest::newRow("too small") << QSize(300, 20) << -30.0;
    }
    void compassFillsTheShorterSide()
    {
        QFETCH(QSize, size);
        QTEST(compassIn(size).radius, "radius");
        QCOMPARE(compassIn(size).centre, QPointF(size.width() / 2.0, size.height() / 2.0));
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

    void mapKeepsItsAspect_data()
    {
        QTest::addColumn<double>("zoom");
        QTest::addColumn<QSize>("image");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("square") << 1.5 << QSize(50, 50) << QRectF(36, -60, 600, 600);
        QTest::newRow("landscape") << 1.5 << QSize(200, 100) << QRectF(36, 90, 600, 300);
        QTest::newRow("portrait") << 0.5 << QSize(100, 200) << QRectF(236, 40, 200, 400);
        QTest::newRow("on its head") << -0.5 << QSize(100, 200) << QRectF(436, 440, -200, -400);
        QTest::newRow("nothing") << 0.0 << QSize(100, 200) << QRectF(336, 240, 0, 0);
    }
    void mapKeepsItsAspect()
    {
        QFETCH(double, zoom);
        QFETCH(QSize, image);
        QTEST(mapRect(reference, zoom, image), "expected");
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

    void fixedMarkersStandFurtherOutByIndex_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<double>("azimuth");
        QTest::addColumn<QPointF>("expected");
        const double sixth = 200.0 / 6.0;
        QTest::newRow("first, north") << 0 << 0.0 << QPointF(336.0, 240.0 - sixth - 10.0);
        QTest::newRow("fourth, east") << 3 << 90.0 << QPointF(336.0 + 4 * sixth + 10.0, 240.0);
    }
    void fixedMarkersStandFurtherOutByIndex()
    {
        QFETCH(int, index);
        QFETCH(double, azimuth);
        QFETCH(QPointF, expected);
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, azimuth, index), expected));
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

    void lettersGrowWithTheRadius_data()
    {
        QTest::addColumn<double>("radius");
        QTest::addColumn<int>("label");
        QTest::addColumn<int>("marker");
        QTest::addColumn<int>("caption");
        QTest::addColumn<int>("disc");
        QTest::newRow("no radius yet") << 0.0 << 10 << 10 << 10 << 0;
        QTest::newRow("below zero") << -40.0 << 10 << 10 << 10 << -2;
        QTest::newRow("nominal") << 171.0 << 12 << 12 << 10 << 12;
        QTest::newRow("200") << 200.0 << 14 << 14 << 10 << 14;
        QTest::newRow("410") << 410.0 << 28 << 28 << 22 << 28;
    }
    void lettersGrowWithTheRadius()
    {
        QFETCH(double, radius);
        QTEST(labelFontSize(radius), "label");
        QTEST(markerFontSize(scaleOf(radius)), "marker");
        QTEST(captionFontSize(radius), "caption");
        QTEST(markerRadius(scaleOf(radius)), "disc");
    }

    void lettersAreKeptInView_data()
    {
        QTest::addColumn<QRectF>("letters");
        QTest::addColumn<QPointF>("shift");
        QTest::newRow("within") << QRectF(0, 0, 100, 50) << QPointF(0, 0);
        QTest::newRow("above") << QRectF(10, -7, 10, 10) << QPointF(0, 7);
        QTest::newRow("below, right") << QRectF(95, 45, 10, 10) << QPointF(-5, -5);
        QTest::newRow("too wide") << QRectF(-3, 0, 120, 10) << QPointF(3, 0);
    }
    void lettersAreKeptInView()
    {
        QFETCH(QRectF, letters);
        QTEST(shiftInto({0, 0, 100, 50}, letters), "shift");
    }
};

QTEST_MAIN(TestAzimuthalGeometry)
#include "tst_azimuthalgeometry.moc"
