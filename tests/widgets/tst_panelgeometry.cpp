// SPDX-License-Identifier: MIT
#include "widgets/panelgeometry.h"

#include <QtTest>

namespace {

constexpr QSize logo(80, 36);

/// The places of buttons and lamps.
QList<QRect> placed(const PanelGeometry &geometry)
{
    QList<QRect> places{geometry.power, geometry.send, geometry.split};
    places.removeAll(QRect());
    for (const std::vector<QRect> *row : {&geometry.antennas, &geometry.transmitLines, &geometry.radios})
        places.append(QList<QRect>(row->begin(), row->end()));
    return places;
}

} // namespace

class TestPanelGeometry : public QObject
{
    Q_OBJECT

private slots:
    void columnsAreAtTheirNumbersAndDefinedForEverySize()
    {
        const PanelTraits traits{4, 4, 0, true, false, true, true, logo};
        const PanelGeometry g = PanelGeometry::inColumns({1254, 300}, traits);
        QCOMPARE(
            (QList<QRect>{g.antennas.at(0), g.antennas.at(3), g.transmitLines.at(0), g.transmitLines.at(3)}),
            (QList<QRect>{{92, 30, 269, 258}, {899, 30, 269, 258}, {333, 35, 24, 20}, {1140, 35, 24, 20}}));
        QCOMPARE((QList<QRect>{g.power, g.largeInfo, g.smallInfo, g.title, g.logo}),
                 (QList<QRect>{{20, 143, 45, 15},
                               {1169, 5, 100, 20},
                               {1169, 24, 100, 14},
                               {10, 1, 1234, 30},
                               QRect(QPoint(10, 4), logo)}));
        QVERIFY(g.send.isNull() && g.split.isNull() && g.radios.empty());
        for (int width : {-1, 0, 21, 176, 177, 300}) {
            for (const QRect &place : placed(PanelGeometry::inColumns({width, 41}, traits)))
                QVERIFY(place.width() >= 0 && place.width() < (1 << 24));
        }
    }

    void rowsAreTidyForEveryModel()
    {
        for (int bits = 0; bits < 64; ++bits) {
            const auto has = [bits](int bit) { return (bits >> bit & 1) != 0; };
            const PanelTraits traits{has(0) ? 6 : 4, has(1) ? 6 : 0, has(2) ? 3 : 0, has(3),
                                     has(3),         has(4),         has(4),         has(5) ? logo : QSize()};
            for (const QSize &panel : {QSize(418, 100), QSize(1254, 300)}) {
                const PanelGeometry geometry = PanelGeometry::inRows(panel, traits);
                QVERIFY(!geometry.antennas.empty() && has(3) != geometry.power.isNull());
                QRegion taken(geometry.logo);
                for (const QRect &place : placed(geometry)) {
                    QVERIFY(place.height() >= 15 && QRect(QPoint(), panel).contains(place));
                    QVERIFY(!taken.intersects(place));
                    taken += place;
                }
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestPanelGeometry)
#include "tst_panelgeometry.moc"
