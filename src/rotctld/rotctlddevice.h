// SPDX-License-Identifier: MIT
#pragma once

#include "rotctld/rotctldrotator.h"

class CDeviceKT240M;

/// The rotator of this program for the network. An order does the same as one of the operator: lamps, dashed
/// line and soft stop.
class RotctldDevice : public RotctldRotator
{
public:
    /// `device` must outlive this object.
    explicit RotctldDevice(CDeviceKT240M &device) : m_device(device) {}

    QByteArray model() const override;
    std::optional<double> azimuth() const override;
    bool takesOrders() const override;
    void turnTo(int degrees) override;
    /// As the key: the lamp is lit, and the same side once more does nothing.
    void turn(Side side) override;
    /// As the STOP button: a target or direction that waits is forgotten.
    void stop() override;

private:
    CDeviceKT240M &m_device;
};
