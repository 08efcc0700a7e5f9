// SPDX-License-Identifier: MIT
#pragma once

#include "device/vextralremotecontrol.h"

/// The stack switch: four receive ports that may be combined, four transmit lines, no rotor.
class CDeviceLumen4S : public CVextralRemoteControl
{
    Q_OBJECT

public:
    explicit CDeviceLumen4S(CSettings settings);

    QString modelId() override;
    QString modelName() override;
    QString shortName() override;
    QString alternateName() override;
    bool capabilityA() override;
    int antennaCount() override;
    int rotorCount() override;
    bool toggleRX(int index) override;
    bool toggleTX(int index) override;
    bool supportsAzimuthalMap() override;
    bool hasSendAndPower() override;
    bool hasOwnPanel() override;
    void relayoutPanel(int width, int height) override;
    bool hasLogo() override;
    bool hasInfoLabels() override;
    bool hasTitleLabel() override;
    void buildPanel(CVextralRemoteControlWidget *widget) override;

private:
    void settleAfterToggle();
};
