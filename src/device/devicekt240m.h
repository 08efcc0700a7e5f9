#pragma once

#include "device/vextralremotecontrol.h"

#include <memory>

class C4SAnchorLayout;
class CAntennaButton;
class CRotationDialWidget;

/// The rotator controller: one rotor, steered from a panel of its own with a digital display, a dial and the
/// buttons CCW, STOP and CW.
///
/// The box says nothing but its azimuth, so all is told from two successive readings:
///
///     idle --go-to, CCW, CW--> (readings differ) --> rotating --(readings agree)--> idle
///       rotating, new target:       soft stop, the target is sent once the rotor rests
///       rotating, other direction:  soft stop, the direction is started once the rotor rests
///       STOP, also at rest:         what waits is forgotten; while rotating, soft stop
///
/// A target is kept until the rotor is found there, and sent again after every rotation that ended elsewhere.
/// A failed reading makes a rotation too, but one that sends nothing when it ends. The panel's widgets belong
/// to the front panel; there may be neither panel nor map.
class CDeviceKT240M : public CVextralRemoteControl
{
    Q_OBJECT

public:
    /// Polls from now on, whether or not a port is opened.
    explicit CDeviceKT240M(CSettings settings);
    ~CDeviceKT240M() override;

    QString modelId() override;
    QString modelName() override;
    QString shortName() override;
    QString alternateName() override;
    int antennaCount() override;
    int rotorCount() override;
    bool setCurrentRotor(int rotor) override;
    /// Sends the rotor to `azimuth` in degrees. While it turns it is stopped first, the target waits, and the
    /// answer is false. While the line is lost the target is refused.
    bool rotateTo(double azimuth) override;
    /// Lets a turning rotor run out. Without two good readings it is braked.
    bool stop() override;
    void createAntennas(const CSettings *settings) override;
    /// Shows the polled azimuth; the status is not used.
    void updateStatusDisplay(CDeviceStatus status) override;
    void monitore() override;
    int txButtonCount() override;
    bool hasOwnPanel() override;
    void relayoutPanel(int width, int height) override;
    bool mapAnimationFlag() override;
    /// The only rotor is rotor 0, also in the settings, which are saved so.
    void applyRotorAssignment(const CSettings *settings) override;
    void setupAntennaEditor(CVextralAntennaUI *editor) override;
    bool rotateByKey(int key) override;
    bool acceptsDirectionKeys() override;
    void hideUnusedWidgets() override;
    void applyInterfaceMode(int mode) override;
    void buildPanel(CVextralRemoteControlWidget *widget) override;

private slots:
    void onRotationStarted();
    void onRotationChanging(int rotation);
    void onRotationChanged(int rotation);
    void applyCCWandCW(CAntennaButton *button);
    void onCCWAndCWButtonsDown();
    void onCCWAndCWButtonsUp();
    void onDialRotationStarted();
    void onDialRotationChanging(int rotation);
    void onDialRotationChanged(int rotation);
    void onStopButtonPressed();
    void onStopButtonUp();

private:
    enum class Direction { CounterClockwise, Clockwise };

    // devicekt240m.cpp
    void placeOnPanel(QWidget *widget, const QRect &place);
    void connectDirectionButton(CAntennaButton *button);
    void editSender();
    /// Shows where the antenna goes, or would go.
    void aimAntenna(double azimuth);
    void updateMap();

    // kt240mrotation.cpp
    static void light(CAntennaButton *button, bool on);
    CAntennaButton *buttonOf(Direction direction) const;
    CAntennaButton *buttonAgainst(Direction direction) const;
    void logReading(bool wasRotating) const;
    void takeFirstReading();
    void endRotation();
    void startPendingDirection();
    void settleScheduledTarget();
    void countIdlePolls();
    void showAzimuth();
    void moveAntenna();
    bool isOperatorChoosing() const;
    bool runOut();
    bool brake();
    void startTurning(Direction direction);
    void turnOnceAtRest(Direction direction);

    double m_scheduledTarget = unknownAngle;
    double m_lastReading = unknownAngle;
    double m_currentReading = unknownAngle;
    /// Stands for the running manual rotation.
    QPointer<CAntennaButton> m_activeDirectionButton;
    std::unique_ptr<C4SAnchorLayout> m_panelLayout;
    QPointer<CAntennaButton> m_ccwButton;
    QPointer<CAntennaButton> m_cwButton;
    QPointer<CAntennaButton> m_stopButton;
    bool m_rotating = false;
    int m_idlePolls = 0;
    double m_previousReading = unknownAngle;
    double m_polledAngle = unknownAngle;
    bool m_ccwPending = false;
    bool m_cwPending = false;
    QPointer<CRotationDigitalDisplayWidget> m_digitalDisplay;
    QPointer<CRotationDialWidget> m_dial;

    /// The present rotation is nothing but a failed reading, and the operator has asked for nothing since.
    bool m_onlyReadingFailed = false;
    /// The digital display is in editing because the dial is dragged.
    bool m_dialEditsDisplay = false;
};
