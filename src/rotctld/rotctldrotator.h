// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

/// What programs on the network may read from a rotator, and the orders that they may give. No order may run
/// the event loop.
class RotctldRotator
{
public:
    enum class Side { Left, Right };

    virtual ~RotctldRotator() = default;

    virtual QByteArray model() const = 0;
    /// Compass degrees; nothing after a failed reading.
    virtual std::optional<double> azimuth() const = 0;
    /// Orders are given only while this is true. An order that makes it false did not reach the rotator.
    virtual bool takesOrders() const = 0;
    /// `degrees` is from 0 to 359.
    virtual void turnTo(int degrees) = 0;
    virtual void turn(Side side) = 0;
    virtual void stop() = 0;
};
