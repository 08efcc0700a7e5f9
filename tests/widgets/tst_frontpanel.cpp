// SPDX-License-Identifier: MIT
#include "support/scriptedcontroller.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using Panel = CVextralRemoteControlWidget;

namespace {

/// A box without a line, with little or with everything that an operator may press or see lit.
struct Model : ScriptedController
{
    int antennaCount() override { return hasEverything ? 6 : 4; }
    int txButtonCount() override { return antennaCount(); }
    int radioCount() override { return hasEverything ? 3 : 0; }
    bool hasSendAndPower() override { return hasEverything; }
    bool hasSplit() override { return hasEverything; }
    bool hasTitleLabel() override { return hasEverything; }
    bool hasOwnPanel() override { return ownPanel; }

    bool hasEverything = true;
    bool ownPanel = false;
};

} // namespace

class TestFrontPanel : public QObject
{
    Q_OBJECT

private slots:
    void aModelGetsItsElementsInTheirPlaces()
    {
        for (bool everything : {false, true}) {
            Model model;
            model.hasEverything = everything;
            Panel panel;
            panel.resize(1254, 300);
            panel.show();
            model.setRemoteControlWidget(&panel);
            const QList<QPushButton *> buttons = panel.findChildren<QPushButton *>();
            QCOMPARE(buttons.size(), everything ? 6 + 6 + 3 + 3 : 4 + 4);
            for (const QPushButton *button : buttons)
                QVERIFY2(button->isVisible() && !button->accessibleName().isEmpty(),
                         qUtf8Printable(button->text()));
            const PanelGeometry places = PanelGeometry::inRows(panel.size(), panel.traits());
            QCOMPARE(panel.antennaButtons().at(3)->geometry(), places.antennas.at(3));
            QCOMPARE(panel.txButtons().at(3)->geometry(), places.transmitLines.at(3));
            if (everything)
                QCOMPARE(panel.radioButtons().at(2)->geometry(), places.radios.at(2));
        }
    }

    void onlyTheBoxSwitchesAnAntennaOff()
    {
        for (bool exclusive : {true, false}) {
            Model model;
            model.ownPanel = true;
            Panel panel;
            panel.bindController(&model);
            panel.setExclusiveAntennas(exclusive);
            QSignalSpy changes(&panel, &Panel::onAtennaButtonChange);
            const QList<CAntennaButton *> buttons = panel.antennaButtons();
            buttons[0]->setChecked(true); // as a poll does: silent
            buttons[2]->click();
            buttons[2]->click();
            QCOMPARE(changes, (QList<QVariantList>{{2, true}, {2, true}}));
            QCOMPARE(buttons[0]->isChecked(), !exclusive);
        }
    }

    void transmitLinesToggleAndRadiosAreAGroup()
    {
        Model model;
        Panel panel;
        model.setRemoteControlWidget(&panel);
        panel.txButtons().at(2)->click();
        const QList<CAntennaButton *> radios = panel.radioButtons();
        for (int clicked : {1, 2, 2}) {
            radios[clicked]->click();
            for (int i = 0; i < 3; ++i)
                QCOMPARE(radios[i]->isChecked(), i == clicked);
        }
        QCOMPARE(model.sent, (QStringList{"TX2", "radio1", "radio2", "radio2"}));
    }

    void indicatorsTakeNoMouseAndStillExplainThemselves()
    {
        Model model;
        Panel panel;
        panel.resize(418, 100);
        panel.show();
        model.setRemoteControlWidget(&panel);
        CLedButton *power = panel.powerIndicator();
        const QPoint onPower = power->geometry().center();
        QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, {}, onPower);
        QVERIFY(!power->isChecked());

        power->setToolTip("COM7 does not answer.");
        QHelpEvent overPower(QEvent::ToolTip, onPower, panel.mapToGlobal(onPower));
        QCoreApplication::sendEvent(&panel, &overPower);
        QCOMPARE(QToolTip::text(), power->toolTip());
    }
};

QTEST_MAIN(TestFrontPanel)
#include "tst_frontpanel.moc"
