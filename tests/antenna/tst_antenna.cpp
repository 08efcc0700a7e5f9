// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "support/scriptedcontroller.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QtTest>

namespace {

/// Colours of the left and the right half of a picture, black where nothing is painted.
QStringList halves(QSvgRenderer *picture)
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    picture->render(&painter, QRectF(image.rect()));
    painter.end();
    return {image.pixelColor(5, 5).name(), image.pixelColor(15, 5).name()};
}

} // namespace

class TestAntenna : public QObject
{
    Q_OBJECT

private slots:
    void drawnDirectionIsFoldedOnce()
    {
        const QMap<double, double> drawn{{359.9, 359.9}, {360, 0}, {-10, 350}, {725, 365}, {-400, -40}};
        CVextralAntenna antenna(":plain.svg", 0);
        for (auto row = drawn.begin(); row != drawn.end(); ++row) {
            antenna.setRotation(row.key());
            QCOMPARE(antenna.rotation(), row.value());
        }
    }

    void rotorIsUsableOnlyWhereTheBoxHasIt()
    {
        struct Case
        {
            int rotors, rotorId;
            bool connected, selected;
        };
        CDeviceStatus status;
        status.rotorSelected[1] = true;
        for (const Case &c : {Case{1, 0, true, false}, Case{1, 1, false, false}, Case{2, 1, true, true},
                              Case{5, 4, true, false}}) {
            ScriptedController box(c.rotors);
            CVextralAntenna antenna(":plain.svg", 0);
            antenna.setRotorId(c.rotorId);
            QVERIFY(!antenna.isRotorConnected());
            antenna.setController(&box);
            QCOMPARE(antenna.isRotorConnected(), c.connected);
            for (bool valid : {false, true}) { // an invalid status tells nothing
                status.valid = valid;
                antenna.setStatus(status);
                QCOMPARE(antenna.rotorStatusFlag(), valid && c.selected);
            }
        }
    }

    void whitePartsTakeTheColourAgainAndAgain()
    {
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
        CVextralAntenna missing(":no.svg", 0);
        missing.setSvgResources(":neither.svg", "");
        for (QSvgRenderer *part : {missing.bodyRenderer(), missing.secondRenderer(), missing.thirdRenderer()})
            QCOMPARE(halves(part), (QStringList{"#000000", "#000000"}));
    }
};

QTEST_MAIN(TestAntenna)
#include "tst_antenna.moc"
