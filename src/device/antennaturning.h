#pragma once

class BoxLink;
class CVextralAntenna;
class CVextralRemoteControl;

/// Selects rotors and turns antennas by them.
///
/// A box has one selected rotor, so an order is two steps: select the rotor, which asks the box and runs the
/// event loop, then go to the azimuth. Whatever is ordered meanwhile is newer and wins: each turn has a
/// number, and every order to turn or to stop voids the numbers before it.
class AntennaTurning
{
public:
    AntennaTurning(CVextralRemoteControl &controller, BoxLink &link) : m_controller(controller), m_link(link)
    {}

    /// Selects `rotor` on the box unless another one is turning. Returns whether it is selected now.
    bool select(int rotor);
    /// The panel's button of this rotor was pressed.
    void toggleTo(int rotor);

    /// Voids every turn that is still being prepared, and numbers a new one.
    int begin() { return ++m_turn; }
    /// Gives the antenna the target and turns it there; without a rotor it points there at once. Does nothing
    /// when `turn` is void. Returns whether there was a line for the order, or none needed.
    bool turnTo(CVextralAntenna *antenna, double degrees, int turn);
    /// Turns the antenna to its target.
    void turnToTarget(CVextralAntenna *antenna);
    /// Stores where an antenna without a rotor points from now on.
    void pointFixed(CVextralAntenna *antenna, double degrees);

    /// The antenna's display on the map was pressed: makes it current, selects its rotor and takes over the
    /// azimuth. False when the rotor was refused, or when another display was pressed meanwhile.
    bool takeOver(CVextralAntenna *antenna, const char *operation);

private:
    CVextralRemoteControl &m_controller;
    BoxLink &m_link;
    int m_turn = 0;
    /// Counts the presses of the map's displays.
    int m_press = 0;
};
