// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/panelgeometry.h"

#include <QList>
#include <QPointer>
#include <QWidget>

class CAntennaButton;
class CLedButton;
class CRotationDialWidget;
class CRotationDigitalDisplayWidget;
class CVextralRemoteControl;
class QHelpEvent;
class QLabel;
struct CDeviceStatus;
struct LineState;

/// The painted front panel of the controller box: antenna, transmit and radio buttons, indicators, logo and
/// labels, as many as the bound controller's model has. The model lays them out, or the panel does when the
/// model has no own layout. Models may build further widgets into the panel.
///
/// Buttons are placed by geometry, in widget pixels; none is in a layout. They take no focus and are
/// operated by shortcuts.
class CVextralRemoteControlWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CVextralRemoteControlWidget(QWidget *parent = nullptr);
    ~CVextralRemoteControlWidget() override;

    /// Builds the elements that the controller's model has. Called once, by the controller.
    void bindController(CVextralRemoteControl *controller);
    /// What the bound controller's model has.
    const PanelTraits &traits() const { return m_traits; }
    /// For models that choose one of the panel's arrangements.
    void place(const PanelGeometry &geometry);
    /// Shows an antenna's name on its button, on a new line after each slash.
    void showAntennaName(int index, const QString &name);
    void showRadioNames(const QStringList &names);
    /// An antenna's button does nothing while it is disabled.
    bool isAntennaEnabled(int index) const;
    void setAntennaEnabled(int index, bool enabled);
    /// For models that show an antenna in another way. Without a button at `index` nothing happens.
    void hideAntenna(int index);
    /// Lights one radio and no other.
    void showRadio(int index);
    void showTexts(const QString &title, const QString &largeInfo, const QString &smallInfo);

    /// Lays the elements out over the present size once more, e.g. after an antenna's name changed.
    void relayout();

    /// Lights the buttons of antennas, transmit lines and radios, and the SEND and SPLIT indicators, as a
    /// valid status reports them.
    void showStatus(const CDeviceStatus &status);
    /// Lights the POWER indicator, where the model has one.
    void showPower(bool on);
    /// Explains the line in the tool tip of the POWER indicator, or of the panel where the model has none.
    void showLine(const LineState &state);
    /// Shows an azimuth in degrees, without its fraction, in the digital display unless the operator is
    /// changing the value there.
    void showAzimuth(double degrees);
    /// Shows where the antenna is sent, in whole degrees, in the digital display and on the dial, also while
    /// the operator is changing the value there.
    void showTarget(int degrees);
    /// While the operator is changing a target, polled azimuths leave the digital display and the dial alone.
    void setEditing(bool editing);

    CVextralRemoteControl *controller() const;

    /// The panel's own hidden ones until others are set. Null when another one is gone.
    CRotationDigitalDisplayWidget *digitalDisplay() const;
    void setDigitalDisplay(CRotationDigitalDisplayWidget *display);
    CRotationDialWidget *dial() const;
    void setDial(CRotationDialWidget *dial);

    QList<CAntennaButton *> antennaButtons() const { return m_antennaButtons; }
    QList<CLedButton *> txButtons() const { return m_txButtons; }
    QList<CAntennaButton *> radioButtons() const { return m_radioButtons; }

    /// Whether switching one antenna on unchecks the others, for models that lay out the panel themselves.
    void setExclusiveAntennas(bool exclusive) { m_exclusiveAntennas = exclusive; }

    // Each is null when the model does not have it.
    CLedButton *sendIndicator() const { return m_sendIndicator; }
    CLedButton *powerIndicator() const { return m_powerIndicator; }

    QSize sizeHint() const override;

signals:
    void onAtennaButtonChange(int index, bool state);
    void onAtennaTXButtonChange(int index);
    void onToggleRotorButtonChange(int index);
    void onRadioButtonChange(int index, bool state);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private slots:
    void onAntennaButtonStatusChange();
    void onRadioButtonStatusChange();
    void onAntennaTXButtonPressed(bool b);

private:
    void createButtons();
    void createIndicators();
    void createLabels();
    void fitCaptions();
    bool showIndicatorToolTip(const QHelpEvent &event);

    bool m_exclusiveAntennas = true;
    QPointer<CVextralRemoteControl> m_controller;
    PanelTraits m_traits;
    QPointer<CRotationDigitalDisplayWidget> m_digitalDisplay;
    QPointer<CRotationDialWidget> m_dial;
    QList<CLedButton *> m_txButtons;
    QList<CAntennaButton *> m_antennaButtons;
    QList<CAntennaButton *> m_radioButtons;
    CLedButton *m_sendIndicator = nullptr;
    CLedButton *m_powerIndicator = nullptr;
    CLedButton *m_splitIndicator = nullptr;
    QLabel *m_logoLabel = nullptr;
    QLabel *m_largeInfoLabel = nullptr;
    QLabel *m_smallInfoLabel = nullptr;
    QLabel *m_titleLabel = nullptr;
};
