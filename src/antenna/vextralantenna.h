// SPDX-License-Identifier: MIT
#pragma once

#include "antenna/arrowpicture.h"
#include "compass/degrees.h"
#include "device/devicestatus.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>

class CVextralAntennaUI;
class CVextralAzimuthalWidget;
class CVextralRemoteControl;
class QSvgRenderer;

/// One antenna: where it points, where it is being turned to, which rotor turns it, its name, colour and
/// pictures.
///
/// Angles are compass degrees. `angle` is the last known azimuth, `rotation` the azimuth that is drawn while
/// the antenna moves, and `target` the azimuth it turns to, unknownAngle for none. The controller creates the
/// antennas and keeps them in index order; map and editor are not owned.
class CVextralAntenna : public QObject
{
    Q_OBJECT

public:
    /// `svgPath` is the resource of the main picture, `index` the 0-based position in the controller's list.
    CVextralAntenna(const QString &svgPath, int index);
    ~CVextralAntenna() override;

    /// Adds the two pictures for an antenna without a usable rotor, and recolours all of them.
    void setSvgResources(const QString &first, const QString &second);

    QColor color() const { return m_color; }
    /// Rebuilds the recolourable pictures: getters of renderers give new objects afterwards.
    void setColor(const QColor &color);

    double angle() const { return m_angle; }
    /// Stores the direction as given and shows it in the bound editor.
    void setAngle(double angle);
    double rotation() const { return m_rotation; }
    /// Stores the drawn direction, folded once into [0, 360).
    void setRotation(double rotation);

    double target() const { return m_target; }
    void setTarget(double target);
    /// Makes the target the previous one and clears it.
    void clearTarget();
    double previousTarget() const { return m_previousTarget; }
    void setPreviousTarget(double target) { m_previousTarget = target; }
    bool hasPendingTarget() const { return m_target != m_angle; }

    int rotorId() const { return m_rotorId; }
    void setRotorId(int rotorId) { m_rotorId = rotorId; }
    int index() const { return m_index; }
    void setIndex(int index) { m_index = index; }
    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    /// Set while the controller sees the rotor turn this antenna.
    bool isRotating() const { return m_rotating; }
    void setRotating(bool rotating) { m_rotating = rotating; }

    /// False while the rotator gives no reading; the angle is then the last one read.
    bool isReadingKnown() const { return m_readingKnown; }
    void setReadingKnown(bool known) { m_readingKnown = known; }

    CVextralRemoteControl *controller() const;
    void setController(CVextralRemoteControl *controller);
    CVextralAzimuthalWidget *map() const;
    void setMap(CVextralAzimuthalWidget *map);
    CVextralAntennaUI *editor() const;
    /// Binds `editor`, which shows the antenna then; null unbinds.
    void setEditor(CVextralAntennaUI *editor);
    /// Lets the bound editor show what changes from poll to poll.
    void refreshEditor();

    /// Whether the antenna's rotor is one that its controller has.
    bool isRotorConnected() const;
    /// Whether the antenna's rotor is the one that the box has selected, as of the last status.
    bool rotorStatusFlag() const;

    CDeviceStatus status() const { return m_status; }
    void setStatus(const CDeviceStatus &status) { m_status = status; }

    QSvgRenderer *bodyRenderer() const { return m_body.renderer(); }
    QSvgRenderer *arrowRenderer() const { return m_arrow.renderer(); }
    /// Null until setSvgResources().
    QSvgRenderer *secondRenderer() const { return m_second ? m_second->renderer() : nullptr; }
    /// Null until setSvgResources().
    QSvgRenderer *thirdRenderer() const { return m_third ? m_third->renderer() : nullptr; }

signals:
    /// The rotor that turns this antenna came to rest.
    void onRotationDone();

private:
    double m_rotation = 0.0;
    CDeviceStatus m_status;
    QPointer<CVextralRemoteControl> m_controller;
    int m_index;
    int m_rotorId = -1;
    QString m_name;
    QPointer<CVextralAzimuthalWidget> m_map;
    QPointer<CVextralAntennaUI> m_editor;
    bool m_enabled = false;
    ArrowPicture m_body;
    ArrowPicture m_arrow;
    std::optional<ArrowPicture> m_second;
    std::optional<ArrowPicture> m_third;
    bool m_rotating = false;
    bool m_readingKnown = true;
    double m_angle = 0.0;
    QColor m_color;
    double m_target = unknownAngle;
    double m_previousTarget = unknownAngle;
};
