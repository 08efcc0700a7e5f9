#include "device/devicelumen4s.h"

#include "antenna/vextralantenna.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QLabel>
#include <QPixmap>

#include <algorithm>

namespace {

constexpr int settlingMs = 33;

constexpr QSize minimumPanelSize(418, 100);
constexpr unsigned firstColumn = 92;
constexpr int besideColumns = 177;
constexpr unsigned columns = 4;
constexpr int antennaTop = 30;
constexpr int besideAntennas = 42;
constexpr int transmitTop = 35;
constexpr QSize transmitSize(24, 20);
/// From its left edge to the column's right one.
constexpr unsigned transmitFromRight = 28;
constexpr int powerLeft = 20;
constexpr QSize powerSize(45, 15);
constexpr QPoint logoCorner(10, 4);
constexpr int infoTop = 5;
constexpr int infoMargin = 85;
constexpr int infoWidth = 100;
constexpr int largeInfoHeight = 20;
constexpr int smallInfoHeight = 14;
constexpr QPoint titleCorner(10, 1);
constexpr int titleHeight = 30;

/// Width of an antenna's column. Below the minimum panel width it wraps around, which only widgetPixels()
/// makes sane.
unsigned columnWidth(int panelWidth)
{
    return static_cast<unsigned>(panelWidth - besideColumns) / columns;
}

unsigned columnLeft(unsigned column, int panelWidth)
{
    return firstColumn + column * columnWidth(panelWidth);
}

int widgetPixels(unsigned pixels)
{
    return static_cast<int>(std::min<unsigned>(pixels, QWIDGETSIZE_MAX));
}

QRect antennaRect(int index, int panelWidth, int panelHeight)
{
    return {widgetPixels(columnLeft(index, panelWidth)), antennaTop, widgetPixels(columnWidth(panelWidth)),
            panelHeight - besideAntennas};
}

QRect transmitRect(int index, int panelWidth)
{
    const QPoint corner(widgetPixels(columnLeft(index + 1, panelWidth) - transmitFromRight), transmitTop);
    return {corner, transmitSize};
}

QRect powerRect(int panelHeight)
{
    return {QPoint(powerLeft, panelHeight / 2 - powerSize.height() / 2), powerSize};
}

/// The name as a button shows it: a slash breaks the line, and an ampersand is no mnemonic.
QString caption(QString name)
{
    return captionOfName(name.replace(QLatin1Char('/'), QLatin1Char('\n')));
}

void hideIfPresent(QWidget *widget)
{
    if (widget)
        widget->hide();
}

void placeLogo(QLabel *label)
{
    if (!label)
        return;
    const QPixmap logo = label->pixmap(Qt::ReturnByValue);
    label->setGeometry(QRect(logoCorner, logo.size() / logo.devicePixelRatio()));
}

} // namespace

CDeviceLumen4S::CDeviceLumen4S(CSettings settings) : CVextralRemoteControl(&settings) {}

QString CDeviceLumen4S::modelId()
{
    return QStringLiteral("Lumen3-S");
}

QString CDeviceLumen4S::modelName()
{
    return QStringLiteral("Lumen3-S");
}

QString CDeviceLumen4S::shortName()
{
    return QStringLiteral("Lumen3-S");
}

QString CDeviceLumen4S::alternateName()
{
    return QStringLiteral("Lumen3-S");
}

bool CDeviceLumen4S::capabilityA()
{
    return true;
}

int CDeviceLumen4S::antennaCount()
{
    return 4;
}

int CDeviceLumen4S::rotorCount()
{
    return 0;
}

bool CDeviceLumen4S::supportsAzimuthalMap()
{
    return false;
}

bool CDeviceLumen4S::hasSendAndPower()
{
    return true;
}

bool CDeviceLumen4S::hasOwnPanel()
{
    return true;
}

bool CDeviceLumen4S::hasLogo()
{
    return true;
}

bool CDeviceLumen4S::hasInfoLabels()
{
    return true;
}

bool CDeviceLumen4S::hasTitleLabel()
{
    return true;
}

bool CDeviceLumen4S::toggleRX(int index)
{
    if (!CVextralRemoteControl::toggleRX(index))
        return false;
    settleAfterToggle();
    return true;
}

bool CDeviceLumen4S::toggleTX(int index)
{
    if (!CVextralRemoteControl::toggleTX(index))
        return false;
    settleAfterToggle();
    return true;
}

/// The box needs a moment after a toggle; asking twice gives it that and empties the line of what it still
/// says.
void CDeviceLumen4S::settleAfterToggle()
{
    for (int pass = 0; pass < 2; ++pass) {
        pause(settlingMs);
        getStatus();
    }
}

void CDeviceLumen4S::buildPanel(CVextralRemoteControlWidget *widget)
{
    // A stack switch combines antennas.
    if (widget)
        widget->setExclusiveAntennas(false);
}

void CDeviceLumen4S::relayoutPanel(int width, int height)
{
    CVextralRemoteControlWidget *panel = remoteControlWidget();
    if (!panel)
        return;
    panel->setMinimumSize(minimumPanelSize);
    layoutButtons(*panel, width, height);
    if (CLedButton *power = panel->powerIndicator())
        power->setGeometry(powerRect(height));
    hideIfPresent(panel->sendIndicator());
    hideIfPresent(panel->splitIndicator());
    layoutLabels(*panel, width);
}

void CDeviceLumen4S::layoutButtons(const CVextralRemoteControlWidget &panel, int width, int height)
{
    const QList<CAntennaButton *> antennaButtons = panel.antennaButtons();
    const QList<CLedButton *> txButtons = panel.txButtons();
    const int count = std::min<int>(antennaCount(), antennaButtons.size());
    for (int i = 0; i < count; ++i) {
        antennaButtons[i]->setGeometry(antennaRect(i, width, height));
        if (const CVextralAntenna *shown = antenna(i)) {
            antennaButtons[i]->setText(caption(shown->name()));
            antennaButtons[i]->setAccessibleDescription(shown->name());
        }
        if (i < txButtons.size())
            txButtons[i]->setGeometry(transmitRect(i, width));
    }
}

void CDeviceLumen4S::layoutLabels(const CVextralRemoteControlWidget &panel, int width)
{
    placeLogo(panel.logoLabel());
    const QRect large(width - infoMargin, infoTop, infoWidth, largeInfoHeight);
    if (QLabel *label = panel.largeInfoLabel()) {
        label->setText(alternateName());
        label->setGeometry(large);
    }
    if (QLabel *label = panel.smallInfoLabel()) {
        label->setText(QStringLiteral("Remote Control"));
        label->setGeometry(width - infoMargin, large.bottom(), infoWidth, smallInfoHeight);
    }
    if (QLabel *label = panel.titleLabel()) {
        label->setText(shortName());
        label->setAlignment(Qt::AlignCenter);
        label->setGeometry(QRect(titleCorner, QSize(width - 2 * titleCorner.x(), titleHeight)));
    }
}
