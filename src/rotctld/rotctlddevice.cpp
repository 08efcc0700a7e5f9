// SPDX-License-Identifier: MIT
#include "rotctld/rotctlddevice.h"

#include "compass/degrees.h"
#include "device/devicekt240m.h"

QByteArray RotctldDevice::model() const
{
    return m_device.modelName().toUtf8();
}

std::optional<double> RotctldDevice::azimuth() const
{
    const double azimuth = m_device.azimuth();
    return m_device.isOpen() && isKnownAngle(azimuth) ? std::optional(azimuth) : std::nullopt;
}

bool RotctldDevice::takesOrders() const
{
    return m_device.takesOrders();
}

void RotctldDevice::turnTo(int degrees)
{
    m_device.follow(degrees);
}

void RotctldDevice::turn(Side side)
{
    m_device.rotateByKey(side == Side::Right ? CVextralRemoteControl::ClockwiseKey
                                             : CVextralRemoteControl::CounterClockwiseKey);
}

void RotctldDevice::stop()
{
    m_device.halt();
}
