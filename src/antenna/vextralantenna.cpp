// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"

#include "antenna/vextralantennaui.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QLatin1String>

namespace {

const QLatin1String arrowPath(":images/arrow4.svg");

} // namespace

CVextralAntenna::CVextralAntenna(const QString &svgPath, int index)
    : m_index(index), m_body(svgPath), m_arrow(arrowPath)
{
    clearTarget();
}

CVextralAntenna::~CVextralAntenna() = default;

void CVextralAntenna::setSvgResources(const QString &first, const QString &second)
{
    m_second.emplace(first);
    m_third.emplace(second);
    setColor(m_color);
}

void CVextralAntenna::setColor(const QColor &color)
{
    m_color = color;
    m_body.setColor(color);
    if (m_second)
        m_second->setColor(color);
    if (m_third)
        m_third->setColor(color);
}

void CVextralAntenna::setAngle(double angle)
{
    m_angle = angle;
    refreshEditor();
}

void CVextralAntenna::setRotation(double rotation)
{
    m_rotation = foldedAngle(rotation);
}

void CVextralAntenna::setTarget(double target)
{
    m_target = target;
    m_previousTarget = target;
}

void CVextralAntenna::clearTarget()
{
    m_previousTarget = m_target;
    m_target = unknownAngle;
}

CVextralRemoteControl *CVextralAntenna::controller() const
{
    return m_controller;
}

void CVextralAntenna::setController(CVextralRemoteControl *controller)
{
    m_controller = controller;
}

CVextralAzimuthalWidget *CVextralAntenna::map() const
{
    return m_map;
}

void CVextralAntenna::setMap(CVextralAzimuthalWidget *map)
{
    m_map = map;
}

CVextralAntennaUI *CVextralAntenna::editor() const
{
    return m_editor;
}

void CVextralAntenna::setEditor(CVextralAntennaUI *editor)
{
    m_editor = editor;
    if (editor)
        editor->bind(this);
}

void CVextralAntenna::refreshEditor()
{
    if (m_editor)
        m_editor->refresh();
}

bool CVextralAntenna::isRotorConnected() const
{
    return m_controller && m_rotorId >= 0 && m_rotorId < m_controller->rotorCount();
}

bool CVextralAntenna::rotorStatusFlag() const
{
    return isRotorConnected() && m_status.valid && m_status.isRotorSelected(m_rotorId);
}
