#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QHelpEvent>
#include <QLabel>
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
struct Model : CVextralRemoteControl
{
    explicit Model(const Shape &boxShape) : CVextralRemoteControl(&settings()), shape(boxShape) {}

    static const CSettings &settings()
    {
        static const CSettings record;
        return record;
    }

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

Q_DECLARE_METATYPE(Shape)

class TestFrontPanel : public QObject
{
    Q_OBJECT

private slots:
    void aModelGetsATidyPanelOfItsElements_data();
    void aModelGetsATidyPanelOfItsElements();
    void aModelWithItsOwnPanelIsGivenEverySize();
    void antennaClicksAreReported_data();
    void antennaClicksAreReported();
    void transmitAndRadioButtonsReportTheirPlace();
    void indicatorsTakeNoMouseAndStillExplainThemselves();
    void aLiveDisplayThatIsGoneIsForgotten();
};

void TestFrontPanel::aModelGetsATidyPanelOfItsElements_data()
{
    QTest::addColumn<Shape>("shape");
    QTest::addColumn<QSize>("size");
    for (const QSize &size : {QSize(418, 100), QSize(1254, 300)}) {
        QTest::addRow("one antenna, %d wide", size.width()) << Shape{1, 0, 0, false} << size;
        QTest::addRow("four and four, %d wide", size.width()) << Shape{4, 4, 0, false} << size;
        QTest::addRow("everything, %d wide", size.width()) << Shape{6, 6, 3, true} << size;
    }
}

void TestFrontPanel::aModelGetsATidyPanelOfItsElements()
{
    QFETCH(Shape, shape);
    QFETCH(QSize, size);
    Model model(shape);
    Panel panel;
    panel.resize(size);
    panel.show();
    model.setRemoteControlWidget(&panel);

    QCOMPARE(panel.antennaButtons().size(), shape.antennas);
    QCOMPARE(panel.antennaButtons().last()->text(), QStringLiteral("Ant %1").arg(shape.antennas));
    QCOMPARE(panel.txButtons().size(), shape.transmit);
    QCOMPARE(panel.radioButtons().size(), shape.radios);
    const QList<QWidget *> others{panel.sendIndicator(), panel.powerIndicator(), panel.splitIndicator(),
                                  panel.logoLabel(),     panel.largeInfoLabel(), panel.smallInfoLabel(),
                                  panel.titleLabel()};
    QCOMPARE(others.count(nullptr), shape.everythingElse ? 0 : others.size());

    const QList<QPushButton *> buttons = panel.findChildren<QPushButton *>();
    for (const QPushButton *button : buttons) {
        const QByteArray name = button->accessibleName().toUtf8();
        QVERIFY2(!name.isEmpty(), qUtf8Printable(button->text()));
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
        QVERIFY2(button->isVisible() && button->height() >= 15, name);
        QVERIFY2(panel.rect().contains(button->geometry()), name);
        for (const QPushButton *other : buttons)
            QVERIFY2(button == other || !button->geometry().intersects(other->geometry()), name);
    }
    for (int i = 0; i < shape.transmit; ++i) {
        const QRect antenna = panel.antennaButtons().at(i)->geometry();
        const QRect line = panel.txButtons().at(i)->geometry();
        QVERIFY(line.top() > antenna.bottom() && line.left() >= antenna.left()
                && line.right() <= antenna.right());
    }
}

void TestFrontPanel::aModelWithItsOwnPanelIsGivenEverySize()
{
    Panel panel;
    panel.show();
    panel.resize(500, 120); // nobody to ask yet
    Model model({4, 4, 0, false, true});
    model.setRemoteControlWidget(&panel);
    panel.resize(600, 150);
    QCOMPARE(model.sizes, (QList<QSize>{{500, 120}, {600, 150}}));
}

void TestFrontPanel::antennaClicksAreReported_data()
{
    QTest::addColumn<bool>("ownPanel");
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<bool>("secondClickSwitchesOff");
    QTest::addColumn<bool>("otherStaysOn");
    QTest::newRow("panel's own layout: free toggles") << false << true << true << true;
    QTest::newRow("model's layout, exclusive") << true << true << false << false;
    QTest::newRow("model's layout, combined") << true << false << false << true;
}

void TestFrontPanel::antennaClicksAreReported()
{
    QFETCH(bool, ownPanel);
    QFETCH(bool, exclusive);
    QFETCH(bool, secondClickSwitchesOff);
    QFETCH(bool, otherStaysOn);
    Model model({4, 4, 0, false, ownPanel});
    Panel panel;
    panel.bindController(&model);
    panel.setExclusiveAntennas(exclusive);
    QSignalSpy changes(&panel, &Panel::onAtennaButtonChange);
    const QList<CAntennaButton *> buttons = panel.antennaButtons();
    buttons[0]->setChecked(true); // as a poll does: silent
    buttons[2]->click();
    buttons[2]->click();
    QCOMPARE(changes, (QList<QVariantList>{{2, true}, {2, !secondClickSwitchesOff}}));
    QCOMPARE(buttons[2]->isChecked(), !secondClickSwitchesOff);
    QCOMPARE(buttons[0]->isChecked(), otherStaysOn);
}

void TestFrontPanel::transmitAndRadioButtonsReportTheirPlace()
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

void TestFrontPanel::indicatorsTakeNoMouseAndStillExplainThemselves()
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

void TestFrontPanel::aLiveDisplayThatIsGoneIsForgotten()
{
    Panel panel;
    QVERIFY(panel.digitalDisplay()->isHidden());
    auto *other = new CRotationDigitalDisplayWidget;
    panel.setDigitalDisplay(other);
    QCOMPARE(panel.digitalDisplay(), other);
    delete other;
    QVERIFY(!panel.digitalDisplay());
}

QTEST_MAIN(TestFrontPanel)
#include "tst_frontpanel.moc"
