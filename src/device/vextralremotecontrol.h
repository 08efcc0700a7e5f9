#pragma once

#include "compass/degrees.h"
#include "device/devicestatus.h"
#include "line/linestate.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <vector>

class CRotationDigitalDisplayWidget;
class CSettings;
class CVextralAntenna;
class CVextralAntennaUI;
class CVextralAzimuthalWidget;
class CVextralRemoteControlWidget;
class QSerialPort;

namespace Protocol {
struct StatusQuery;
}

/// The controller of one box at the end of a serial port, and the base of all models.
///
/// It owns the port, creates the box's antennas, sends the commands, polls the status and drives the front
/// panel, the map and the antennas from it:
///
///     panel button -> slot here -> command on the line
///     monitorTimer -> monitore() -> status reply -> panel lamps, antennas, map
///
/// All I/O blocks the GUI thread for bounded times; the status readers pump events, so any slot here may run
/// inside a read. The virtual operations are the models' extension points. Angles are compass degrees;
/// unknownAngle also stands for a failed read.
///
/// A command is `false` without a port object. With one rotateCCW(), rotateCW() and stop() tell whether it
/// left the port; the others are `true`, also where the port did not open or is lost and nothing left.
class CVextralRemoteControl : public QObject
{
    Q_OBJECT

public:
    /// The window's interface modes.
    enum InterfaceMode { ExtendedMode = 0, MiniMode = 1, SuperMiniMode = 2 };
    /// The keys that turn while they are held.
    enum DirectionKey { CounterClockwiseKey = 0, ClockwiseKey = 1 };

    /// Creates the antennas from the settings' rotor ids; nothing is opened yet.
    explicit CVextralRemoteControl(const CSettings *settings);
    ~CVextralRemoteControl() override;

    /// Opens `portName` at 9600 8N1 and starts monitoring, which runs one synchronisation pass before it
    /// returns. A port that exists already is left as it is. Returns whether the port is open.
    virtual bool open(const QString &portName);
    virtual bool close();
    virtual bool isOpen();
    /// Tells one model from another; the program shows their names instead.
    virtual QString modelId();
    virtual QString modelName();
    virtual QString shortName();
    virtual QString alternateName();
    /// Whether boxes of this model carry an id that tells one from another.
    virtual bool capabilityA();
    /// The rotor that `status` reports as selected (0 or 1), -1 for none. A null status reads one first.
    virtual int currentRotor(const CDeviceStatus *status);
    virtual int antennaCount();
    virtual int rotorCount();
    /// Azimuth of the selected rotor in degrees, unknownAngle after a failed read.
    virtual double getCurrentAngle();
    /// Selects `rotor` on the box unless another one is turning. Returns whether it is selected now.
    virtual bool setCurrentRotor(int rotor);
    virtual bool rotateTo(double angle);
    virtual bool rotateCCW();
    virtual bool rotateCW();
    virtual bool stop();
    virtual bool toggleRX(int index);
    virtual bool toggleTX(int index);
    /// For models with a split, which nothing on the panel switches yet.
    virtual bool toggleSplit(int index);
    virtual bool toggleRadio(int index);
    virtual bool toggleRotor();
    virtual void createAntennas(const CSettings *settings);
    virtual CDeviceStatus getStatusAndCurrentAngle();
    virtual CDeviceStatus getStatus();
    /// Whether monitoring reads the angle together with the status.
    virtual bool readsAngleWithStatus();
    /// Shows a status on the panel, the map and the editors.
    virtual void updateStatusDisplay(CDeviceStatus status);
    virtual bool startMonitoring();
    virtual bool stopMonitoring();
    /// Synchronises all rotors while the timer is stopped, polls once while it runs.
    virtual void monitore();
    virtual void turnAntennaFromCurrentToTarget(CVextralAntenna *antenna);
    /// Whether the model has rotors worth a map; without it only the mini interface mode makes sense.
    virtual bool supportsAzimuthalMap();
    virtual void activateSplit();
    virtual bool hasSendAndPower();
    virtual bool hasSplit();
    virtual void afterInitialSync();
    virtual int txButtonCount();
    virtual int radioCount();
    /// Whether the model lays out the front panel itself, through relayoutPanel().
    virtual bool hasOwnPanel();
    virtual void relayoutPanel(int width, int height);
    virtual bool hasLogo();
    virtual bool hasInfoLabels();
    virtual bool hasTitleLabel();
    /// Whether the settings dialog may be opened.
    virtual bool capabilityH();
    /// Whether the label editor may be opened.
    virtual bool capabilityI();
    /// Whether the map's animation guards itself against passing the target.
    virtual bool mapAnimationFlag();
    /// Gives the antennas their rotors from the settings.
    virtual void applyRotorAssignment(const CSettings *settings);
    virtual void setupAntennaEditor(CVextralAntennaUI *editor);
    /// A held direction key, a DirectionKey. Returns whether the model took it.
    virtual bool rotateByKey(int key);
    /// Whether the model handles the direction keys itself.
    virtual bool acceptsDirectionKeys();
    virtual void finishRotation(CVextralAntenna *antenna, double target);
    /// The window hands over the frame of its memory buttons.
    virtual void hookC(QWidget *widget);
    virtual void hideUnusedWidgets();
    /// Follows the window into an InterfaceMode.
    virtual void applyInterfaceMode(int mode);
    virtual void decodeStatus(CDeviceStatus &status, quint8 a, quint8 b);
    virtual void buildPanel(CVextralRemoteControlWidget *widget);
    /// The line was lost or closed: what was asked for over it does not count any more. It may be called
    /// while a command is being sent.
    virtual void lineWentAway();

