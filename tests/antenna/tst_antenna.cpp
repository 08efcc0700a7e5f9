#include "antenna/vextralantenna.h"
#include "support/scriptedcontroller.h"

#include <QImage>
#include <QPainter>
#include <QResource>
#include <QSvgRenderer>
#include <QtTest>

namespace {

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
    void drawnDirectionIsFoldedOnce()
    {
        const QMap<double, double> drawn{{359.9, 359.9}, {360, 0}, {-10, 350}, {725, 365}, {-400, -40}};
        CVextralAntenna antenna(QStringLiteral(":plain.svg"), 0);
        for (auto row = drawn.begin(); row != drawn.end(); ++row) {
            antenna.setRotation(row.key());
            QCOMPARE(antenna.rotation(), row.value());
        }
    }

    void targetsComeAndGo()
    {
        CVextralAntenna antenna(QStringLiteral(":plain.svg"), 0);
        antenna.setTarget(180.0);
        QVERIFY(antenna.hasPendingTarget());
        antenna.setAngle(180.0);
        QVERIFY(!antenna.hasPendingTarget());
        antenna.clearTarget();
        QCOMPARE(antenna.target(), -1.0);
        QCOMPARE(antenna.previousTarget(), 180.0);
        QVERIFY(antenna.hasPendingTarget());
    }

    void rotorIsUsableOnlyWhereTheBoxHasIt_data()
    {
        QTest::addColumn<int>("rotors");
        QTest::addColumn<int>("rotorId");
        QTest::addColumn<bool>("connected");
        QTest::addColumn<bool>("selected");
        // The box of the last status had rotor 1 selected.
        QTest::newRow("no box") << -1 << 0 << false << false;
        QTest::newRow("one rotor, antenna on it") << 1 << 0 << true << false;
        QTest::newRow("one rotor, antenna on the second") << 1 << 1 << false << false;
        QTest::newRow("two rotors, antenna on the second") << 2 << 1 << true << true;
        QTest::newRow("five rotors, antenna on the fifth") << 5 << 4 << true << false;
    }
    void rotorIsUsableOnlyWhereTheBoxHasIt()
    {
        QFETCH(int, rotors);
        QFETCH(int, rotorId);
        ScriptedController box(rotors);
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

    void whitePartsTakeTheColourAgainAndAgain()
    {
        QVERIFY(QResource(":packed.svg").compressionAlgorithm() != QResource::NoCompression);
        for (const QString path : {":plain.svg", ":packed.svg"}) {
            CVextralAntenna antenna(path, 0);
            antenna.setSvgResources(path, path);
            for (const QColor color : {Qt::red, Qt::green}) {
                antenna.setColor(color);
                for (QSvgRenderer *part :
                     {antenna.bodyRenderer(), antenna.secondRenderer(), antenna.thirdRenderer()})
                    QCOMPARE(halves(part), (QStringList{color.name(), "#ffffff"}));
            }
            QCOMPARE(halves(antenna.arrowRenderer()), (QStringList{"#ffffff", "#ffffff"}));
        }
    }

    void missingPicturesDrawNothing()
    {
        CVextralAntenna antenna(QStringLiteral(":no.svg"), 0);
        antenna.setSvgResources(QStringLiteral(":neither.svg"), QString());
        antenna.setColor(Qt::red);
        for (QSvgRenderer *part : {antenna.bodyRenderer(), antenna.secondRenderer(), antenna.thirdRenderer()})
            QCOMPARE(halves(part), (QStringList{"none", "none"}));
    }
};

QTEST_MAIN(TestAntenna)
#include "tst_antenna.moc"
