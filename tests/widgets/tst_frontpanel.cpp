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

/// A box without a line, with radios and lamps.
struct Model : ScriptedController
{
    Model() { radios = 3; }
    bool hasSendAndPower() override { return true; }
    bool hasOwnPanel() override { return ownPanel; }

    bool ownPanel = false;
};

} // namespace

class TestFrontPanel : public QObject
{
    Q_OBJECT

private slots:
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

    void eachButtonHasANameAndAPlaceOfItsOwn()
    {
        Model model;
        Panel panel;
        panel.resize(418, 100);
        model.setRemoteControlWidget(&panel);
        QRegion taken;
        for (const QPushButton *button : panel.findChildren<QPushButton *>()) {
            QVERIFY2(!button->accessibleName().isEmpty(), qUtf8Printable(button->text()));
            QVERIFY(panel.rect().contains(button->geometry()) && button->height() >= 15);
            QVERIFY2(!taken.intersects(button->geometry()), qUtf8Printable(button->accessibleName()));
            taken += button->geometry();
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
