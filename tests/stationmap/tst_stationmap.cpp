// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "stationmap/landoutlines.h"
#include "stationmap/positiontext.h"
#include "stationmap/stationmapfile.h"

#include <QtTest>

#include <cmath>

namespace {

constexpr int side = 1600;

/// Pixels between two points.
double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// What most of the pixels around a place show; lines and letters may lie on some.
QString groundAt(const QImage &map, const QPointF &pixel, int reach)
{
    int balance = 0;
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) {
            const QColor color = map.pixelColor(QPointF(pixel.x() + dx, pixel.y() + dy).toPoint());
            balance += color.red() > color.blue() ? 1 : -1;
        }
    }
    return balance > 0 ? "land" : "sea";
}

struct Place
{
    const char *ground;
    GeoPosition position;
};

/// Large lands and seas of every continent and ocean.
constexpr Place wideGrounds[] = {
    {"land", {60.0, 100.0}},  {"land", {40.0, -100.0}}, {"land", {-10.0, -52.0}}, {"land", {22.0, 10.0}},
    {"land", {-25.0, 133.0}}, {"land", {-80.0, 80.0}},  {"land", {72.0, -40.0}},  {"sea", {0.0, -120.0}},
    {"sea", {40.0, -40.0}},   {"sea", {-40.0, -100.0}}, {"sea", {-30.0, 80.0}},   {"sea", {86.0, 160.0}},
    {"sea", {42.0, 50.5}}, // the Caspian, inside Asia's outline
};

/// Ordinary places, the poles, the date line, and one opposite to land.
constexpr GeoPosition stations[] = {{-23.5, -46.6}, {51.0, 10.0},    {90.0, 0.0},
                                    {-90.0, 0.0},   {-16.0, -180.0}, {-40.0, 176.0}};

} // namespace

