#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "settings/settings.h"
#include "support/scriptedcontroller.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QFile>
#include <QtTest>

#include <functional>
#include <memory>
#include <vector>

using Angles = QList<double>;

namespace {

constexpr QSize referenceSize(672, 480); // radius 200 about (336, 240)

/// Two rotors, on which antennas 0 and 1 are; 2 and 3 are fixed. Rotor selection is up to the test.
class Rotator : public ScriptedController
{
public:
    bool setCurrentRotor(int rotor) override
    {
        orders << QStringLiteral("select %1").arg(rotor);
        if (whileSelecting)
            whileSelecting();
        return agrees;
    }
    void turnAntennaFromCurrentToTarget(CVextralAntenna *antenna) override
    {
        orders << QStringLiteral("turn %1 to %2").arg(antenna->index()).arg(antenna->target());
    }
    bool isOpen() override { return isReady; }
    bool mapAnimationFlag() override { return isGuarded; }

    QStringList orders;
    std::function<void()> whileSelecting;
    bool agrees = true;
    bool isReady = true;
    bool isGuarded = true;
};

QString mapPath()
{
    return QCoreApplication::applicationDirPath() + "/AzimuthalMap.png";
}

QImage plainImage(const QSize &size, const QColor &color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

class TestAzimuthalMap : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void init()
    {
        QFile::remove(mapPath());
        QFile::remove(CSettings::settingsFilePath());
        m_box = std::make_unique<Rotator>();
        m_box->angles = {123.5};
        m_panel = std::make_unique<CVextralRemoteControlWidget>();
        m_box->setRemoteControlWidget(m_panel.get());
        m_map = std::make_unique<CVextralAzimuthalWidget>();
        m_map->resize(referenceSize);
        m_box->setAzimuthalWiget(m_map.get());
        m_map->setDevice(m_box.get());
        for (CVextralAntenna *antenna : m_map->antennas()) {
            antenna->setEnabled(true);
            antenna->setAngle(50.0 + antenna->index());
            antenna->clearTarget();
        }
        m_map->refreshDisplays(true, true);
        m_map->show();
        settledPicture();
    }

    void cleanup()
    {
        m_map.reset();
        m_panel.reset();
        m_box.reset();
    }

    void displaysFollowTheirAntennas()
    {
        antenna(0)->setAngle(359.7);
        antenna(1)->setAngle(-1.0);
        display(2)->setEditing(true);
        m_map->syncDisplays();
        QCOMPARE(display(0)->value(), 359);
        QCOMPARE(display(1)->value(), 359);
        QCOMPARE(display(2)->value(), 0);
    }

    void theCurrentAntennaIsShownLive()
    {
        QCOMPARE(m_map->setCurrentAntennaByRotorId(1), antenna(1));
        QCOMPARE(m_panel->digitalDisplay(), display(1));
        QCOMPARE(m_map->setCurrentAntennaByRotorId(7), nullptr);
        QCOMPARE(m_map->currentAntenna(), antenna(1));
    }

    void aPressTakesTheAntennasRotorOver_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("agrees");
        QTest::addColumn<QStringList>("orders");
        QTest::addColumn<double>("angle");
        QTest::newRow("on a rotor") << 1 << true << QStringList{"select 1"} << 123.5;
        QTest::newRow("refused") << 1 << false << QStringList{"select 1"} << 51.0;
        QTest::newRow("fixed") << 2 << true << QStringList() << 52.0;
    }
    void aPressTakesTheAntennasRotorOver()
    {
        QFETCH(int, index);
        QFETCH(bool, agrees);
        m_box->agrees = agrees;
        emit display(index)->onRotationStarted();
        QTEST(m_box->orders, "orders");
        QTEST(antenna(index)->angle(), "angle");
        QCOMPARE(antenna(index)->target(), antenna(index)->angle());
        QCOMPARE(m_map->currentAntenna(), antenna(index));
        QCOMPARE(m_panel->dial()->isPressed(), agrees);
    }

    void anAntennaThatLostItsTurnMeanwhileTakesNothing()
    {
        m_box->whileSelecting = [this] { m_map->setCurrentAntenna(antenna(0)); };
        emit display(1)->onRotationStarted();
        QCOMPARE(m_map->currentAntenna(), antenna(0));
        QCOMPARE(antenna(0)->angle(), 50.0);
        QCOMPARE(antenna(1)->angle(), 51.0);
    }

