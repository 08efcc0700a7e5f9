#pragma once

#include "compass/degrees.h"
#include "device/devicestatus.h"

#include <QObject>
#include <QTimer>

class CVextralAntenna;
class CVextralRemoteControl;

/// Polling and synchronisation: reads the box at the start and at each interval, and notices from the
/// readings when a rotation begins and ends.
///
///     start() --> synchronisation pass --> a poll each interval --> stop()
///     poll: status --> panel, map --> each antenna on the selected rotor follows its azimuth
///
/// The queries run the event loop, so a poll may run inside a poll or a pass, and the line may be closed
/// there.
class Monitoring : public QObject
{
    Q_OBJECT

public:
    explicit Monitoring(CVextralRemoteControl &controller);

    /// Lets the controller synchronise, then polls. False when it was stopped or started anew meanwhile.
    bool start();
    void stop();
    bool isActive() const { return m_timer.isActive(); }
    /// Milliseconds between two polls; a running timer keeps its period.
    int interval() const { return m_interval; }
    void setInterval(int milliseconds) { m_interval = milliseconds; }
    /// Whether the azimuth that was read last belongs to the status that is being shown.
    bool holdsAngle() const { return m_holdsAngle; }

    void synchronise();
    void poll();
    /// Shows a status on the panel, the map and the editors.
    void show(const CDeviceStatus &status);

signals:
    /// A poll is due.
    void due();

private:
    bool isStopped(int run) const { return run != m_run; }
    void synchroniseAntennas(int rotor);
    void synchroniseOtherRotor(int run);
    void synchronise(CVextralAntenna *antenna);
    void showSelectedRotor(int rotor);
    /// False ends the poll: the antenna jumped.
    bool follow(CVextralAntenna *antenna, const CDeviceStatus &status);
    bool animateTowards(CVextralAntenna *antenna, double angle);

    CVextralRemoteControl &m_controller;
    QTimer m_timer;
    int m_interval = 1500;
    bool m_holdsAngle = false;
    /// The rotor whose antenna was made current last.
    int m_lastRotor = -1;
    /// Counts the starts and stops, so that a pass notices that it is not wanted any more.
    int m_run = 0;
};
