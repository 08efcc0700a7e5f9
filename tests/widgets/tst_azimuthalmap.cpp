// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "support/scriptedcontroller.h"
#include "widgets/map/azimuthalgeometry.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QFile>
#include <QPainter>
#include <QtTest>

#include <cmath>
#include <functional>
#include <vector>

namespace {

QString mapPath()
{
    return QCoreApplication::applicationDirPath() + "/AzimuthalMap.png";
}

/// A map whose compass has the radius 200 about (336, 240). Antennas 0 and 1 are on rotors, of which the
/// second is selected and stands at 123.5; 2 and 3 are fixed.
struct Station
{
    Station()
    {
        box.statuses = {ScriptedController::status(1)};
        box.angles = {123.5};
        box.setRemoteControlWidget(&panel);
        box.setAzimuthalWiget(&map);
        map.setDevice(&box);
        map.resize(672, 480);
        for (CVextralAntenna *each : map.antennas()) {
            each->setEnabled(true);
            each->setAngle(50.0 + each->index());
            each->clearTarget();
        }
        map.refreshDisplays(true, true);
        map.show();
        picture();
    }

    CVextralAntenna *antenna(int index) const { return map.antennaAt(index); }
    CRotationDigitalDisplayWidget *display(int index) const { return map.displayOf(antenna(index)); }

    /// The second paint after a change of the size is the one that stays.
    QImage picture()
    {
        map.grab();
        return map.grab().toImage();
    }

    CVextralRemoteControlWidget panel;
    CVextralAzimuthalWidget map;
    ScriptedController box;
};

} // namespace

