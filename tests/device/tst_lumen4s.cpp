#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "settings/settings.h"
#include "simbox/ptyline.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QImage>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Switch : CDeviceLumen4S
{
    Switch() : CDeviceLumen4S(CSettings()) {}
    CDeviceStatus getStatus() override
    {
        ++reads;
        return CDeviceLumen4S::getStatus();
    }
    int reads = 0;
};

/// The stack switch with its panel on the screen; no line.
struct Console
{
    explicit Console(const QSize &size = {418, 100})
    {
        panel.resize(size);
        panel.show();
        device.setRemoteControlWidget(&panel);
    }

    CVextralRemoteControlWidget panel;
    Switch device;
};

} // namespace

class TestLumen4S : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void thePanelIsLaidOutByTheNumbers_data();
    void thePanelIsLaidOutByTheNumbers();
    void tooSmallSizesAreSurvived();
    void namesAreShownAsTyped_data();
    void namesAreShownAsTyped();
    void captionsGrowWithThePanelAndGiveWayToLongNames();
    void antennasAreCombinedByClicksAlsoUnderTheTitle();
    void thePanelHasItsColours();
    void aToggleIsFollowedByTwoReads_data();
    void aToggleIsFollowedByTwoReads();
    void aToggleThatWasNotSentIsFollowedByNone();
};

void TestLumen4S::thePanelIsLaidOutByTheNumbers_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("step");
    QTest::addColumn<QList<int>>("antennas");
    QTest::addColumn<QList<int>>("transmit");
    QTest::addColumn<int>("powerTop");
    QTest::newRow("418 x 100") << QSize(418, 100) << 60 << QList<int>{92, 152, 212, 272}
                               << QList<int>{124, 184, 244, 304} << 43;
    QTest::newRow("421 x 115") << QSize(421, 115) << 61 << QList<int>{92, 153, 214, 275}
                               << QList<int>{125, 186, 247, 308} << 50;
    QTest::newRow("1254 x 300") << QSize(1254, 300) << 269 << QList<int>{92, 361, 630, 899}
                                << QList<int>{333, 602, 871, 1140} << 143;
}

void TestLumen4S::thePanelIsLaidOutByTheNumbers()
{
    QFETCH(QSize, size);
    QFETCH(int, step);
    QFETCH(QList<int>, antennas);
    QFETCH(QList<int>, transmit);
    QFETCH(int, powerTop);
    const Console console(size);
    const CVextralRemoteControlWidget &panel = console.panel;
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(panel.antennaButtons().at(i)->geometry(),
                 QRect(antennas.at(i), 30, step, size.height() - 42));
        QCOMPARE(panel.txButtons().at(i)->geometry(), QRect(transmit.at(i), 35, 24, 20));
    }
    QCOMPARE(panel.powerIndicator()->geometry(), QRect(20, powerTop, 45, 15));
    QVERIFY(panel.sendIndicator()->isHidden());
    QCOMPARE(panel.logoLabel()->geometry(), QRect(10, 4, 80, 36));
    QCOMPARE(panel.largeInfoLabel()->geometry(), QRect(size.width() - 85, 5, 100, 20));
    QCOMPARE(panel.smallInfoLabel()->geometry(), QRect(size.width() - 85, 24, 100, 14));
    QCOMPARE(panel.smallInfoLabel()->text(), QStringLiteral("Remote Control"));
    QCOMPARE(panel.titleLabel()->geometry(), QRect(10, 1, size.width() - 20, 30));
    QCOMPARE(panel.titleLabel()->text(), QStringLiteral("Lumen3-S"));
}

void TestLumen4S::tooSmallSizesAreSurvived()
{
    Switch withoutPanel;
    withoutPanel.relayoutPanel(418, 100);
    Console console({300, 60}); // grows under its first layout
    QCOMPARE(console.panel.size(), QSize(418, 100));
    QCOMPARE(console.panel.antennaButtons().at(3)->geometry(), QRect(272, 30, 60, 58));
    for (int width : {-1, 0, 21, 176, 177})
        console.device.relayoutPanel(width, 41);
    console.panel.relayout();
    QCOMPARE(console.panel.antennaButtons().at(3)->geometry(), QRect(272, 30, 60, 58));
}

