#pragma once

#include <QByteArray>

#include <optional>

/// What programs on the network may see of a rotator and ask of it. An order must not run the event loop.
class RotctldRotator
{
public:
    enum class Side { Left, Right };

    virtual ~RotctldRotator() = default;

    virtual QByteArray model() const = 0;
    /// Compass degrees; nothing while no reading is known.
    virtual std::optional<double> azimuth() const = 0;
    /// Orders are given only while this is true. An order that makes it false did not reach the rotator.
    virtual bool takesOrders() const = 0;
    /// To whole degrees on the compass.
    virtual void turnTo(int degrees) = 0;
    virtual void turn(Side side) = 0;
    virtual void stop() = 0;
};
