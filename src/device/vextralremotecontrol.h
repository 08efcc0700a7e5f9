// SPDX-License-Identifier: MIT
#pragma once

#include "compass/degrees.h"
#include "device/antennaturning.h"
#include "device/boxlink.h"
#include "device/devicestatus.h"
#include "device/monitoring.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <vector>

class CRotationDigitalDisplayWidget;
class CSettings;
class CVextralAntenna;
class CVextralAntennaUI;
class CVextralAzimuthalWidget;
class CVextralRemoteControlWidget;
class QWidget;

/// The controller of one box at the end of a line, and the base of all models.
///
/// It owns the link to the box and the monitoring, creates the box's antennas, sends the commands, and drives
/// the front panel, the map and the antennas from what the box says:
///
///     panel button -> slot here -> BoxLink -> command on the line
///     Monitoring, each interval -> monitore() -> status reply -> panel lamps, antennas, map
///
/// All I/O blocks the GUI thread for bounded times; the status readers pump events, so any slot here may run
/// inside a read. The virtual operations are the models' extension points. Angles are compass degrees;
/// unknownAngle also stands for a failed read.
///
/// A command returns `false` before open(). With a line rotateCCW(), rotateCW() and stop() return whether it
/// left; the others are `true`, also where the line did not open or is lost and nothing left.
class CVextralRemoteControl : public QObject
{
    Q_OBJECT

public:
    /// The keys that turn while they are held.
    enum DirectionKey { CounterClockwiseKey = 0, ClockwiseKey = 1 };

    /// Creates the antennas from the settings' rotor ids; nothing is opened yet.
    explicit CVextralRemoteControl(const CSettings *settings);
    ~CVextralRemoteControl() override;

