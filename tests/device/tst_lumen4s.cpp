// SPDX-License-Identifier: MIT
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

    void thePanelGrowsToItsSmallestSizeAndFillsIt()
    {
        QCOMPARE(m_panel->size(), QSize(418, 100));
        QCOMPARE(button(3)->geometry(), QRect(272, 30, 60, 58));
        QCOMPARE(m_panel->txButtons().at(3)->geometry(), QRect(304, 35, 24, 20));
        QVERIFY(m_panel->powerIndicator()->isVisible() && !m_panel->sendIndicator()->isVisible());
    }

    void eachCaptionGrowsWithItsButtonAndGivesWayToItsOwnName()
    {
        for (int i = 0; i < 4; ++i)
            m_device->antenna(i)->setName(i == 3 ? "Beverage/Nordnordost" : "20m");
        const auto captionSize = [this](int index, const QSize &size) {
            m_panel->resize(size);
            m_panel->relayout();
            return button(index)->font().pixelSize();
        };
        QVERIFY(captionSize(3, {418, 100}) < 11);
        button(3)->setToolTip("RX4");
        QCOMPARE(button(3)->toolTip(), QString("Beverage/Nordnordost\nRX4"));
        QCOMPARE(button(0)->font().pixelSize(), 11);
        QCOMPARE(captionSize(3, {1254, 300}), 22);
        QCOMPARE(button(3)->toolTip(), QString("RX4"));

        m_panel->hide();
        m_panel->resize(418, 100);
        m_panel->show();
        QCOMPARE(button(3)->toolTip(), QString("Beverage/Nordnordost\nRX4"));
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
