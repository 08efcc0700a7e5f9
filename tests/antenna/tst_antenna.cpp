#include "antenna/vextralantenna.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"

#include <QImage>
#include <QPainter>
#include <QResource>
#include <QSvgRenderer>
#include <QtTest>

namespace {

class BoxWithRotors : public CVextralRemoteControl
{
public:
    explicit BoxWithRotors(int rotors) : CVextralRemoteControl(&defaults()), m_rotors(rotors) {}
    int rotorCount() override { return m_rotors; }

private:
    static const CSettings &defaults()
    {
        static const CSettings settings;
        return settings;
    }

    int m_rotors;
};

/// Colours of the left and the right half of a picture, "none" where nothing is painted.
QStringList halves(QSvgRenderer *picture)
{
    QImage image(20, 10, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture->render(&painter, QRectF(image.rect()));
    painter.end();
    const auto colorAt = [&image](int x) {
        const QColor color = image.pixelColor(x, 5);
        return color.alpha() ? color.name() : QStringLiteral("none");
    };
    return {colorAt(5), colorAt(15)};
}

} // namespace

class TestAntenna : public QObject
{
    Q_OBJECT

private slots:
    void drawnDirectionIsFoldedOnce_data()
    {
        QTest::addColumn<double>("set");
        QTest::addColumn<double>("drawn");
        QTest::newRow("0") << 0.0 << 0.0;
        QTest::newRow("359.9") << 359.9 << 359.9;
        QTest::newRow("360") << 360.0 << 0.0;
        QTest::newRow("-10") << -10.0 << 350.0;
        QTest::newRow("725") << 725.0 << 365.0;
        QTest::newRow("-400") << -400.0 << -40.0;
    }
    void drawnDirectionIsFoldedOnce()
    {
        QFETCH(double, set);
        CVextralAntenna antenna(QStringLiteral(":plain.svg"), 0);
        antenna.setRotation(set);
        QTEST(antenna.rotation(), "drawn");
    }

    void targetsComeAndGo()
    {
        CVextralAntenna antenna(QStringLiteral(":plain.svg"), 0);
        QCOMPARE(antenna.target(), -1.0);
        QVERIFY(antenna.hasPendingTarget());

        antenna.setTarget(180.0);
        QCOMPARE(antenna.previousTarget(), 180.0);
        antenna.setAngle(180.0);
        QVERIFY(!antenna.hasPendingTarget());

        antenna.clearTarget();
        QCOMPARE(antenna.target(), -1.0);
        QCOMPARE(antenna.previousTarget(), 180.0);
        QVERIFY(antenna.hasPendingTarget());
        antenna.setAngle(-1.0);
        QVERIFY(!antenna.hasPendingTarget());
    }

    void rotorIsUsableOnlyWhereTheBoxHasIt_data()
    {
        QTest::addColumn<int>("rotors");
        QTest::addColumn<int>("rotorId");
        QTest::addColumn<bool>("connected");
        QTest::addColumn<bool>("selected");
        // The box of the last status had rotor 1 selected.
        QTest::newRow("no box") << -1 << 0 << false << false;
        QTest::newRow("switch without rotors") << 0 << 0 << false << false;
        QTest::newRow("one rotor, antenna on none") << 1 << -1 << false << false;
        QTest::newRow("one rotor, antenna on it") << 1 << 0 << true << false;
        QTest::newRow("one rotor, antenna on the second") << 1 << 1 << false << false;
        QTest::newRow("two rotors, antenna on the second") << 2 << 1 << true << true;
        QTest::newRow("five rotors, antenna on the fifth") << 5 << 4 << true << false;
    }
    void rotorIsUsableOnlyWhereTheBoxHasIt()
    {
        QFETCH(int, rotors);
        QFETCH(int, rotorId);
        BoxWithRotors box(rotors);
        CVextralAntenna antenna(QStringLiteral(":plain.svg"), 0);
        if (rotors >= 0)
            antenna.setController(&box);
        antenna.setRotorId(rotorId);
        CDeviceStatus status;
        status.rotorSelected[1] = true;
        antenna.setStatus(status);

        QTEST(antenna.isRotorConnected(), "connected");
        QVERIFY2(!antenna.rotorStatusFlag(), "an invalid status tells nothing");
        status.valid = true;
        antenna.setStatus(status);
        QTEST(antenna.rotorStatusFlag(), "selected");
    }

    void whitePartsTakeTheColourAgainAndAgain_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("compressed");
        QTest::newRow("stored as it is") << ":plain.svg" << false;
        QTest::newRow("stored compressed") << ":packed.svg" << true;
    }
    void whitePartsTakeTheColourAgainAndAgain()
    {
        QFETCH(QString, path);
        QTEST(QResource(path).compressionAlgorithm() != QResource::NoCompression, "compressed");

        const QStringList white{"#ffffff", "#ffffff"};
        CVextralAntenna antenna(path, 0);
        QCOMPARE(halves(antenna.bodyRenderer()), white);
        QVERIFY(!antenna.secondRenderer() && !antenna.thirdRenderer());

        const QStringList red{"#ff0000", "#ffffff"};
        antenna.setColor(Qt::red);
        antenna.setSvgResources(path, path);
        QCOMPARE(halves(antenna.bodyRenderer()), red);
        QCOMPARE(halves(antenna.secondRenderer()), red);
        QCOMPARE(halves(antenna.thirdRenderer()), red);

        const QStringList green{"#00ff00", "#ffffff"};
        antenna.setColor(Qt::green);
        QCOMPARE(halves(antenna.bodyRenderer()), green);
        QCOMPARE(halves(antenna.secondRenderer()), green);
        QCOMPARE(halves(antenna.thirdRenderer()), green);
        QCOMPARE(halves(antenna.arrowRenderer()), white);
    }

    void missingPicturesDrawNothing()
    {
        const QStringList nothing{"none", "none"};
        CVextralAntenna antenna(QStringLiteral(":no.svg"), 0);
        antenna.setSvgResources(QStringLiteral(":neither.svg"), QString());
        antenna.setColor(Qt::red);
        QCOMPARE(halves(antenna.bodyRenderer()), nothing);
        QCOMPARE(halves(antenna.secondRenderer()), nothing);
        QCOMPARE(halves(antenna.thirdRenderer()), nothing);
    }
};

QTEST_MAIN(TestAntenna)
#include "tst_antenna.moc"