    void aLateWheelReportTurnsTheAntennaOfItsDisplay()
    {
        m_map->setCurrentAntenna(antenna(0));
        emit display(1)->onRotationChanged(77);
        QCOMPARE(m_map->currentAntenna(), antenna(1));
        emit display(2)->onRotationChanged(88);
        QCOMPARE(m_box->orders, (QStringList{"turn 1 to 77", "turn 2 to 88"}));
        QCOMPARE(CSettings().angles[1], 0.0);
        QCOMPARE(CSettings().angles[2], 88.0); // fixed: nothing else would tell its direction
    }

    void typedDirectionsAimOrTurnTheCurrentAntenna()
    {
        m_map->setCurrentAntenna(antenna(1)); // on a rotor
        m_map->doChangeTargetAngleValue(200);
        QCOMPARE(antenna(1)->target(), 200.0);
        QCOMPARE(antenna(1)->angle(), 51.0);
        antenna(1)->setRotating(true);
        m_map->doChangeTargetAngleValue(300);
        QCOMPARE(antenna(1)->target(), 200.0);
        m_map->setTargetOfCurrent(100); // replaces a pending target only
        QCOMPARE(antenna(1)->target(), 100.0);
        antenna(1)->setAngle(100.0);
        m_map->setTargetOfCurrent(200);
        QCOMPARE(antenna(1)->target(), 100.0);

        m_map->setCurrentAntenna(antenna(2)); // fixed
        display(2)->setEditing(true);
        m_map->doChangeTargetAngleValue(200);
        QCOMPARE(antenna(2)->angle(), 200.0);
        QCOMPARE(display(2)->value(), 200);
    }

    void aTurnIsSpreadOverItsTicks()
    {
        struct Turn
        {
            double from, to, step;
        };
        m_map->setAnimationTicks(10.0);
        for (const Turn &turn :
             {Turn{100, 110, 1}, Turn{350, 10, 2}, Turn{10, 350, -2}, Turn{280, 100, -18}, Turn{270, 90, 18},
              Turn{90, 270, -18}, // the quarters beside north include their ends
              Turn{359, 100, -10.1}}) {
            m_map->startAnimation(antenna(0), turn.from, turn.to);
            QCOMPARE(m_map->animationStep(), turn.step);
        }
    }

    void arrowsMoveTickByTick_data()
    {
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        QTest::addColumn<double>("target");
        QTest::addColumn<bool>("guarded");
        QTest::addColumn<Angles>("drawn"); // up to the tick that ends it, or the first five
        QTest::newRow("up to the target") << 10.0 << 16.0 << 15.5 << true << Angles{12, 14, 16, 18};
        QTest::newRow("down past the target") << 16.0 << 10.0 << 13.0 << true << Angles{14, 12, 10};
        QTest::newRow("unguarded, runs on") << 10.0 << 16.0 << 13.0 << false << Angles{12, 14, 16, 18, 20};
        QTest::newRow("unguarded, hits") << 10.0 << 16.0 << 16.9 << false << Angles{12, 14, 16};
        QTest::newRow("up through north") << 356.0 << 2.0 << 2.0 << true << Angles{358, 0, 2};
        QTest::newRow("down through north") << 3.0 << 357.0 << 355.0 << true << Angles{1, 359, 357, 355};
        QTest::newRow("no target, low") << 10.0 << 16.0 << -1.0 << true << Angles{12};
        QTest::newRow("no target, high") << 200.0 << 206.0 << -1.0 << true << Angles{202, 204, 206, 208, 210};
        QTest::newRow("standing at the target") << 40.2 << 40.2 << 40.9 << true << Angles{40.2};
    }
    void arrowsMoveTickByTick()
    {
        QFETCH(double, from);
        QFETCH(double, to);
        QFETCH(double, target);
        QFETCH(bool, guarded);
        m_box->isGuarded = guarded;
        antenna(0)->setTarget(target);
        antenna(0)->setRotating(true);
        m_map->setAnimationTicks(3.0);
        m_map->startAnimation(antenna(0), from, to);
        Angles drawn;
        while (m_map->isAnimating() && drawn.size() < 5) {
            tick();
            drawn << antenna(0)->rotation();
        }
        QTEST(drawn, "drawn");
    }