    /// Shows the antennas on `map`, which is not owned.
    void setAzimuthalWiget(CVextralAzimuthalWidget *map);
    CVextralAzimuthalWidget *azimuthalWidget() const;
    /// Binds the front panel, which is not owned. Only the first one is taken.
    void setRemoteControlWidget(CVextralRemoteControlWidget *widget);
    CVextralRemoteControlWidget *remoteControlWidget() const;
    /// Makes `display` the one that monitoring writes the selected rotor's live angle into.
    void setLiveDisplay(CRotationDigitalDisplayWidget *display);

    /// The box's antennas in index order.
    const std::vector<CVextralAntenna *> &antennas() const { return m_antennas; }
    /// The antenna at `index` (any number), or null.
    CVextralAntenna *antenna(int index) const;
    CVextralAntenna *antennaOfRotor(int rotor) const;
    QList<CVextralAntenna *> antennasOfRotor(int rotor) const;

    void dumpResponse(const QString &command, const QByteArray &line) const;

    /// The relay box id that is expected of the box.
    int relayBoxId() const { return m_relayBoxId; }
    void setRelayBoxId(int id) { m_relayBoxId = id; }
    QString relayBoxName() const { return m_relayBoxName; }
    void setRelayBoxName(const QString &name) { m_relayBoxName = name; }
    /// Milliseconds between two polls; a running timer keeps its period.
    int monitorInterval() const { return m_monitorInterval; }
    void setMonitorInterval(int milliseconds) { m_monitorInterval = milliseconds; }
    bool isDeviceResponding() const { return m_deviceResponding; }
    double lastReadAngle() const { return m_lastReadAngle; }

    /// What is known of the line now.
    LineState lineState() const;
    /// Shows lineState() on the panel.
    void showLineState();

signals:
    void onRelayBoxIdChanged(int currentValue, int newValue);
    void onStopRotating();
    void onStartRotating(double angle);

private slots:
    void onAtennaButtonChange(int index, bool state);
    void onAtennaTXButtonChange(int index);
    void onToggleRotorButtonChange(int index);
    void onRadioButtonChange(int index, bool state);

public slots:
    void onRotationStarted();
    void onRotationTargetChanging(int value);
    void onRotationTargetChanged(int value);

protected:
    /// Writes a composed command and waits until it has left, at most a second. False without a port or when
    /// it did not leave in time.
    bool send(const QByteArray &composed);

    /// Notes whether the last poll was answered and shows it as the POWER lamp.
    void noteAnswer(bool answered);

    bool isMonitoring() const { return m_monitorTimer.isActive(); }
    double currentAngle() const { return m_currentAngle; }

private:
    /// Forces the value, in degrees, into the panel's digital display and dial.
    void showOnPanelDisplays(int value);

    // linerecovery.cpp
    /// Opens the port object in text mode; false leaves everything as it was.
    bool openPortObject();
    void onPortError();
    /// Before each poll: tries a lost line once, and notices one whose device is not there any more.
    void tendLine();
    void loseLine(const QString &reason);
    void recoverLine();

    // serialcommands.cpp
    void sendQuery(const QByteArray &composed);
    /// Waits one round for a line and dumps it to the log as a reply to `command`; empty when there is none.
    QByteArray readLine(const char *command);
    /// Drops what came with a query that failed, or it would lead the next reply. What comes after the query
    /// has returned stays.
    void throwAwayNoise();
    CDeviceStatus readStatus(const Protocol::StatusQuery &query);
    /// Reads lines until there are enough; false ends the query with nothing to decode.
    bool collectStatusReply(const Protocol::StatusQuery &query, QByteArray &buffer);

    // rotormonitoring.cpp
    void synchronise();
    void synchroniseAntennas(int rotor);
    void synchroniseOtherRotor();
    void poll();
    /// False ends the tick: the antenna jumped.
    bool followAntenna(CVextralAntenna *antenna, const CDeviceStatus &status);
    bool animateTowards(CVextralAntenna *antenna, double angle);
    void showSelectedRotor(int rotor);
    void showPower(bool on);

    double m_currentAngle = unknownAngle;
    bool m_angleValid = false;
    std::vector<CVextralAntenna *> m_antennas;
    int m_ignoredAntennaIndex = -1;
    double m_lastReadAngle = unknownAngle;
    bool m_deviceResponding = false;
    int m_relayBoxId = 0;
    QString m_relayBoxName;
    int m_monitorInterval = 1500;
    int m_lastRotor = -1;
    /// Until the panel has shown a first rotor's status; nothing asks for it yet.
    bool m_firstStatus = true;
    QPointer<CVextralAzimuthalWidget> m_map;
    QPointer<CVextralRemoteControlWidget> m_remoteControlWidget;
    /// Owned; made by open(), deleted by close().
    QPointer<QSerialPort> m_port;
    QTimer m_monitorTimer;

    LineState m_lineState;
    /// Counts the targets that were chosen, so that an older one does not follow a newer one.
    int m_turnRequests = 0;
    /// How often a port was opened, so that a read notices that its own one is gone.
    int m_openings = 0;
    /// What stood behind the port's name when it was opened.
    QString m_deviceBehindPort;
    /// Runs since the last valid status, or since the port was opened.
    QElapsedTimer m_sinceAnswer;
};