class TestAzimuthalMap : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void init()
    {
        QFile::remove(mapPath());
        QFile::remove(SettingsFile::path());
    }

    void aDisplayTurnsItsOwnAntenna()
    {
        Station s;
        const auto press = [&s](int index) {
            s.panel.dial()->setPressed(false);
            emit s.display(index)->onRotationStarted();
            return s.panel.dial()->isPressed();
        };
        s.box.statuses = {CDeviceStatus()};
        QVERIFY(!press(1)); // refused
        s.box.statuses = {ScriptedController::status(1)};
        QVERIFY(press(1));
        QVERIFY(press(2)); // fixed
        QCOMPARE(s.box.sent, (QStringList{"K0", "K0"}));
        QCOMPARE(s.antenna(1)->angle(), 123.5);

        // The wheel reports a second late.
        s.box.sent.clear();
        s.map.setCurrentAntenna(s.antenna(0));
        emit s.display(1)->onRotationChanged(77);
        emit s.display(2)->onRotationChanged(88);
        QCOMPARE(s.box.sent, (QStringList{"K0", "M77"}));
        QCOMPARE(s.antenna(2)->angle(), 88.0);
        QCOMPARE(CSettings().angles[1], 0.0);
        QCOMPARE(CSettings().angles[2], 88.0); // fixed: nothing else would tell its direction
    }

    void typedDirectionsAimOrTurnTheCurrentAntenna()
    {
        Station s;
        s.map.setCurrentAntenna(s.antenna(1)); // on a rotor
        s.map.doChangeTargetAngleValue(200);
        QCOMPARE(s.antenna(1)->angle(), 51.0);
        s.antenna(1)->setRotating(true);
        s.map.doChangeTargetAngleValue(300);
        QCOMPARE(s.antenna(1)->target(), 200.0);
        s.map.setTargetOfCurrent(100); // replaces a pending target only
        QCOMPARE(s.antenna(1)->target(), 100.0);
        s.antenna(1)->setAngle(100.0);
        s.map.setTargetOfCurrent(200);
        QCOMPARE(s.antenna(1)->target(), 100.0);

        s.map.setCurrentAntenna(s.antenna(2)); // fixed
        s.display(2)->setEditing(true);
        s.map.doChangeTargetAngleValue(200);
        QCOMPARE(s.antenna(2)->angle(), 200.0);
        s.antenna(2)->setAngle(90.0);
        s.antenna(3)->setAngle(359.7);
        s.map.syncDisplays();
        QCOMPARE(s.display(2)->value(), 200); // typed, and still being changed
        QCOMPARE(s.display(3)->value(), 359);
    }

    void arrowsMoveTickByTick()
    {
        struct Row
        {
            double from, to; // in three ticks
            double target;
            QList<double> drawn; // up to the tick that ends it, or the first five
        };
        for (const Row &row : {Row{10, 16, 15.5, {12, 14, 16, 18}}, Row{16, 10, 13, {14, 12, 10}},
                               Row{356, 2, 2, {358, 0, 2}}, Row{3, 357, 355, {1, 359, 357, 355}},
                               // Short, but not between the quarters beside north.
                               Row{358, 100, 100, {324, 290, 256, 222, 188}}, Row{10, 16, -1, {12}}}) {
            Station s;
            s.antenna(0)->setTarget(row.target);
            s.antenna(0)->setRotating(row.target >= 0.0);
            s.map.setAnimationTicks(3.0);
            s.map.startAnimation(s.antenna(0), row.from, row.to);
            QList<double> drawn;
            while (s.map.isAnimating() && drawn.size() < 5) {
                QMetaObject::invokeMethod(&s.map, "animate");
                drawn << s.antenna(0)->rotation();
            }
            QCOMPARE(drawn, row.drawn);
        }
    }

    void labelsAndMarkersAreAtTheirAzimuths()
    {
        const AzimuthalGeometry::Compass compass{{336.0, 240.0}, 200.0};
        const auto isAt = [&compass](const QPointF &point, double azimuth) {
            const double painterAngle = QLineF(compass.centre, point).angle();
            return std::abs(std::remainder(90.0 - painterAngle - azimuth, 360.0)) < 1.0;
        };
        const auto labels = AzimuthalGeometry::compassLabels(compass, 1.0);
        QCOMPARE(labels.size(), std::size_t(12));
        for (const AzimuthalGeometry::CompassLabel &label : labels) {
            const double azimuth = label.text.toDouble();
            QVERIFY2(isAt(label.anchor, azimuth), qPrintable(label.text));
            QVERIFY2(isAt(fixedMarkerCentre(compass, 1.0, azimuth, 2), azimuth), qPrintable(label.text));
        }
    }

    void theArrowPointsAlongItsAzimuth()
    {
        Station s;
        s.antenna(0)->setAngle(0.0);
        s.antenna(0)->setRotation(90.0); // drawn only while it turns
        for (bool rotating : {false, true}) {
            s.antenna(0)->setRotating(rotating);
            const QImage picture = s.picture();
            const auto isBlue = [&](int x, int y) { return picture.pixelColor(x, y).saturation() > 200; };
            QCOMPARE(isBlue(336, 180), !rotating); // north of the centre
            QCOMPARE(isBlue(396, 240), rotating);  // east of it
        }
    }

    /// The picture is kept between paints, so each thing that it shows must replace it.
    void everyChangeShows()
    {
        Station s;
        const std::vector<std::function<void()>> changes{
            [&] { s.antenna(0)->setReadingKnown(false); },
            [&] { s.antenna(0)->setAngle(200.0); }, // current
            [&] { s.antenna(1)->setAngle(200.0); }, // on a rotor
            [&] { s.antenna(2)->setAngle(200.0); }, // fixed
            [&] { s.antenna(1)->setTarget(100.0); },
            [&] { s.antenna(0)->setRotating(true); }, // at another azimuth
            [&] { s.antenna(2)->setColor(Qt::red); },
            [&] { s.antenna(2)->setColor(Qt::green); },
            [&] { s.antenna(3)->setEnabled(false); },
            [&] { s.antenna(1)->setStatus(ScriptedController::status(1)); },
            [&] { s.display(1)->setValue(88, true); },
            [&] { s.display(1)->setEditing(true); },
            [&] { s.display(1)->setHighlighted(true); },
            [&] { s.display(1)->setEnabled(false); },
            [&] { s.antenna(1)->setRotorId(-1); },
            [&] { s.map.setCurrentAntenna(s.antenna(2)); },
            [&] { s.antenna(2)->setRotating(true); }, // turns its arrow, not its marker
            [&] { s.antenna(2)->setAngle(100.0); },   // the marker alone
            [&] { s.map.setCurrentAntenna(nullptr); },
            [&] { s.map.hideDisplays(); }};
        QImage before = s.picture();
        for (std::size_t i = 0; i < changes.size(); ++i) {
            changes[i]();
            const QImage after = s.picture();
            QVERIFY2(after != before, qPrintable(QString::number(i)));
            before = after;
        }
    }

    void theMapImageKeepsItsAspectAndSurvivesEverySize()
    {
        Station s;
        s.map.setZoom(0.5);
        s.picture();
        QImage image(800, 400, QImage::Format_RGB32);
        image.fill(Qt::red);
        QPainter(&image).fillRect(0, 0, 800, 200, Qt::green);
        image.save(mapPath());
        s.map.reloadMap();
        for (int up : {1, -1}) { // a negative zoom turns it over
            s.map.setZoom(up * 0.5);
            const QImage picture = s.picture();
            const auto isGreen = [&](int x, int y) { return picture.pixelColor(x, y) == QColor(Qt::green); };
            QVERIFY(isGreen(432, 240 - 45 * up) && !isGreen(432, 240 + 45 * up));
            QVERIFY(!isGreen(440, 240 - 45 * up) && !isGreen(432, 240 - 55 * up));
        }
        s.map.setZoom(1e9);
        for (int side : {0, 1, 79, 80, 81, 400}) {
            s.map.resize(side, side);
            s.picture();
        }
    }
};

QTEST_MAIN(TestAzimuthalMap)
#include "tst_azimuthalmap.moc"
