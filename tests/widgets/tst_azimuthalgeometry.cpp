// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalgeometry.h"

#include <QtTest>

using namespace AzimuthalGeometry;

using Rects = std::vector<QRect>;

namespace {

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
    void displaysAreAtTheEdgesOrInARow()
    {
        QCOMPARE(cornerDisplayRects({441, 300}, 4),
                 (Rects{{362, 20, 59, 29}, {362, 251, 59, 29}, {20, 251, 59, 29}, {20, 20, 59, 29}}));
        QCOMPARE(cornerDisplayRects({672, 480}, 6).at(4), QRect(20, 207, 90, 45));
        QCOMPARE(rowDisplayRects({371, 110}, 3, 2), // beyond the right edge
                 (Rects{{0, 20, 185, 90}, {185, 20, 185, 90}, {371, 20, 185, 90}}));
        QCOMPARE(rowDisplayRects({371, 110}, 4, 0), Rects());
    }

    void azimuthsRunClockwiseFromTheTop()
    {
        QVERIFY(isNear(pointAtRing(reference, 90.0, -32.0), {504.0, 240.0}));
        QVERIFY(isNear(arrowTransform(reference, 90.0, 0.5).map(QPointF(0.0, -165.0)), {418.5, 240.0}));
        // Markers of fixed antennas stand the further out the higher the antenna's index.
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, 0.0, 0), {336.0, 230.0 - 200.0 / 6.0}));
        QVERIFY(isNear(fixedMarkerCentre(reference, 2.0, 90.0, 3), {346.0 + 4 * 200.0 / 6.0, 240.0}));
    }

    void labelsStandAtTheirAzimuths()
    {
        const std::vector<CompassLabel> labels = compassLabels(reference, 1.0);
        QCOMPARE(labels.size(), std::size_t(12));
        for (int i = 0; i < 12; ++i) {
            const bool startsThere = i >= 1 && i <= 3;
            QCOMPARE(labels[i].text, QString::number(30 * i));
            QCOMPARE(labels[i].centred, !startsThere);
            const QPointF anchor = pointAtRing(reference, 30.0 * i, startsThere ? 20.0 : 35.0);
            // The path of a circle runs a little unevenly.
            QVERIFY2(QLineF(labels[i].anchor, anchor).length() < 2.0, qPrintable(labels[i].text));
        }
        QVERIFY(compassLabels(compassIn({80, 80}), 1.0).empty());
    }

    void lettersStayReadableAndInView()
    {
        QCOMPARE(labelFontSize(100.0), 10);
        const QRectF view(0, 0, 100, 50);
        QCOMPARE(shiftInto(view, {10, -7, 10, 10}), QPointF(0, 7));
        QCOMPARE(shiftInto(view, {95, 45, 10, 10}), QPointF(-5, -5));
        QCOMPARE(shiftInto(view, {-3, 0, 120, 10}), QPointF(3, 0));
    }
};

QTEST_MAIN(TestAzimuthalGeometry)
#include "tst_azimuthalgeometry.moc"