    /// Opens the line to `portName` and starts monitoring, which runs one synchronisation pass before it
    /// returns. A line that exists already is left as it is. Returns whether the line opened; one that is
    /// still connecting starts the monitoring later.
    virtual bool open(const QString &portName);
    virtual bool close();
    virtual bool isOpen() { return m_link.isOpen(); }
    /// Tells one model from another; the program shows their names instead.
    virtual QString modelId() { return QStringLiteral("LUMEN4"); }
    virtual QString modelName() { return QStringLiteral("Lumen Quad 4"); }
    virtual QString shortName() { return QStringLiteral("Lumen"); }
    virtual QString alternateName() { return QStringLiteral("PVX-Lumen"); }
    /// Whether boxes of this model carry an id that tells one from another.
    virtual bool capabilityA() { return true; }
    /// The rotor that `status` reports as selected (0 or 1), -1 for none. A null status reads one first.
    virtual int currentRotor(const CDeviceStatus *status);
    virtual int antennaCount() { return 4; }
    virtual int rotorCount() { return 2; }
    /// Azimuth of the selected rotor in degrees, unknownAngle after a failed read.
    virtual double getCurrentAngle();
    /// Selects `rotor` on the box unless another one is turning. Returns whether it is selected now and no
    /// other order to turn, to stop or to select came meanwhile.
    virtual bool setCurrentRotor(int rotor) { return m_turning.select(rotor); }
    virtual bool rotateTo(double angle);
    virtual bool rotateCCW();
    virtual bool rotateCW();
    virtual bool stop();
    virtual bool toggleRX(int index);
    virtual bool toggleTX(int index);
    /// For models with a split, which nothing on the panel switches yet.
    virtual bool toggleSplit(int /*index*/) { return true; }
    virtual bool toggleRadio(int /*index*/) { return true; }
    virtual bool toggleRotor();
    virtual void createAntennas(const CSettings *settings);
    virtual CDeviceStatus getStatusAndCurrentAngle();
    virtual CDeviceStatus getStatus();
    /// Whether monitoring reads the angle together with the status.
    virtual bool readsAngleWithStatus() { return false; }
    /// Shows a status on the panel, the map and the editors.
    virtual void updateStatusDisplay(CDeviceStatus status) { m_monitoring.show(status); }
    /// False when monitoring was stopped, or the line closed, inside the synchronisation pass.
    virtual bool startMonitoring() { return m_monitoring.start(); }
    virtual bool stopMonitoring();
    /// Synchronises all rotors while the timer is stopped, polls once while it runs.
    virtual void monitore() { isMonitoring() ? m_monitoring.poll() : m_monitoring.synchronise(); }
    virtual void turnAntennaFromCurrentToTarget(CVextralAntenna *antenna) { m_turning.turnToTarget(antenna); }
    /// Whether the model has rotors worth a map; without it only the mini interface mode makes sense.
    virtual bool supportsAzimuthalMap() { return true; }
    virtual void activateSplit() {}
    virtual bool hasSendAndPower() { return false; }
    virtual bool hasSplit() { return false; }
    virtual void afterInitialSync() {}
    virtual int txButtonCount() { return 4; }
    virtual int radioCount() { return 0; }
    /// Whether the model lays out the front panel itself, through relayoutPanel().
    virtual bool hasOwnPanel() { return false; }
    virtual void relayoutPanel(int /*width*/, int /*height*/) {}
    virtual bool hasLogo() { return false; }
    virtual bool hasInfoLabels() { return false; }
    virtual bool hasTitleLabel() { return false; }
    /// Whether the settings dialog may be opened.
    virtual bool capabilityH() { return true; }
    /// Whether the label editor may be opened.
    virtual bool capabilityI() { return false; }
    /// Whether the map's animation guards itself against passing the target.
    virtual bool mapAnimationFlag() { return true; }
    /// Gives the antennas their rotors from the settings.
    virtual void applyRotorAssignment(const CSettings *settings);
    virtual void setupAntennaEditor(CVextralAntennaUI * /*editor*/) {}
    /// A held direction key, a DirectionKey. Returns whether the model took it.
    virtual bool rotateByKey(int /*key*/) { return false; }
    /// Whether the model handles the direction keys itself.
    virtual bool acceptsDirectionKeys() { return false; }
    virtual void finishRotation(CVextralAntenna *antenna, double target);
    /// The window hands over the frame of its memory buttons.
    virtual void hookC(QWidget * /*widget*/) {}
    virtual void hideUnusedWidgets() {}
    /// Follows the window into a mode, an InterfaceMode or a number of the model's own.
    virtual void applyInterfaceMode(int /*mode*/) {}
    virtual void decodeStatus(CDeviceStatus &status, quint8 a, quint8 b);
    virtual void buildPanel(CVextralRemoteControlWidget * /*widget*/) {}
    /// The line was lost or closed: what was asked for over it does not count any more. It may be called
    /// while a command is being sent.
    virtual void lineWentAway() {}

    /// What makes the line from the next open() on; without it a port's name leads to a real line.
    void setLineFactory(LineFactory factory) { m_link.setLineFactory(std::move(factory)); }
    /// Whether an order would reach the box now. It may not although the line is open.
    virtual bool takesOrders() const { return m_link.takesOrders(); }
    /// A number that no other opening of a line has, 0 while the line is not open.
    int lineOpening() const { return m_link.opening(); }
    /// What is known of the line now.
    LineState lineState() const { return m_link.state(); }
    /// Shows lineState() on the panel.
    void showLineState();
    /// Notes whether a poll was answered and shows it as the POWER lamp.
    void noteAnswer(bool answered);
    /// Lets time pass, as the box needs it.
    void pause(int milliseconds) { m_link.pause(milliseconds); }

