// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/4sanchorlayout.h"

#include <QObject>

class CAntennaButton;
class CRotationDialWidget;
class CRotationDigitalDisplayWidget;

/// The rotator's own widgets on the front panel: the buttons CCW, STOP and CW, a digital display and a dial,
/// which scale with it. They belong to the front panel, and so does this.
///
/// STOP can be reached in more ways than a button: by any mouse button on it, and by Esc wherever in the
/// program it is pressed, besides what Esc does there. Dialogs of the operating system keep their keys.
class RotatorPanel : public QObject
{
    Q_OBJECT

public:
    /// The front panel's present size becomes the design size.
    explicit RotatorPanel(QWidget *frontPanel);

    struct Lamps
    {
        bool ccw = false;
        bool stop = false;
        bool cw = false;
        /// STOP was pressed before the antenna was seen moving, and now it moves.
        bool stopAgain = false;
    };
    void showLamps(const Lamps &lamps);
    /// Whole degrees, -1 for a failed reading. A display that the operator is changing keeps its value.
    void showAzimuth(int degrees);
    void relayout();
    /// Whether the operator is choosing an azimuth on the display or the dial.
    bool isChoosing() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

    CRotationDigitalDisplayWidget *display() const { return m_display; }
    CAntennaButton *ccwButton() const { return m_ccwButton; }
    CAntennaButton *cwButton() const { return m_cwButton; }
    CRotationDialWidget *dial() const { return m_dial; }

signals:
    void onStopPressed();
    void onStopReleased();
    /// STOP by key: pressed and released.
    void onStopKey();

private:
    bool isStop(const QObject *watched, const QEvent *event) const;
    void stopByKey();
    void place(QWidget *widget, const QRect &rect);
    void placeButton(CAntennaButton *button, const QRect &rect, const QString &toolTip);

    CRotationDigitalDisplayWidget *const m_display;
    CAntennaButton *const m_ccwButton;
    CAntennaButton *const m_cwButton;
    CAntennaButton *const m_stopButton;
    CRotationDialWidget *const m_dial;
    C4SAnchorLayout m_layout;
    /// The same key press goes to the window, to the field and to all that the field lies in.
    bool m_escapeSeen = false;
};
