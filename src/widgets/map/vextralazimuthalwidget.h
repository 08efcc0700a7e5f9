// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/map/azimuthalanimation.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class AzimuthalView;
class CRotationDigitalDisplayWidget;
class CVextralAntenna;
class CVextralRemoteControl;

/// The azimuthal map: a compass rose over a map image, an arrow for each antenna, a dashed line to each
/// target, and one digital display for each antenna.
///
/// Azimuths are compass degrees, 0 at the top, increasing clockwise. Positions are widget pixels. The compass
/// has the radius R in pixels about the widget's centre; at scale 1 R is 171 pixels. Controller and antennas
/// are not owned, the displays are children. An antenna that is destroyed leaves its display, which then does
/// nothing.
class CVextralAzimuthalWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CVextralAzimuthalWidget(QWidget *parent = nullptr);
    ~CVextralAzimuthalWidget() override;

    void addAntenna(CVextralAntenna *antenna);
    /// Null is allowed. A controller without map support hides the map.
    void setDevice(CVextralRemoteControl *controller);
    void hideDisplays();

    /// Makes the antenna current, selects its rotor and takes over its live angle.
    void setCurrentRotorByAntenna(CVextralAntenna *antenna);
    /// Null leaves no antenna current.
    void setCurrentAntenna(CVextralAntenna *antenna);
    /// The first antenna on that rotor becomes current and is returned; null when there is none.
    CVextralAntenna *setCurrentAntennaByRotorId(int rotorId);
    CVextralAntenna *currentAntenna() const;
    int antennaCount() const;
    /// No range check. Null once the antenna is gone.
    CVextralAntenna *antennaAt(int index) const;
    std::vector<CVextralAntenna *> antennas() const;
    /// The display of an antenna, or null.
    CRotationDigitalDisplayWidget *displayOf(const CVextralAntenna *antenna) const;
    /// Sets the antenna's display to whole degrees, also while the operator is changing it.
    void showInDisplay(const CVextralAntenna *antenna, int degrees);

    /// Width of the map image in compass diameters; any number, no bounds.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    /// The map's own numbers. Anything but Extended is a row of displays without compass.
    enum Arrangement { Row = 0, Extended = 1 };
    int interfaceMode() const { return m_interfaceMode; }
    void setInterfaceMode(int mode);
    /// Loads the map image again from beside the executable.
    void reloadMap();

    void refreshDisplays(bool fixedFlags, bool enabledFlags);
    /// Shows each antenna's angle, in whole degrees, in its display unless the operator is changing it.
    void syncDisplays();

    /// The operator typed a direction for the current antenna, in degrees.
    void doChangeTargetAngleValue(int angle);
    void setTargetOfCurrent(int angle);

    /// Starts the animation timer; `ticks` of 88 ms is how long an animated turn takes.
    void setAnimationTicks(double ticks);
    double animationTicks() const { return m_animationTicks; }
    /// Draws `antenna` from `from` degrees on, moving so that it reaches `to` degrees after animationTicks()
    /// ticks. Null ends the animation.
    void startAnimation(CVextralAntenna *antenna, double from, double to);
    void stopAnimation();
    /// Moves the antenna's arrow from `from` to `to` degrees over `periodMs`, the time until the next poll.
    void animate(CVextralAntenna *antenna, double from, double to, int periodMs);
    /// Degrees per tick, negative for counter-clockwise.
    double animationStep() const { return m_animationStep; }
    bool isAnimating() const { return m_animationTimer.isActive(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void onAntennaTargetChanged(CVextralAntenna *antenna);
    void onCurrentAntennaChanged(CVextralAntenna *antenna);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private slots:
    void onRotationStarted();
    void onRotationChanging(int rotation);
    void onRotationChanged(int rotation);
    void animate();

private:
    bool isExtended() const { return m_interfaceMode == Extended; }
    /// An antenna, null once it is gone, and its display, a child of the map.
    struct Shown
    {
        QPointer<CVextralAntenna> antenna;
        CRotationDigitalDisplayWidget *display = nullptr;
    };

    CVextralRemoteControl *controllerFor(const CVextralAntenna *antenna) const;
    CRotationDigitalDisplayWidget *createDisplay(CVextralAntenna *antenna);
    CVextralAntenna *antennaOf(const QObject *display) const;
    void layoutDisplays();
    void selectCurrent();
    /// Lets the controller take the antenna over, and shows it.
    bool takeOver(CVextralAntenna *antenna, const char *operation);
    void updateDescription();

    QPointer<CVextralRemoteControl> m_controller;
    int m_interfaceMode = Extended;
    double m_animationTicks = AzimuthalAnimation::ticksIn(1500);
    double m_animationStep = AzimuthalAnimation::restingStep;
    QTimer m_animationTimer;
    QPointer<CVextralAntenna> m_animatedAntenna;
    std::vector<Shown> m_shown; ///< In the order of addAntenna().
    double m_zoom = 1.7;
    QPointer<CVextralAntenna> m_currentAntenna;
    std::unique_ptr<AzimuthalView> m_view;
};
