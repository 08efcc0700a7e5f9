// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QFile>
#include <QPainter>
#include <QtTest>

#include <memory>

// What a repaint of the azimuthal map costs, against merely copying its map image.

namespace {

constexpr QSize mapSize(672, 480);
constexpr int imageSide = 2000;
constexpr int shownSide = 680; // at the default zoom

/// A box whose line counts as open, so that arrows are animated.
class OpenBox : public CVextralRemoteControl
{
public:
    using CVextralRemoteControl::CVextralRemoteControl;
    bool isOpen() override { return true; }
};

QImage patternedImage()
{
    QImage image(imageSide, imageSide, QImage::Format_ARGB32);
    for (int y = 0; y < imageSide; ++y) {
        for (int x = 0; x < imageSide; ++x)
            image.setPixel(x, y, qRgb(x & 0xff, y & 0xff, (x * y) & 0xff));
    }
    return image;
}

QString imagePath()
{
    return QCoreApplication::applicationDirPath() + "/AzimuthalMap.png";
}

} // namespace

class BenchAzimuthalMap : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void bareBlit();
    void fullRepaint();
    void repaintWithoutDisplays();
    void animationTick();
    void firstPaintAfterZoom();

private:
    void paintMap() { m_map->render(&m_canvas); }

    QImage m_image = patternedImage();
    QImage m_shown = m_image.scaled(shownSide, shownSide, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage m_canvas{mapSize, QImage::Format_RGB32};
    std::unique_ptr<OpenBox> m_box;
    std::unique_ptr<CVextralAzimuthalWidget> m_map;
};

void BenchAzimuthalMap::initTestCase()
{
    initResources();
    QVERIFY(m_image.save(imagePath()));
    const CSettings settings;
    m_box = std::make_unique<OpenBox>(&settings);
    m_map = std::make_unique<CVextralAzimuthalWidget>();
    m_map->resize(mapSize);
    m_box->setAzimuthalWiget(m_map.get());
    m_map->setDevice(m_box.get());
    QCOMPARE(m_map->antennaCount(), 4);
    for (CVextralAntenna *antenna : m_map->antennas()) {
        antenna->setAngle(100.0 * antenna->index());
        antenna->setTarget(100.0 * antenna->index() + 30.0);
        antenna->setEnabled(true);
    }
    m_map->refreshDisplays(true, true);
    m_map->show();
    paintMap();
    paintMap();
}

void BenchAzimuthalMap::cleanupTestCase()
{
    QFile::remove(imagePath());
}

void BenchAzimuthalMap::bareBlit()
{
    const QPoint corner((mapSize.width() - shownSide) / 2, (mapSize.height() - shownSide) / 2);
    QBENCHMARK
    {
        QPainter painter(&m_canvas);
        painter.drawImage(corner, m_shown);
    }
}

void BenchAzimuthalMap::fullRepaint()
{
    QBENCHMARK
    {
        paintMap();
    }
}

void BenchAzimuthalMap::repaintWithoutDisplays()
{
    QBENCHMARK
    {
        m_map->render(&m_canvas, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    }
}

/// A step of the arrow and the picture that shows it.
void BenchAzimuthalMap::animationTick()
{
    CVextralAntenna *antenna = m_map->antennaAt(0);
    m_map->setAnimationTicks(1e6);
    antenna->setTarget(180.0);
    antenna->setRotating(true);
    m_map->startAnimation(antenna, 0.0, 170.0);
    paintMap();
    QBENCHMARK
    {
        QMetaObject::invokeMethod(m_map.get(), "animate");
        paintMap();
    }
    m_map->stopAnimation();
    antenna->setRotating(false);
}

void BenchAzimuthalMap::firstPaintAfterZoom()
{
    QBENCHMARK
    {
        m_map->setZoom(m_map->zoom() > 1.6 ? 1.5 : 1.7);
        paintMap();
    }
}

QTEST_MAIN(BenchAzimuthalMap)
#include "bench_azimuthalmap.moc"