void TestLumen4S::namesAreShownAsTyped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("two lines") << "North/East"
                               << "North\nEast";
    QTest::newRow("no mnemonic") << "A&B"
                                 << "A&&B";
    QTest::newRow("both") << "&/Co/&&"
                          << "&&\nCo\n&&&&";
}

void TestLumen4S::namesAreShownAsTyped()
{
    QFETCH(QString, name);
    Console console;
    console.device.antenna(2)->setName(name);
    console.panel.relayout();
    QTEST(console.panel.antennaButtons().at(2)->text(), "text");
    QCOMPARE(console.device.antenna(2)->name(), name);
}

void TestLumen4S::captionsGrowWithThePanelAndGiveWayToLongNames()
{
    Console console;
    for (int i = 0; i < 4; ++i)
        console.device.antenna(i)->setName(QStringLiteral("20m"));
    const auto captionSize = [&console](const QSize &size) {
        console.panel.resize(size);
        console.panel.relayout();
        return console.panel.antennaButtons().first()->font().pixelSize();
    };
    QCOMPARE(captionSize({418, 100}), 11);
    QVERIFY(captionSize({1254, 300}) > 11);
    console.device.antenna(3)->setName(QStringLiteral("Beverage North East"));
    QVERIFY(captionSize({418, 100}) < 11);
}

void TestLumen4S::antennasAreCombinedByClicksAlsoUnderTheTitle()
{
    Console console;
    for (int x : {100, 280}) // the top row of antenna 1 and antenna 4
        QTest::mouseClick(console.panel.windowHandle(), Qt::LeftButton, {}, {x, 30});
    QVERIFY(console.panel.antennaButtons().at(0)->isChecked());
    QVERIFY(console.panel.antennaButtons().at(3)->isChecked());
}

void TestLumen4S::thePanelHasItsColours()
{
    Console console;
    const QImage picture = console.panel.grab().toImage();
    QCOMPARE(picture.pixelColor(0, 0), QColor(25, 25, 25));
    const QColor face = picture.pixelColor(75, 60);
    QVERIFY(face.red() == face.blue() && face.red() > 40 && face.red() < 70);
    const QColor display = picture.pixelColor(120, 15);
    QVERIFY(display.red() == 0 && display.green() == 0 && display.blue() >= 13 && display.blue() <= 27);
}

void TestLumen4S::aToggleIsFollowedByTwoReads_data()
{
    QTest::addColumn<bool>("receive");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("heard");
    QTest::newRow("receive port 2") << true << 1 << QByteArray("K2\r\nK0\r\nK0\r\n");
    QTest::newRow("transmit line 3") << false << 2 << QByteArray("K7\r\nK0\r\nK0\r\n");
}

void TestLumen4S::aToggleIsFollowedByTwoReads()
{
    QFETCH(bool, receive);
    QFETCH(int, index);
    const QTemporaryDir folder;
    PtyLine line(folder.filePath(QStringLiteral("box")));
    QVERIFY2(line.start(), qUtf8Printable(line.errorText()));
    Console console;
    QVERIFY(console.device.open(line.linkPath()));
    console.device.stopMonitoring(); // the box is to hear the operator alone
    line.clearReceived();
    if (receive)
        console.panel.antennaButtons().at(index)->click();
    else
        console.panel.txButtons().at(index)->click();
    QVERIFY(line.waitForReceived(3));
    QTEST(line.receivedBytes(), "heard");
}

void TestLumen4S::aToggleThatWasNotSentIsFollowedByNone()
{
    Switch device; // no port
    QVERIFY(!device.toggleRX(0));
    QVERIFY(!device.toggleTX(0));
    QCOMPARE(device.reads, 0);
}

QTEST_MAIN(TestLumen4S)
#include "tst_lumen4s.moc"
