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

struct Shape
{
    int antennas = 4;
    int transmit = 4;
    int radios = 0;
    bool everythingElse = false;
    bool ownPanel = false;
};

/// A box of any shape, without a line.
struct Model : ScriptedController
{
    explicit Model(const Shape &boxShape) : shape(boxShape) {}
    int antennaCount() override { return shape.antennas; }
    int txButtonCount() override { return shape.transmit; }
    int radioCount() override { return shape.radios; }
    bool hasSendAndPower() override { return shape.everythingElse; }
    bool hasSplit() override { return shape.everythingElse; }
    bool hasLogo() override { return shape.everythingElse; }
    bool hasInfoLabels() override { return shape.everythingElse; }
    bool hasTitleLabel() override { return shape.everythingElse; }
    bool hasOwnPanel() override { return shape.ownPanel; }
    void relayoutPanel(int width, int height) override { sizes << QSize(width, height); }

    Shape shape;
    QList<QSize> sizes;
};

} // namespace

class TestFrontPanel : public QObject
{
    Q_OBJECT

private slots:
    void aModelGetsATidyPanelOfItsElements()
    {
        for (const Shape &shape : {Shape{1, 0, 0, false}, Shape{4, 4, 0, false}, Shape{6, 6, 3, true}}) {
            Model model(shape);
            Panel panel;
            panel.show();
            model.setRemoteControlWidget(&panel);
            QCOMPARE(panel.antennaButtons().size(), shape.antennas);
            QCOMPARE(panel.txButtons().size(), shape.transmit);
            QCOMPARE(panel.radioButtons().size(), shape.radios);
            QCOMPARE(panel.powerIndicator() && panel.splitIndicator(), shape.everythingElse);
            const QList<QPushButton *> buttons = panel.findChildren<QPushButton *>();
            for (const QSize &size : {QSize(418, 100), QSize(1254, 300)}) {
                panel.resize(size);
                for (const QPushButton *button : buttons) {
                    const QByteArray name = button->accessibleName().toUtf8();
                    QVERIFY2(!name.isEmpty(), qUtf8Printable(button->text()));
                    QVERIFY2(button->isVisible() && button->height() >= 15, name);
                    QVERIFY2(panel.rect().contains(button->geometry()), name);
                    for (const QPushButton *other : buttons)
                        QVERIFY2(button == other || !button->geometry().intersects(other->geometry()), name);
                }
            }
        }
    }

    void aModelWithItsOwnPanelIsGivenEverySize()
    {
        Panel panel;
        panel.show();
        panel.resize(500, 120); // nobody to ask yet
        Model model({4, 4, 0, false, true});
        model.setRemoteControlWidget(&panel);
        panel.resize(600, 150);
        QCOMPARE(model.sizes, (QList<QSize>{{500, 120}, {600, 150}}));
    }

    void antennaClicksAreReported()
    {
        struct Case
        {
            bool ownPanel, exclusive, secondClickSwitchesOff, otherStaysOn;
        };
        for (const Case &c : {Case{false, true, true, true}, Case{true, true, false, false},
                              Case{true, false, false, true}}) {
            Model model({4, 4, 0, false, c.ownPanel});
            Panel panel;
            panel.bindController(&model);
            panel.setExclusiveAntennas(c.exclusive); // heeded only where the model lays the panel out
            QSignalSpy changes(&panel, &Panel::onAtennaButtonChange);
            const QList<CAntennaButton *> buttons = panel.antennaButtons();
            buttons[0]->setChecked(true); // as a poll does: silent
            buttons[2]->click();
            buttons[2]->click();
            QCOMPARE(changes, (QList<QVariantList>{{2, true}, {2, !c.secondClickSwitchesOff}}));
            QCOMPARE(buttons[0]->isChecked(), c.otherStaysOn);
        }
    }

    void transmitAndRadioButtonsReportTheirPlace()
    {
        Model model({4, 4, 3});
        Panel panel;
        panel.bindController(&model);
        QSignalSpy transmits(&panel, &Panel::onAtennaTXButtonChange);
        QSignalSpy radios(&panel, &Panel::onRadioButtonChange);
        panel.txButtons().at(2)->click();
        QMetaObject::invokeMethod(&panel, "onAntennaTXButtonPressed", Q_ARG(bool, true)); // by nobody's click
        QCOMPARE(transmits, (QList<QVariantList>{{2}}));
        panel.radioButtons().at(1)->click();
        panel.radioButtons().at(1)->setChecked(false);
        QCOMPARE(radios, (QList<QVariantList>{{1, true}, {1, false}}));
    }

    void indicatorsTakeNoMouseAndStillExplainThemselves()
    {
        Model model({4, 4, 0, true});
        Panel panel;
        panel.resize(418, 100);
        panel.show();
        model.setRemoteControlWidget(&panel);
        CLedButton *power = panel.powerIndicator();
        const QPoint onPower = power->geometry().center();
        QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, {}, onPower);
        QVERIFY(!power->isChecked());

        power->setToolTip(QStringLiteral("COM7 does not answer."));
        QHelpEvent overPower(QEvent::ToolTip, onPower, panel.mapToGlobal(onPower));
        QCoreApplication::sendEvent(&panel, &overPower);
        QCOMPARE(QToolTip::text(), power->toolTip());
        QToolTip::hideText();
    }
};

QTEST_MAIN(TestFrontPanel)
#include "tst_frontpanel.moc"