    /// Turns an antenna to an azimuth: through its rotor, or on the screen alone, which is stored. It gives
    /// up when anything else is ordered to turn, to stop or to select a rotor while the box is asked for the
    /// rotor. Returns whether there was a line for the order; an antenna without a rotor needs none.
    bool turnTo(CVextralAntenna *antenna, double degrees) { return m_turning.turnTo(antenna, degrees); }
    /// The number of the last order to turn, to stop or to select a rotor.
    int lastOrder() const { return m_turning.lastOrder(); }
    /// Takes an antenna without a rotor to point there from now on, and stores it.
    void pointFixedAntenna(CVextralAntenna *antenna, double degrees)
    {
        m_turning.pointFixed(antenna, degrees);
    }
    /// The antenna's display on the map was pressed: makes it current, selects its rotor and takes over the
    /// azimuth. False when the rotor was refused, or when another display was pressed meanwhile. The log
    /// names `operation`.
    bool takeOver(CVextralAntenna *antenna, const char *operation)
    {
        return m_turning.takeOver(antenna, operation);
    }

    /// Shows the antennas on `map`, which is not owned.
    void setAzimuthalWiget(CVextralAzimuthalWidget *map);
    CVextralAzimuthalWidget *azimuthalWidget() const;
    /// Binds the front panel, which is not owned. Only the first one is taken.
    void setRemoteControlWidget(CVextralRemoteControlWidget *widget);
    CVextralRemoteControlWidget *remoteControlWidget() const;
    /// Makes `display` the one that shows the selected rotor's polled azimuth. It is not owned.
    void setLiveDisplay(CRotationDigitalDisplayWidget *display);
    /// Shows a polled azimuth on the live display and the panel, unless the operator is changing one there.
    void showLiveAzimuth(double degrees);

    /// The box's antennas in index order.
    const std::vector<CVextralAntenna *> &antennas() const { return m_antennas; }
    /// The antenna at `index` (any number), or null.
    CVextralAntenna *antenna(int index) const;
    CVextralAntenna *antennaOfRotor(int rotor) const;
    QList<CVextralAntenna *> antennasOfRotor(int rotor) const;

    void dumpResponse(const QString &command, const QByteArray &line) const { BoxLink::dump(command, line); }

    /// The relay box id that is expected of the box.
    int relayBoxId() const { return m_relayBoxId; }
    void setRelayBoxId(int id) { m_relayBoxId = id; }
    QString relayBoxName() const { return m_relayBoxName; }
    void setRelayBoxName(const QString &name) { m_relayBoxName = name; }
    /// Milliseconds between two polls; a running timer keeps its period.
    int monitorInterval() const { return m_monitoring.interval(); }
    void setMonitorInterval(int milliseconds) { m_monitoring.setInterval(milliseconds); }
    /// Whether the box is polled and answered last time.
    bool isDeviceResponding() const
    {
        return isMonitoring() && lineState().kind == LineState::Kind::Answering;
    }
    double lastReadAngle() const { return m_lastReadAngle; }

signals:
    void onRelayBoxIdChanged(int currentValue, int newValue);
    void onStopRotating();
    void onStartRotating(double angle);

private slots:
    void onAtennaButtonChange(int index, bool state);
    void onAtennaTXButtonChange(int index) { toggleTX(index); }
    void onToggleRotorButtonChange(int index) { m_turning.toggleTo(index); }
    void onRadioButtonChange(int index, bool state);

public slots:
    void onRotationStarted();
    void onRotationTargetChanging(int value);
    void onRotationTargetChanged(int value);

protected:
    bool isMonitoring() const { return m_monitoring.isActive(); }

private:
    CDeviceStatus readStatus(const Protocol::StatusQuery &query);
    void closeLine();
    void onLineOpened();
    void onLineLost();
    void showPower(bool on);

    BoxLink m_link;
    Monitoring m_monitoring;
    AntennaTurning m_turning;
    double m_currentAngle = unknownAngle;
    double m_lastReadAngle = unknownAngle;
    std::vector<CVextralAntenna *> m_antennas;
    int m_relayBoxId = 0;
    QString m_relayBoxName;
    QPointer<CVextralAzimuthalWidget> m_map;
    QPointer<CVextralRemoteControlWidget> m_remoteControlWidget;
    QPointer<CRotationDigitalDisplayWidget> m_liveDisplay;
};