    void arrowsWaitForTheLineAndEndWithTheTurn()
    {
        m_map->setAnimationTicks(10.0);
        m_map->startAnimation(antenna(0), 10.0, 20.0);
        m_box->isReady = false;
        tick();
        QCOMPARE(antenna(0)->rotation(), 10.0);
        m_box->isReady = true;
        m_map->startAnimation(nullptr, 0.0, 90.0);
        tick();
        QVERIFY(m_map->isAnimating());
        antenna(0)->setTarget(40.0);
        m_map->startAnimation(antenna(0), 30.0, 30.0);
        tick();
        QVERIFY(!m_map->isAnimating());
    }

    void theArrowPointsAlongItsAzimuth()
    {
        for (int i = 1; i < 4; ++i)
            antenna(i)->setEnabled(false);
        antenna(0)->setAngle(0.0);
        antenna(0)->setRotation(90.0); // drawn only while it turns
        for (bool rotating : {false, true}) {
            antenna(0)->setRotating(rotating);
            const QImage picture = settledPicture();
            QCOMPARE(isBlue(picture.pixelColor(336, 180)), !rotating); // north of the centre
            QCOMPARE(isBlue(picture.pixelColor(396, 240)), rotating);  // east of it
        }
    }

    /// The picture is kept between paints, so each thing that it shows must replace it.
    void everyChangeShows()
    {
        plainImage({40, 20}, Qt::darkGreen).save(mapPath());
        m_map->reloadMap();
        const std::vector<std::function<void()>> changes{
            [this] { antenna(0)->setAngle(200.0); }, // current
            [this] { antenna(1)->setAngle(200.0); }, // on a rotor
            [this] { antenna(2)->setAngle(200.0); }, // fixed
            [this] { antenna(1)->setTarget(100.0); },
            [this] {
                antenna(0)->setRotating(true);
                antenna(0)->setRotation(300.0);
            },
            [this] { antenna(2)->setColor(Qt::red); },
            [this] { antenna(3)->setEnabled(false); },
            [this] { antenna(1)->setStatus(Rotator::status(1)); },
            [this] { antenna(1)->setRotorId(-1); },
            [this] { m_map->setCurrentAntenna(antenna(2)); },
            [this] { m_map->setCurrentAntenna(nullptr); },
            [this] { m_map->hideDisplays(); },
            [this] { m_map->setZoom(1.0); },
            [this] { m_map->resize(600, 400); },
            [this] {
                plainImage({10, 10}, Qt::red).save(mapPath());
                m_map->reloadMap();
            }};
        QImage before = settledPicture();
        for (std::size_t i = 0; i < changes.size(); ++i) {
            changes[i]();
            const QImage after = settledPicture();
            QVERIFY2(after != before, qPrintable(QString::number(i)));
            before = after;
        }
    }

    void theMapImageKeepsItsAspect()
    {
        plainImage({800, 400}, Qt::green).save(mapPath());
        m_map->reloadMap();
        const auto isGreen = [this](int x, int y) {
            return settledPicture().pixelColor(x, y) == QColor(Qt::green);
        };
        for (double zoom : {0.5, -0.5}) { // a negative one turns it over
            m_map->setZoom(zoom);
            QVERIFY(isGreen(432, 195) && !isGreen(440, 195) && !isGreen(430, 185));
        }
        for (double zoom : {0.0, 1e9, qQNaN()}) {
            m_map->setZoom(zoom);
            settledPicture();
        }
    }

    void tinyMapsArePaintedWithoutHarm()
    {
        plainImage({40, 40}, Qt::red).save(mapPath());
        m_map->reloadMap();
        for (int side : {0, 1, 79, 80, 81}) {
            m_map->resize(side, side);
            settledPicture();
        }
    }

private:
    CVextralAntenna *antenna(int index) const { return m_map->antennaAt(index); }
    CRotationDigitalDisplayWidget *display(int index) const { return m_map->displayOf(antenna(index)); }
    void tick() { QVERIFY(QMetaObject::invokeMethod(m_map.get(), "animate")); }

    /// The second paint after a change of the size is the one that stays.
    QImage settledPicture()
    {
        m_map->grab();
        return m_map->grab().toImage();
    }

    static bool isBlue(const QColor &color) { return color.blue() > 180 && color.red() < 60; }

    std::unique_ptr<Rotator> m_box;
    std::unique_ptr<CVextralRemoteControlWidget> m_panel;
    std::unique_ptr<CVextralAzimuthalWidget> m_map;
};

QTEST_MAIN(TestAzimuthalMap)
#include "tst_azimuthalmap.moc"
