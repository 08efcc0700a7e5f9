#pragma once

#include "rotctld/rotctldrotator.h"

class CDeviceKT240M;

/// The rotator of this program as the network sees it: an order is the operator's own, with its lamps, its
/// dashed line and its soft stop.
class RotctldDevice : public RotctldRotator
{
public:
    /// `device` must live as long.
    explicit RotctldDevice(CDeviceKT240M &device) : m_device(device) {}

    QByteArray model() const override;
    std::optional<double> azimuth() const override;
    bool takesOrders() const override;
    void turnTo(int degrees) override;
    /// As by the key: the lamp is lit, and the same side again is no order.
    void turn(Side side) override;
    /// As by the STOP button: what waits is forgotten.
    void stop() override;

private:
    CDeviceKT240M &m_device;
};
