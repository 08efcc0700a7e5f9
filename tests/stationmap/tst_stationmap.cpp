#include "app/resources.h"
#include "stationmap/landoutlines.h"
#include "stationmap/positiontext.h"
#include "stationmap/stationmapfile.h"

#include <QtTest>

#include <cmath>

Q_DECLARE_METATYPE(GeoPosition)

namespace {

constexpr int side = 1600;

GeoPosition oppositeOf(const GeoPosition &place)
{
    return {-place.latitude, place.longitude > 0.0 ? place.longitude - 180.0 : place.longitude + 180.0};
}

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

/// Coasts within 20 to 50 km, which is two to five pixels of the fine map.
constexpr Place narrowGrounds[] = {
    {"land", {42.15, 9.10}}, {"sea", {42.15, 8.25}},  {"sea", {42.15, 9.90}}, // Corsica
    {"land", {56.0, 9.0}},   {"sea", {56.0, 7.50}},   {"sea", {56.0, 11.3}},  // Jutland
    {"land", {35.05, 33.2}}, {"sea", {34.35, 33.2}},  {"sea", {35.70, 33.2}}, // Cyprus
    {"land", {29.00, 33.9}}, {"sea", {28.75, 33.05}}, {"sea", {28.75, 34.7}}, // Sinai and its gulfs
};

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

    void bearingsAndDistancesAreTheGreatCircles_data()
    {
        QTest::addColumn<GeoPosition>("from");
        QTest::addColumn<GeoPosition>("to");
        QTest::addColumn<double>("bearing");
        QTest::addColumn<double>("km");
        // As published for a sphere of this radius.
        QTest::newRow("Valparaiso to Shanghai")
            << GeoPosition{-33.0, -71.6} << GeoPosition{31.4, 121.8} << 265.59 << 18743.0;
        QTest::newRow("Los Angeles to New York")
            << GeoPosition{33.95, -118.4} << GeoPosition{40.6333, -73.7833} << 65.89 << 3972.9;
        QTest::newRow("Land's End to John o' Groats")
            << GeoPosition{50.0664, -5.7147} << GeoPosition{58.6439, -3.07} << 9.12 << 968.9;
        // As geometry has it: a degree is 111.195 km, a quarter of the way round 10007.5 km.
        QTest::newRow("across the date line")
            << GeoPosition{0, 179} << GeoPosition{0, -179} << 90.0 << 222.39;
        QTest::newRow("over the pole") << GeoPosition{80, 20} << GeoPosition{80, -160} << 0.0 << 2223.9;
        QTest::newRow("from the north pole") << GeoPosition{90, 0} << GeoPosition{0, 90} << 90.0 << 10007.5;
        QTest::newRow("from it down its meridian")
            << GeoPosition{90, 20} << GeoPosition{45, 20} << 180.0 << 5003.8;
        QTest::newRow("from the south pole")
            << GeoPosition{-90, 0} << GeoPosition{0, -90} << 270.0 << 10007.5;
        QTest::newRow("to the south pole")
            << GeoPosition{-23.5, -46.6} << GeoPosition{-90, 0} << 180.0 << 7394.5;
        QTest::newRow("nowhere") << GeoPosition{12, 34} << GeoPosition{12, 34} << 0.0 << 0.0;
    }
    void bearingsAndDistancesAreTheGreatCircles()
    {
        QFETCH(GeoPosition, from);
        QFETCH(GeoPosition, to);
        QFETCH(double, bearing);
        QFETCH(double, km);
        const StationProjection map = StationMap::projection(from, side);
        const StationProjection::Leg leg = map.legTo(unitVectorOf(to));
        QVERIFY2(std::abs(std::remainder(leg.bearing - bearing, 360.0)) < 0.01 || km == 0.0,
                 qPrintable(QString::number(leg.bearing)));
        QVERIFY2(std::abs(leg.distanceKm - km) < 0.6, qPrintable(QString::number(leg.distanceKm)));
        // North up, clockwise, the opposite point at the rim: written here once more on purpose.
        const double angle = bearing * M_PI / 180.0;
        const double radius = km / (M_PI * 6371.0) * map.radius();
        const QPointF expected(side / 2 + radius * std::sin(angle), side / 2 - radius * std::cos(angle));
        QVERIFY(distance(map.pixelOf(unitVectorOf(to)), expected) < 0.2);
        QVERIFY(distance(map.pixelAt(bearing, km), expected) < 0.01);
    }

    void theRimIsTheOppositePoint()
    {
        for (const GeoPosition &station : stations()) {
            const StationProjection map = StationMap::projection(station, side);
            const GeoPosition opposite = oppositeOf(station);
            for (const GeoPosition &near :
                 {opposite, GeoPosition{opposite.latitude * 0.9999, opposite.longitude + 0.01}}) {
                const QPointF pixel = map.pixelOf(unitVectorOf(near));
                QVERIFY(std::abs(distance(pixel, {side / 2.0, side / 2.0}) - map.radius()) < 0.1);
            }
        }
    }

