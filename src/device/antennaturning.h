// SPDX-License-Identifier: MIT
#pragma once

class BoxLink;
class CVextralAntenna;
class CVextralRemoteControl;

/// Selects rotors and turns antennas by them.
///
/// A box has one selected rotor, so an order is two steps: select the rotor, which asks the box and runs the
/// event loop, then go to the azimuth. Whatever is ordered meanwhile is newer and wins: every order to turn,
/// to stop or to select a rotor has a number, and one that finds a newer number after it asked the box gives
/// up.
class AntennaTurning
{
public:
    AntennaTurning(CVextralRemoteControl &controller, BoxLink &link) : m_controller(controller), m_link(link)
    {}

    /// Selects `rotor` on the box unless another one is turning. Returns whether it is selected now and
    /// nothing newer was ordered.
    bool select(int rotor);
    /// The panel's button of this rotor was pressed.
    void toggleTo(int rotor);

    int lastOrder() const { return m_order; }
    /// Numbers a new order. Orders that are still being prepared give up.
    int begin() { return ++m_order; }
    /// Gives the antenna the target and turns it there; without a rotor it points there at once. Returns
    /// whether there was a line for the order, or none needed.
    bool turnTo(CVextralAntenna *antenna, double degrees);
    /// Turns the antenna to its target.
    void turnToTarget(CVextralAntenna *antenna);
    /// Stores where an antenna without a rotor points from now on.
    void pointFixed(CVextralAntenna *antenna, double degrees);

    /// The antenna's display on the map was pressed: makes it current, selects its rotor and takes over the
    /// azimuth. False when the rotor was refused, or when another display was pressed meanwhile.
    bool takeOver(CVextralAntenna *antenna, const char *operation);

private:
    bool isOvertaken(int order) const { return order != m_order; }
    void toggle();

    CVextralRemoteControl &m_controller;
    BoxLink &m_link;
    int m_order = 0;
    /// Counts the presses of the map's displays.
    int m_press = 0;
};
