#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QTest>

/// The stack switch with its panel on the screen; no line.
class TestLumen4S : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }

    void init()
    {
        m_panel = std::make_unique<CVextralRemoteControlWidget>();
        m_panel->resize(300, 60); // grows under its first layout
        m_panel->show();
        m_device = std::make_unique<CDeviceLumen4S>(CSettings());
        m_device->setRemoteControlWidget(m_panel.get());
    }

    void thePanelIsLaidOutByTheNumbersFromItsSmallestSizeOn()
    {
        QCOMPARE(m_panel->size(), QSize(418, 100));
        QCOMPARE(button(3)->geometry(), QRect(272, 30, 60, 58));
        QCOMPARE(m_panel->txButtons().at(3)->geometry(), QRect(304, 35, 24, 20));
        m_panel->resize(1254, 300);
        QCOMPARE(button(3)->geometry(), QRect(899, 30, 269, 258));
        QCOMPARE(m_panel->txButtons().at(3)->geometry(), QRect(1140, 35, 24, 20));
        for (int width : {-1, 0, 21, 176, 177})
            m_device->relayoutPanel(width, 41);
    }

    void namesAreShownAsTyped()
    {
        m_device->antenna(2)->setName("&/North/A&B");
        m_panel->relayout();
        QCOMPARE(button(2)->text(), QString("&&\nNorth\nA&&B"));
    }

    void captionsGrowWithThePanelAndGiveWayToLongNames()
    {
        for (int i = 0; i < 4; ++i)
            m_device->antenna(i)->setName("20m");
        const auto captionSize = [this](const QSize &size) {
            m_panel->resize(size);
            m_panel->relayout();
            return button(0)->font().pixelSize();
        };
        QCOMPARE(captionSize({418, 100}), 11);
        QVERIFY(captionSize({1254, 300}) > 11);
        m_device->antenna(3)->setName("Beverage North East");
        QVERIFY(captionSize({418, 100}) < 11);
    }

    void antennasAreCombinedByClicksAlsoUnderTheTitle()
    {
        for (int x : {100, 280}) // the top row of antenna 1 and antenna 4
            QTest::mouseClick(m_panel->windowHandle(), Qt::LeftButton, {}, {x, 30});
        QVERIFY(button(0)->isChecked() && button(3)->isChecked());
    }

private:
    CAntennaButton *button(int index) const { return m_panel->antennaButtons().at(index); }

    std::unique_ptr<CVextralRemoteControlWidget> m_panel;
    std::unique_ptr<CDeviceLumen4S> m_device;
};

QTEST_MAIN(TestLumen4S)
#include "tst_lumen4s.moc"