    void landAndSeaLieWhereTheyAre()
    {
        constexpr int quickSide = 800;
        for (const GeoPosition &station : stations()) {
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

    void coastsAreRightToAPixel()
    {
        constexpr int fineSide = 4000;
        const GeoPosition station{48.2, 16.4};
        const QImage map = StationMap{station, {}}.drawn(m_land, fineSide);
        const StationProjection projection = StationMap::projection(station, fineSide);
        for (const Place &place : narrowGrounds) {
            const QPointF pixel = projection.pixelOf(unitVectorOf(place.position));
            QVERIFY2(groundAt(map, pixel - QPointF(0.5, 0.5), 0) == place.ground,
                     qPrintable(QString("%1 %2").arg(place.position.latitude).arg(place.position.longitude)));
        }
    }

    void locatorsNameTheMiddleOfTheirSquare_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isGood");
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        const auto good = [](const char *text, double latitude, double longitude) {
            QTest::newRow(text) << text << true << latitude << longitude;
        };
        good("FN31pr", 41.72917, -72.70833);
        good("JN58td", 48.14583, 11.62500);
        good("jn58TD25", 48.14792, 11.60417);
        good(" GG66 ", -23.5, -47.0);
        good("AA00aa", -89.97917, -179.95833);
        good("RR99xx99", 89.99792, 179.99583);
        for (const char *text : {"", "J", "JO", "JO2", "JO22y", "JO22db1", "JO22db123", "SA00", "AS00",
                                 "JO22ya", "JO22ay", "22JO", "JOdb22", "JO 22", "JO22-b", "JÖ22"})
            QTest::newRow(text) << QString(text) << false << 0.0 << 0.0;
    }
    void locatorsNameTheMiddleOfTheirSquare()
    {
        QFETCH(QString, text);
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        const std::optional<GeoPosition> position = PositionText::positionOfLocator(text);
        QTEST(position.has_value(), "isGood");
        if (!position)
            return;
        QVERIFY2(std::abs(position->latitude - latitude) < 1e-4,
                 qPrintable(QString::number(position->latitude)));
        QVERIFY2(std::abs(position->longitude - longitude) < 1e-4,
                 qPrintable(QString::number(position->longitude)));
        const QString locator = PositionText::locatorOf(*position);
        QCOMPARE(locator.size(), 6);
        QVERIFY(locator.startsWith(text.trimmed().left(6), Qt::CaseInsensitive));
    }

    void coordinatesAreReadAsTheyAreWritten_data()
    {
        QTest::addColumn<bool>("isLatitude");
        QTest::addColumn<QString>("degrees"); // empty: refused
        const auto add = [](const char *text, bool isLatitude, const char *degrees) {
            QTest::addRow("%s", text) << isLatitude << degrees;
        };
        for (const char *text : {"-23.5", "23.5S", "s 23,5", "23 30 S", "23°30'00\"S", "S23 29.5 30"})
            add(text, true, "-23.5");
        add("+90", true, "90");
        add("180", false, "180");
        add("46 36 W", false, "-46.6");
        add("0.00004", true, "0");
        for (const char *text : {"", "S", "-", "90.1", "-91", "23,5 W", "-23 S", "N 23 S", "23 60", "23.5.1",
                                 "1e1", "0x10", "nan", "23 30 15 10", "--23", "23 -30"})
            add(text, true, "");
        add("180 0 1", false, "");
        add("10 N", false, "");
    }
    void coordinatesAreReadAsTheyAreWritten()
    {
        QFETCH(bool, isLatitude);
        const QString text = QString::fromUtf8(QTest::currentDataTag());
        const std::optional<double> degrees =
            isLatitude ? PositionText::latitudeOf(text) : PositionText::longitudeOf(text);
        QTEST(degrees ? PositionText::textOf(*degrees) : QString(), "degrees");
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

    void theMapThatComesWithTheProgramIsDrawnByIt()
    {
        const QString path = QStringLiteral(DEFAULT_MAP);
        QVERIFY(!StationMapFile::read(path));
        const QImage image(path);
        QCOMPARE(image.format(), QImage::Format_Indexed8);
        // Letters may come from another font here.
        QVERIFY(unlikePixels(image, StationMap{{0.0, 0.0}, "0° N 0° E"}.drawn(m_land, image.width())) < 0.01);
    }

private:
    /// Ordinary places, the poles, the date line, lands and seas opposite, and coasts opposite to the point.
    std::vector<GeoPosition> stations() const
    {
        std::vector<GeoPosition> stations{{-23.5, -46.6}, {51.0, 10.0},   {35.7, 139.7},
                                          {0.0, 0.0},     {90.0, 0.0},    {-90.0, 0.0},
                                          {0.0, 180.0},   {-40.0, 176.0}, {-16.0, -180.0}};
        for (std::size_t i = 0; i < m_land.size(); i += m_land.size() / 4) {
            const UnitVector &coast = m_land[i].front();
            stations.push_back(
                oppositeOf({std::asin(coast.z) * 180.0 / M_PI, std::atan2(coast.y, coast.x) * 180.0 / M_PI}));
        }
        return stations;
    }

    /// The part of the pixels whose colours differ visibly.
    static double unlikePixels(const QImage &a, const QImage &b)
    {
        const QImage one = a.convertToFormat(QImage::Format_ARGB32);
        const QImage other = b.convertToFormat(QImage::Format_ARGB32);
        int count = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const QRgb p = one.pixel(x, y);
                const QRgb q = other.pixel(x, y);
                const int difference = std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q))
                                     + std::abs(qBlue(p) - qBlue(q));
                count += std::abs(qAlpha(p) - qAlpha(q)) > 40 || (qAlpha(p) > 40 && difference > 40);
            }
        }
        return 1.0 * count / (one.width() * one.height());
    }

    std::vector<Outline> m_land;
};

QTEST_MAIN(TestStationMap)
#include "tst_stationmap.moc"
