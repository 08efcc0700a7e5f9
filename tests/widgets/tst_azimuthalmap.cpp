#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "settings/settings.h"
#include "support/loglines.h"
#include "support/scriptedcontroller.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <functional>
#include <memory>

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
    bool startMonitoring() override
    {
        orders << QStringLiteral("monitor");
        return true;
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

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int paints = 0;
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

Q_DECLARE_METATYPE(std::function<void()>)

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
        QFile::remove(mapPath());
        QFile::remove(CSettings::settingsFilePath());
    }

    void antennasBringTheirDisplays()
    {
        QCOMPARE(display(3)->geometry(), QRect(20, 20, 90, 45));
        QVERIFY(display(0)->isVisible());
        QVERIFY(!display(1)->isFixed());
        QVERIFY(display(2)->isFixed());
        QCOMPARE(m_map->currentAntenna(), antenna(0));
        QCOMPARE(antenna(3)->map(), m_map.get());
        m_box->mapSupport = false;
        m_map->setDevice(m_box.get());
        QVERIFY(m_map->isHidden());
    }

    void anotherModeMovesTheDisplaysAtOnce()
    {
        m_map->setInterfaceMode(0);
        QCOMPARE(display(1)->geometry(), QRect(336, 20, 336, 460));
        QCOMPARE(settledPicture().pixelColor(1, 1), QColor(Qt::darkCyan));
        m_map->setDevice(nullptr); // no rotors to lay out for
        m_map->resize(300, 100);
        QCOMPARE(display(1)->geometry(), QRect(336, 20, 336, 460));
        m_map->setInterfaceMode(1);
        QCOMPARE(display(3)->geometry(), QRect(20, 20, 40, 20));
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
        antenna(1)->setRotorId(2);
        antenna(3)->setEnabled(false);
        m_map->refreshDisplays(true, false);
        QVERIFY(display(1)->isFixed());
        QVERIFY(display(3)->isEnabled());
        m_map->refreshDisplays(false, true);
        QVERIFY(!display(3)->isEnabled());
        QVERIFY(m_map->accessibleDescription().contains("359"));
    }

    void theCurrentAntennaIsShownLive()
    {
        int changes = 0;
        connect(m_map.get(), &CVextralAzimuthalWidget::onCurrentAntennaChanged, this,
                [&changes] { ++changes; });
        QCOMPARE(m_map->setCurrentAntennaByRotorId(1), antenna(1));
        QCOMPARE(changes, 1);
        QCOMPARE(m_panel->digitalDisplay(), display(1));
        QVERIFY(looks(1) != looks(0)); // highlighted
        QVERIFY(looks(2) == looks(0));
        QCOMPARE(m_map->setCurrentAntennaByRotorId(7), nullptr);
        QCOMPARE(m_map->currentAntenna(), antenna(1));

        m_map->setCurrentAntenna(nullptr);
        QCOMPARE(changes, 1);
        qRegisterMetaType<CVextralAntenna *>();
        QSignalSpy targets(m_map.get(), &CVextralAzimuthalWidget::onAntennaTargetChanged);
        m_map->setTargetOfCurrent(90);
        m_map->doChangeTargetAngleValue(90);
        m_map->setCurrentRotorByAntenna(nullptr);
        QCOMPARE(targets.size(), 1);
        QCOMPARE(targets[0][0].value<CVextralAntenna *>(), nullptr);
        settledPicture();
    }

    void anAntennasRotorIsTakenOver_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("pressed");
        QTest::addColumn<bool>("agrees");
        QTest::addColumn<QStringList>("orders");
        QTest::addColumn<double>("angle");
        QTest::addColumn<int>("current");
        QTest::addColumn<bool>("started");
        const bool pressed = true;
        const bool agrees = true;
        const QStringList asked{"select 1"};
        QTest::newRow("press") << 1 << pressed << agrees << asked << 123.5 << 1 << true;
        QTest::newRow("press, refused") << 1 << pressed << !agrees << asked << 51.0 << 1 << false;
        QTest::newRow("press, fixed") << 2 << pressed << agrees << QStringList() << 52.0 << 2 << true;
        QTest::newRow("program") << 1 << !pressed << agrees << (asked + QStringList{"monitor"}) << 123.5 << 1
                                 << false;
        QTest::newRow("program, refused") << 1 << !pressed << !agrees << asked << 51.0 << 1 << false;
        QTest::newRow("program, fixed") << 2 << !pressed << agrees << QStringList() << 52.0 << 0 << false;
    }
    void anAntennasRotorIsTakenOver()
    {
        QFETCH(int, index);
        QFETCH(bool, pressed);
        QFETCH(bool, agrees);
        m_box->agrees = agrees;
        LogLines log;
        if (pressed)
            emit display(index)->onRotationStarted();
        else
            m_map->setCurrentRotorByAntenna(antenna(index));
        QTEST(m_box->orders, "orders");
        QTEST(antenna(index)->angle(), "angle");
        QTEST(m_map->currentAntenna()->index(), "current");
        QTEST(m_panel->dial()->isPressed(), "started");
        if (m_map->currentAntenna() == antenna(index))
            QCOMPARE(antenna(index)->target(), antenna(index)->angle());
        const char *operation = pressed ? "onRotationStarted" : "setCurrentRotorByAntenna";
        QCOMPARE(log.contains(QString::asprintf("CVextralAzimuthalWidget::%s() - Nao foi possivel trocar de "
                                                "rotor. Mas antena e [1]",
                                                operation)),
                 !agrees);
    }

    void anAntennaThatLostItsTurnMeanwhileTakesNothing()
    {
        m_box->whileSelecting = [this] { m_map->setCurrentAntenna(antenna(0)); };
        emit display(1)->onRotationStarted();
        QCOMPARE(m_map->currentAntenna(), antenna(0));
        QCOMPARE(antenna(0)->angle(), 50.0);
        QCOMPARE(antenna(1)->angle(), 51.0);

        m_box->agrees = false; // refused, the antenna becomes current again
        emit display(1)->onRotationStarted();
        QCOMPARE(m_map->currentAntenna(), antenna(1));
    }

    void aLateWheelReportTurnsTheAntennaOfItsDisplay()
    {
        m_map->setCurrentAntenna(antenna(0));
        emit display(1)->onRotationChanging(20);
        QCOMPARE(m_map->currentAntenna(), antenna(0));
        emit display(1)->onRotationChanged(77);
        QCOMPARE(m_map->currentAntenna(), antenna(1));
        QCOMPARE(m_box->orders, QStringList{"turn 1 to 77"});
        QCOMPARE(CSettings().angles[1], 0.0);
    }

    void aFixedAntennasDirectionIsSaved()
    {
        emit display(2)->onRotationChanged(77);
        QCOMPARE(CSettings().angles[2], 77.0);
        QCOMPARE(CSettings().angles[3], 0.0);
        QCOMPARE(m_box->orders, QStringList{"turn 2 to 77"});
    }

    void foreignSendersAreIgnored()
    {
        CRotationDigitalDisplayWidget *stray = display(1);
        for (const QVariant &property : {QVariant(), QVariant("text")}) {
            stray->setProperty("antenna", property);
            emit stray->onRotationStarted();
            emit stray->onRotationChanging(5);
            emit stray->onRotationChanged(5);
        }
        QCOMPARE(m_map->currentAntenna(), antenna(0));
        QCOMPARE(m_box->orders, QStringList());
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

        m_map->setCurrentAntenna(antenna(2)); // fixed
        display(2)->setEditing(true);
        m_map->doChangeTargetAngleValue(200);
        QCOMPARE(antenna(2)->angle(), 200.0);
        QCOMPARE(display(2)->value(), 200);
    }

    void aConfirmedDirectionReplacesAPendingTargetOnly()
    {
        antenna(0)->setTarget(90.0);
        m_map->setTargetOfCurrent(200);
        QCOMPARE(antenna(0)->target(), 200.0);
        antenna(0)->setTarget(antenna(0)->angle());
        m_map->setTargetOfCurrent(100);
        QCOMPARE(antenna(0)->target(), antenna(0)->angle());
    }

    void aTurnIsSpreadOverItsTicks_data()
    {
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        QTest::addColumn<double>("step");
        QTest::newRow("clockwise") << 100.0 << 110.0 << 1.0;
        QTest::newRow("counter-clockwise") << 110.0 << 100.0 << -1.0;
        QTest::newRow("clockwise through north") << 350.0 << 10.0 << 2.0;
        QTest::newRow("back through north") << 10.0 << 350.0 << -2.0;
        QTest::newRow("half a turn up") << 100.0 << 280.0 << 18.0;
        QTest::newRow("half a turn down") << 280.0 << 100.0 << -18.0;
        QTest::newRow("quarters include their ends") << 270.0 << 90.0 << 18.0;
        QTest::newRow("quarters include their ends, back") << 90.0 << 270.0 << -18.0;
        QTest::newRow("long way round") << 359.0 << 100.0 << -10.1;
        QTest::newRow("nowhere") << 42.0 << 42.0 << 0.0;
    }
    void aTurnIsSpreadOverItsTicks()
    {
        QFETCH(double, from);
        QFETCH(double, to);
        m_map->setAnimationTicks(10.0);
        m_map->startAnimation(antenna(0), from, to);
        QTEST(m_map->animationStep(), "step");
        QCOMPARE(antenna(0)->rotation(), from);
    }

    void arrowsMoveTickByTick_data()
    {
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        QTest::addColumn<double>("target");
        QTest::addColumn<bool>("guarded");
        QTest::addColumn<bool>("rotating");
        QTest::addColumn<Angles>("drawn"); // up to the tick that ends it, or the first four
        QTest::addColumn<bool>("ends");
        const bool guarded = true;
        const bool rotating = true;
        QTest::newRow("up to the target")
            << 10.0 << 16.0 << 15.5 << guarded << rotating << Angles{12, 14, 16, 18} << true;
        QTest::newRow("up to the target, exactly")
            << 10.0 << 16.0 << 14.5 << guarded << rotating << Angles{12, 14} << true;
        QTest::newRow("down past the target")
            << 16.0 << 10.0 << 13.0 << guarded << rotating << Angles{14, 12, 10} << true;
        QTest::newRow("up, already past a high target")
            << 200.0 << 206.0 << 195.0 << guarded << rotating << Angles{202} << true;
        QTest::newRow("unguarded, runs on")
            << 10.0 << 16.0 << 13.0 << !guarded << rotating << Angles{12, 14, 16, 18} << false;
        QTest::newRow("unguarded, hits the target")
            << 10.0 << 16.0 << 16.9 << !guarded << rotating << Angles{12, 14, 16} << true;
        QTest::newRow("up through north")
            << 356.0 << 2.0 << 2.0 << guarded << rotating << Angles{358, 0, 2} << true;
        QTest::newRow("down through north")
            << 3.0 << 357.0 << 355.0 << guarded << rotating << Angles{1, 359, 357, 355} << true;
        QTest::newRow("without a target, low")
            << 10.0 << 16.0 << -1.0 << guarded << rotating << Angles{12} << true;
        QTest::newRow("without a target, high")
            << 200.0 << 206.0 << -1.0 << guarded << rotating << Angles{202, 204, 206, 208} << false;
        QTest::newRow("standing, not at the target")
            << 30.0 << 30.0 << 40.0 << guarded << rotating << Angles{30, 30, 30, 30} << false;
        QTest::newRow("standing at the target")
            << 40.2 << 40.2 << 40.9 << guarded << rotating << Angles{40.2} << true;
        QTest::newRow("standing, no longer turning")
            << 30.0 << 30.0 << 40.0 << guarded << !rotating << Angles{30} << true;
    }
    void arrowsMoveTickByTick()
    {
        QFETCH(double, from);
        QFETCH(double, to);
        QFETCH(double, target);
        QFETCH(bool, guarded);
        QFETCH(bool, rotating);
        m_box->isGuarded = guarded;
        antenna(0)->setTarget(target);
        antenna(0)->setRotating(rotating);
        m_map->setAnimationTicks(3.0);
        m_map->startAnimation(antenna(0), from, to);
        Angles drawn;
        while (m_map->isAnimating() && drawn.size() < 4) {
            tick();
            drawn << antenna(0)->rotation();
        }
        QTEST(drawn, "drawn");
        QTEST(!m_map->isAnimating(), "ends");
        if (!m_map->isAnimating())
            QCOMPARE(m_map->animationStep(), 0.5);
    }

    void arrowsWaitForTheLine()
    {
        m_map->setAnimationTicks(10.0);
        m_map->startAnimation(antenna(0), 10.0, 20.0);
        m_box->isReady = false;
        tick();
        QCOMPARE(antenna(0)->rotation(), 10.0);
        m_map->startAnimation(nullptr, 0.0, 90.0);
        m_box->isReady = true;
        tick();
        QCOMPARE(m_map->animationStep(), 0.5);
        QVERIFY(m_map->isAnimating());
        m_map->stopAnimation();
        QVERIFY(!m_map->isAnimating());
    }

    void theArrowPointsAlongItsAzimuth()
    {
        for (int i = 1; i < 4; ++i)
            antenna(i)->setEnabled(false);
        const QPoint above(336, 180);
        const QPoint right(396, 240);
        antenna(0)->setAngle(0.0);
        antenna(0)->setRotation(90.0); // drawn only while it turns
        QVERIFY(isBlue(settledPicture().pixelColor(above)));
        QVERIFY(!isBlue(settledPicture().pixelColor(right)));
        antenna(0)->setRotating(true);
        QVERIFY(isBlue(settledPicture().pixelColor(right)));
        QVERIFY(!isBlue(settledPicture().pixelColor(above)));
    }

    /// The picture is kept between paints, so each thing that it shows must replace it.
    void everyChangeShows_data()
    {
        QTest::addColumn<std::function<void()>>("change");
        const auto row = [](const char *name, const std::function<void()> &change) {
            QTest::newRow(name) << change;
        };
        row("angle, current", [this] { antenna(0)->setAngle(200.0); });
        row("angle, on a rotor", [this] { antenna(1)->setAngle(200.0); });
        row("angle, fixed", [this] { antenna(2)->setAngle(200.0); });
        row("target", [this] { antenna(1)->setTarget(200.0); });
        row("colour", [this] { antenna(2)->setColor(Qt::red); });
        row("enabled", [this] { antenna(2)->setEnabled(false); });
        row("rotor", [this] { antenna(1)->setRotorId(-1); });
        row("active rotor", [this] { antenna(1)->setStatus(Rotator::status(1)); });
        row("hidden displays", [this] { m_map->hideDisplays(); });
        row("current antenna", [this] { m_map->setCurrentAntenna(antenna(2)); });
        row("no current antenna", [this] { m_map->setCurrentAntenna(nullptr); });
        row("zoom", [this] { m_map->setZoom(1.0); });
        row("size", [this] { m_map->resize(600, 400); });
        row("font", [this] {
            QFont font = m_map->font();
            font.setItalic(true);
            m_map->setFont(font);
        });
        row("map image", [this] {
            plainImage({10, 10}, Qt::red).save(mapPath());
            m_map->reloadMap();
        });
        row("animation", [this] {
            m_map->setAnimationTicks(1.0);
            m_map->startAnimation(antenna(0), 90.0, 90.0);
        });
    }
    void everyChangeShows()
    {
        QFETCH(std::function<void()>, change);
        plainImage({40, 20}, Qt::darkGreen).save(mapPath());
        m_map->reloadMap();
        const QImage before = settledPicture();
        QCOMPARE(settledPicture(), before);
        change();
        QVERIFY(settledPicture() != before);
    }

    void theMapImageKeepsItsAspect_data()
    {
        QTest::addColumn<QSize>("image");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<QSize>("shown");
        QTest::newRow("landscape") << QSize(800, 400) << 0.5 << QSize(200, 100);
        QTest::newRow("portrait") << QSize(400, 800) << 0.5 << QSize(200, 400);
        QTest::newRow("one pixel") << QSize(1, 1) << 0.5 << QSize(200, 200);
        QTest::newRow("very wide") << QSize(20000, 5000) << 0.5 << QSize(200, 50);
        QTest::newRow("very wide and flat") << QSize(20000, 1) << 0.5 << QSize(200, 1);
        QTest::newRow("beyond the edges") << QSize(400, 400) << 1e9 << referenceSize;
        QTest::newRow("collapsed") << QSize(400, 400) << 0.0 << QSize(0, 0);
        QTest::newRow("no number") << QSize(400, 400) << qQNaN() << QSize(0, 0);
    }
    void theMapImageKeepsItsAspect()
    {
        QFETCH(QSize, image);
        QFETCH(double, zoom);
        for (CVextralAntenna *antenna : m_map->antennas())
            antenna->setEnabled(false);
        m_map->hideDisplays();
        m_map->setZoom(zoom);
        const QImage empty = settledPicture();
        QVERIFY(plainImage(image, Qt::green).save(mapPath()));
        m_map->reloadMap();
        QTEST(changedArea(empty, settledPicture()).size(), "shown");
    }

    void aNegativeZoomTurnsTheMapImageOver()
    {
        QImage image = plainImage({1, 2}, Qt::green);
        image.setPixelColor(0, 0, Qt::red);
        image.save(mapPath());
        m_map->reloadMap();
        m_map->setZoom(0.5);
        QCOMPARE(settledPicture().pixelColor(280, 60), QColor(Qt::red));
        m_map->setZoom(-0.5);
        QCOMPARE(settledPicture().pixelColor(280, 60), QColor(Qt::green));
    }

    void withoutAMapImageTheRoseStandsAlone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("no image");
        QTest::newRow("cut short") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    }
    void withoutAMapImageTheRoseStandsAlone()
    {
        QFETCH(QByteArray, content);
        const QImage bare = settledPicture();
        QFile file(mapPath());
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(content);
        file.close();
        m_map->reloadMap();
        QCOMPARE(settledPicture(), bare);
        QVERIFY(isDarkBlue(bare.pixelColor(336, 30)));   // the long tick at north
        QVERIFY(!isDarkBlue(bare.pixelColor(551, 240))); // the one at east is short
    }

    void aNewSizeIsPaintedUntilItIsComplete()
    {
        QCoreApplication::processEvents();
        PaintCounter counter(m_map.get());
        m_map->resize(500, 400);
        QTRY_COMPARE(counter.paints, 2);
        QCoreApplication::processEvents();
        QCOMPARE(counter.paints, 2);
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

    QImage looks(int index) const { return display(index)->grab().toImage(); }
    static bool isDarkBlue(const QColor &color) { return color.blue() < 140 && color.red() < 20; }
    static bool isBlue(const QColor &color) { return color.blue() > 180 && color.red() < 60; }

    static QRect changedArea(const QImage &before, const QImage &after)
    {
        QRect area;
        for (int y = 0; y < after.height(); ++y) {
            for (int x = 0; x < after.width(); ++x) {
                if (before.pixel(x, y) != after.pixel(x, y))
                    area |= QRect(x, y, 1, 1);
            }
        }
        return area;
    }

    std::unique_ptr<Rotator> m_box;
    std::unique_ptr<CVextralRemoteControlWidget> m_panel;
    std::unique_ptr<CVextralAzimuthalWidget> m_map;
};

QTEST_MAIN(TestAzimuthalMap)
#include "tst_azimuthalmap.moc"
