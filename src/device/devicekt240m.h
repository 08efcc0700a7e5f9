// SPDX-License-Identifier: MIT
#pragma once

#include "device/rotatormotion.h"
#include "device/vextralremotecontrol.h"

class CAntennaButton;
class RotatorPanel;

/// The rotator controller: one rotor, steered from a panel of its own with a digital display, a dial and the
/// buttons CCW, STOP and CW.
///
///     poll, operator, line -> RotatorMotion -> order -> command on the line
///                                           -> lamps, after each event
///
/// What is sent when, and which lamps are lit, is RotatorMotion's; here it is sent, lit and drawn. The
/// panel's widgets belong to the front panel; there may be neither panel nor map.
class CDeviceKT240M : public CVextralRemoteControl
{
    Q_OBJECT

public:
    /// Polls from now on, whether or not a port is opened.
    explicit CDeviceKT240M(CSettings settings);

    QString modelId() override { return QStringLiteral("KT240M"); }
    QString modelName() override { return QStringLiteral("KT240M"); }
    QString shortName() override { return QStringLiteral("KT240M"); }
    QString alternateName() override { return QStringLiteral("KT240M"); }
    int antennaCount() override { return 1; }
    int rotorCount() override { return 1; }
    bool setCurrentRotor(int) override { return true; }
    /// Sends the rotor to `azimuth` in degrees. While it turns it is stopped first, the target waits, and the
    /// answer is false. Without a line the target is refused.
    bool rotateTo(double azimuth) override;
    /// Lets a turning rotor run out. Without two good readings it is braked.
    bool stop() override;
    void createAntennas(const CSettings *settings) override;
    /// Shows the polled azimuth; the status is not used.
    void updateStatusDisplay(CDeviceStatus status) override;
    void monitore() override;
    int txButtonCount() override { return 0; }
    bool hasOwnPanel() override { return true; }
    void relayoutPanel(int width, int height) override;
    bool mapAnimationFlag() override { return false; }
    /// The only rotor is rotor 0, also in the settings, which are saved so.
    void applyRotorAssignment(const CSettings *settings) override;
    void setupAntennaEditor(CVextralAntennaUI *editor) override;
    bool rotateByKey(int key) override;
    bool acceptsDirectionKeys() override { return true; }
    void hideUnusedWidgets() override;
    void applyInterfaceMode(int mode) override;
    void buildPanel(CVextralRemoteControlWidget *widget) override;
    /// As the base, but not before the first poll on a line.
    bool takesOrders() const override;
    /// Forgets what was asked for: it must not turn the antenna when the line is back.
    void lineWentAway() override;

    /// All that STOP does when it is pressed and let go, without the button. Runs no event loop.
    void halt();
    /// Turns the antenna for a tracker, which asks again and again: as turnTo(), but while the rotor runs out
    /// the target only takes the place of the one that waits.
    void follow(double azimuth);
    /// The reading of the last poll in compass degrees, unknownAngle for none.
    double azimuth() const { return m_motion.azimuth(); }

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
    void endRotation(RotatorMotion::Seen end);
    void moveAntenna();

    /// Sends the order, if there is one, and shows the lamps.
    bool obey(const RotatorMotion::MaybeOrder &order);
    /// What STOP does before it stops.
    void forget();
    /// A newer order ends a hold of the dial or the digits and a wheel run; they report nothing any more.
    void endChoice();
    void repaintMap();
    /// The only antenna in use.
    CVextralAntenna &first() const { return *antenna(0); }
    void showLamps();
    /// Shows where the antenna goes, or would go.
    void aimAntenna(double azimuth);
    /// Shows the antenna where it was read last, and the target that it has.
    void showTarget();
    /// Shows an antenna that rests where it was read last.
    void restAntenna();

    RotatorMotion m_motion;
    QPointer<RotatorPanel> m_panel;
};
