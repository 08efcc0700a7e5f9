// SPDX-License-Identifier: MIT
#include "mainwindow/antennatabs.h"

#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "dialogs/settingsdialog.h"
#include "settings/settings.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QLayout>
#include <QSignalBlocker>
#include <QTabWidget>

AntennaTabs::AntennaTabs(QTabWidget *tabs, QLayout *home, CVextralRemoteControl *controller)
    : m_tabs(tabs), m_home(home), m_controller(controller)
{}

void AntennaTabs::createEditors()
{
    for (int i = 0; i < m_controller->antennaCount(); ++i) {
        CVextralAntenna *antenna = m_controller->antenna(i);
        if (!antenna)
            break;
        auto *editor = new CVextralAntennaUI(m_controller->rotorCount(), m_tabs);
        m_tabs->addTab(editor, QStringLiteral("Antenna %1").arg(i + 1));
        antenna->setEditor(editor);
        m_controller->setupAntennaEditor(editor);
        connect(editor, &CVextralAntennaUI::onNameEdited, this, &AntennaTabs::nameEdited);
    }
}

void AntennaTabs::apply(const CSettings &settings, CVextralAzimuthalWidget *map)
{
    for (int i = 0; i < m_controller->antennaCount() && i < CSettings::elementCount; ++i) {
        CVextralAntenna *antenna = m_controller->antenna(i);
        if (!antenna)
            break;
        const auto element = std::size_t(i);
        antenna->setColor(settings.colors[element]);
        antenna->setEnabled(settings.enabled[element]);
        antenna->setAngle(settings.angles[element]);
        antenna->setTarget(settings.angles[element]);
        antenna->setRotating(false);
        antenna->setName(settings.names[element]);

        map->showInDisplay(antenna, shownDegrees(settings.angles[element]));
        if (CVextralAntennaUI *editor = antenna->editor())
            editor->showSettings();
        m_tabs->setTabText(i, QStringLiteral("A%1").arg(i + 1));
    }
}

void AntennaTabs::select(const CVextralAntenna *antenna)
{
    if (!antenna)
        return;
    const QSignalBlocker blocker(m_tabs);
    m_tabs->setCurrentIndex(antenna->index());
}

void AntennaTabs::followTab(int index)
{
    const CVextralAntenna *antenna = m_controller ? m_controller->antenna(index) : nullptr;
    // Asking for the selected rotor reads the box: not for an antenna that no rotor turns.
    if (!antenna || !antenna->isRotorConnected())
        return;
    const int selected = m_controller->currentRotor(nullptr);
    // Another tab may have been chosen while the box was asked.
    if (m_tabs->currentIndex() != index)
        return;
    if (selected >= 0 && selected != antenna->rotorId())
        m_controller->setCurrentRotor(antenna->rotorId());
}

void AntennaTabs::lendTo(CSettingsDIalog *dialog)
{
    m_borrower = dialog;
    dialog->setAntennaEditors(m_tabs);
}

void AntennaTabs::takeBack()
{
    if (!m_borrower)
        return;
    m_home->addWidget(m_borrower->takeAntennaEditors());
    m_tabs->show();
    m_borrower.clear();
}

bool AntennaTabs::areLent() const
{
    return m_borrower;
}

std::vector<CVextralAntennaUI *> AntennaTabs::editors() const
{
    std::vector<CVextralAntennaUI *> editors;
    for (int i = 0; i < m_tabs->count(); ++i) {
        if (auto *editor = qobject_cast<CVextralAntennaUI *>(m_tabs->widget(i)))
            editors.push_back(editor);
    }
    return editors;
}

void AntennaTabs::finishNames(bool keep)
{
    for (CVextralAntennaUI *editor : editors())
        editor->finishName(keep);
}

void AntennaTabs::giveUp()
{
    for (CVextralAntennaUI *editor : editors())
        editor->giveUp();
}