class TestStationMap : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initResources();
        m_land = readLandOutlines();
        QVERIFY(m_land.size() > 1000);
    }

    void bearingsAndDistancesAreTheGreatCircles()
    {
        struct Leg
        {
            GeoPosition from, to;
            double bearing, km;
        };
        // The first two as published for a sphere of this radius. The others follow from geometry: a degree
        // is 111.195 km, a quarter of the way round 10007.5 km.
        for (const auto &[from, to, bearing, km] :
             {Leg{{-33.0, -71.6}, {31.4, 121.8}, 265.59, 18743.0},
              Leg{{50.0664, -5.7147}, {58.6439, -3.07}, 9.12, 968.9}, Leg{{0, 179}, {0, -179}, 90.0, 222.39},
              Leg{{80, 20}, {80, -160}, 0.0, 2223.9}, Leg{{90, 0}, {0, 90}, 90.0, 10007.5},
              Leg{{90, 20}, {45, 20}, 180.0, 5003.8}, Leg{{-90, 0}, {0, -90}, 270.0, 10007.5},
              Leg{{-23.5, -46.6}, {-90, 0}, 180.0, 7394.5}, Leg{{12, 34}, {12, 34}, 0.0, 0.0}}) {
            const StationProjection map = StationMap::projection(from, side);
            const StationProjection::Leg leg = map.legTo(unitVectorOf(to));
            const QByteArray row =
                QString("%1 degrees, %2 km").arg(leg.bearing).arg(leg.distanceKm).toLatin1();
            QVERIFY2(std::abs(std::remainder(leg.bearing - bearing, 360.0)) < 0.01 || km == 0.0, row);
            QVERIFY2(std::abs(leg.distanceKm - km) < 0.6, row);
            // North up, clockwise, the opposite point at the rim: written here once more on purpose.
            const double angle = bearing * M_PI / 180.0;
            const double radius = km / (M_PI * 6371.0) * map.radius();
            const QPointF expected(side / 2 + radius * std::sin(angle), side / 2 - radius * std::cos(angle));
            QVERIFY2(distance(map.pixelOf(unitVectorOf(to)), expected) < 0.2, row);
            QVERIFY2(distance(map.pixelAt(bearing, km), expected) < 0.01, row);
        }
    }

    void landAndSeaLieWhereTheyAre()
    {
        constexpr int quickSide = 800;
        for (const GeoPosition &station : stations) {
            const QImage map = StationMap{station, {}}.drawn(m_land, quickSide);
            const StationProjection projection = StationMap::projection(station, quickSide);
            for (const Place &place : wideGrounds) {
                const QPointF pixel = projection.pixelOf(unitVectorOf(place.position));
                QVERIFY2(groundAt(map, pixel, 4) == place.ground,
                         qPrintable(QString("%1 %2 seen from %3 %4")
                                        .arg(place.position.latitude)
                                        .arg(place.position.longitude)
                                        .arg(station.latitude)
                                        .arg(station.longitude)));
            }
        }
    }

    void locatorsNameTheMiddleOfTheirSquare()
    {
        const std::pair<const char *, GeoPosition> squares[] = {{"FN31pr", {41.72917, -72.70833}},
                                                                {"jn58TD25", {48.14792, 11.60417}},
                                                                {" GG66 ", {-23.5, -47.0}},
                                                                {"AA00aa", {-89.97917, -179.95833}},
                                                                {"RR99xx99", {89.99792, 179.99583}}};
        for (const auto &[text, middle] : squares) {
            const std::optional<GeoPosition> position = PositionText::positionOfLocator(text);
            QVERIFY2(position && std::abs(position->latitude - middle.latitude) < 1e-4, text);
            QVERIFY2(std::abs(position->longitude - middle.longitude) < 1e-4, text);
            const QString locator = PositionText::locatorOf(*position);
            QVERIFY2(locator.size() == 6, text);
            QVERIFY2(locator.startsWith(QString(text).trimmed().left(6), Qt::CaseInsensitive), text);
        }
        for (const char *text : {"", "J", "JO", "JO2", "JO22y", "JO22db1", "JO22db123", "SA00", "AS00",
                                 "JO22ya", "JO22ay", "22JO", "JOdb22", "JO 22", "JO22-b", "JÖ22"})
            QVERIFY2(!PositionText::positionOfLocator(text), text);
    }

    void coordinatesAreReadAsTheyAreWritten()
    {
        const auto latitude = [](const char *text) {
            const std::optional<double> degrees = PositionText::latitudeOf(text);
            return degrees ? PositionText::textOf(*degrees) : "refused";
        };
        for (const char *text : {"-23.5", "23.5S", "s 23,5", "23 30 S", "23°30'00\"S", "S23 29.5 30"})
            QVERIFY2(latitude(text) == "-23.5", text);
        QCOMPARE(latitude("+90"), QString("90"));
        QCOMPARE(latitude("0.00004"), QString("0"));
        for (const char *text : {"", "S", "-", "90.1", "-91", "23,5 W", "-23 S", "N 23 S", "23 60", "23.5.1",
                                 "1e1", "0x10", "nan", "23 30 15 10", "--23", "23 -30"})
            QVERIFY2(latitude(text) == "refused", text);
        QCOMPARE(PositionText::longitudeOf("180").value_or(0), 180.0);
        QCOMPARE(PositionText::longitudeOf("46 36 W").value_or(0), -46.6);
        QVERIFY(!PositionText::longitudeOf("180 0 1") && !PositionText::longitudeOf("10 N"));
    }

    void aMapFileKeepsItsLookAndItsStation()
    {
        const StationMap map{{-23.3542, -46.625}, QString::fromUtf8("PY2ÅЖ & Co")};
        const QImage drawing = map.drawn(m_land, StationMapFile::usualSide);
        const QByteArray file = StationMapFile::encoded(drawing, map);
        QVERIFY2(file.size() < 300'000, qPrintable(QString::number(file.size())));
        const QTemporaryDir folder;
        const QString path = folder.filePath("map.png");
        QFile target(path);
        QVERIFY(target.open(QIODevice::WriteOnly) && target.write(file) == file.size());
        target.close();

        const std::optional<StationMap> read = StationMapFile::read(path);
        QVERIFY(read);
        QCOMPARE(read->caption, map.caption);
        QCOMPARE(read->station.latitude, map.station.latitude);
        QCOMPARE(read->station.longitude, map.station.longitude);
        const QImage image(path);
        QCOMPARE(image.format(), QImage::Format_Indexed8);
        QVERIFY(unlikePixels(image, drawing) < 0.001);
        QCOMPARE(image.pixelColor(2, 2).alpha(), 0);

        QVERIFY(drawing.save(path, "PNG"));
        QVERIFY(!StationMapFile::read(path) && !StationMapFile::read(folder.filePath("none.png")));
    }

private:
    /// The part of the pixels whose colours differ visibly.
    static double unlikePixels(const QImage &a, const QImage &b)
    {
        int count = 0;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                const QColor p = a.pixelColor(x, y);
                const QColor q = b.pixelColor(x, y);
                const int difference = std::abs(p.red() - q.red()) + std::abs(p.green() - q.green())
                                     + std::abs(p.blue() - q.blue());
                count += std::abs(p.alpha() - q.alpha()) > 40 || (p.alpha() > 40 && difference > 40);
            }
        }
        return 1.0 * count / (a.width() * a.height());
    }

    std::vector<Outline> m_land;
};

QTEST_MAIN(TestStationMap)
#include "tst_stationmap.moc"
