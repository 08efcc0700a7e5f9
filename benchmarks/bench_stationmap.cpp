// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "stationmap/stationmapfile.h"
#include "widgets/map/azimuthalmapimage.h"

#include <QFile>
#include <QtTest>

// What it costs to draw the map of a station, to keep it as a file, and to read it at the start.

class BenchStationMap : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initResources();
        m_land = readLandOutlines();
        m_drawing = m_map.drawn(m_land, StationMapFile::usualSide);
        m_path = QCoreApplication::applicationDirPath() + "/station.png";
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(StationMapFile::encoded(m_drawing, m_map));
    }
    void cleanupTestCase() { QFile::remove(m_path); }

    void readLand()
    {
        QBENCHMARK
        {
            readLandOutlines();
        }
    }

    void draw_data()
    {
        QTest::addColumn<int>("side");
        for (const int side : {300, StationMapFile::usualSide, 1600})
            QTest::addRow("%d pixels", side) << side;
    }
    void draw()
    {
        QFETCH(int, side);
        QBENCHMARK
        {
            m_map.drawn(m_land, side);
        }
    }

    void encode()
    {
        QBENCHMARK
        {
            StationMapFile::encoded(m_drawing, m_map);
        }
    }

    void decode()
    {
        QBENCHMARK
        {
            AzimuthalMapImage::load(m_path);
        }
    }

private:
    const StationMap m_map{{-23.3542, -46.5417}, QStringLiteral("GG66rp")};
    std::vector<Outline> m_land;
    QImage m_drawing;
    QString m_path;
};

QTEST_MAIN(BenchStationMap)
#include "bench_stationmap.moc"
