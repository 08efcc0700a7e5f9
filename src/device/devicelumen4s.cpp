// SPDX-License-Identifier: MIT
#include "device/devicelumen4s.h"

#include "antenna/vextralantenna.h"
#include "settings/settings.h"
#include "widgets/vextralremotecontrolwidget.h"

namespace {

constexpr int settlingMs = 33;

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
    panel->setMinimumSize(PanelGeometry::smallestInColumns);
    for (int i = 0; i < antennaCount(); ++i) {
        if (const CVextralAntenna *shown = antenna(i))
            panel->showAntennaName(i, shown->name());
    }
    panel->showTexts(shortName(), alternateName(), QStringLiteral("Remote Control"));
    panel->place(PanelGeometry::inColumns({width, height}, panel->traits()));
}
