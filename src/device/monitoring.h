// SPDX-License-Identifier: MIT
#pragma once

#include "compass/degrees.h"
#include "device/devicestatus.h"

#include <QObject>
#include <QTimer>

class CVextralAntenna;
class CVextralRemoteControl;

/// Polling and synchronisation: reads the box at the start and at each interval, and notices from the
/// statuses when a rotation begins and ends.
///
///     start() --> synchronisation pass --> a poll each interval --> stop()
///     poll: status --> panel, map --> each antenna on the selected rotor follows its azimuth
///
/// The status queries run the event loop, so another poll may run inside a poll or a pass, and the line may
/// be closed there.
class Monitoring : public QObject
{
    Q_OBJECT

public:
    explicit Monitoring(CVextralRemoteControl &controller);

    /// Lets the controller run the synchronisation pass, then starts the timer of the polls. False when
    /// monitoring was stopped or started again inside the pass.
    bool start();
    void stop();
    bool isActive() const { return m_timer.isActive(); }
    /// Milliseconds between two polls. A change does not affect a running timer.
    int interval() const { return m_interval; }
    void setInterval(int milliseconds) { m_interval = milliseconds; }
    /// Whether the azimuth that was read last belongs to the status that is being shown. While this is true
    /// the controller returns that azimuth and does not ask the box again.
    bool holdsAngle() const { return m_holdsAngle; }

    /// The synchronisation pass: reads the azimuths of both rotors and leaves the first one selected.
    void synchronise();
    /// Reads the status once and shows it.
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
    /// False when the azimuth differs too much from the last one to be shown now; the poll ends then.
    bool follow(CVextralAntenna *antenna, const CDeviceStatus &status);
    bool animateTowards(CVextralAntenna *antenna, double angle);

    CVextralRemoteControl &m_controller;
    QTimer m_timer;
    int m_interval = 1500;
    bool m_holdsAngle = false;
    /// The rotor whose antenna was made the current one last, -1 for none yet.
    int m_lastRotor = -1;
    /// Counts the starts and stops, so that a pass notices that monitoring was stopped or started inside it.
    int m_run = 0;
};
