// SPDX-License-Identifier: MIT
#include "mainwindow/settingsdialogloan.h"

#include "device/vextralremotecontrol.h"
#include "dialogs/settingsdialog.h"
#include "mainwindow/antennatabs.h"
#include "mainwindow/currentobjects.h"

SettingsDialogLoan::SettingsDialogLoan(QWidget *window) : m_window(window)
{
    dialog();
}

CSettingsDIalog *SettingsDialogLoan::dialog()
{
    if (!CurrentObjects::settingsDialog())
        CurrentObjects::setSettingsDialog(new CSettingsDIalog(m_window));
    return CurrentObjects::settingsDialog();
}

void SettingsDialogLoan::open(CVextralRemoteControl *controller, AntennaTabs *tabs)
{
    if (dialog()->isVisible())
        return;
    m_tabs = tabs;
    tabs->lendTo(dialog());
    dialog()->setNameCaption(controller->modelName() + QLatin1String(" name:"));
    const bool hasId = controller->capabilityA();
    dialog()->setIdRowVisible(hasId);
    if (hasId)
        dialog()->setIdCaption(controller->modelName() + QLatin1String(" id:"));
    dialog()->load();
    connect(dialog(), &QDialog::finished, this, &SettingsDialogLoan::onFinished);
    dialog()->open();
}

void SettingsDialogLoan::onFinished(int result)
{
    // The dialog serves every window of the process; it is this one's until it closes.
    disconnect(dialog(), &QDialog::finished, this, nullptr);
    m_tabs->takeBack();
    m_tabs->finishNames(result == QDialog::Accepted);
    if (result == QDialog::Accepted)
        emit accepted(dialog()->interfaceModeName());
}

void SettingsDialogLoan::close()
{
    CSettingsDIalog *present = CurrentObjects::settingsDialog();
    if (!present)
        return;
    const bool isOurs = present->parent() == m_window;
    if (isOurs || (m_tabs && m_tabs->areLent()))
        present->reject();
    if (isOurs)
        CurrentObjects::setSettingsDialog(nullptr);
}

void SettingsDialogLoan::saveWhereOpen()
{
    if (dialog()->isVisible())
        dialog()->save();
}

void SettingsDialogLoan::reloadWhereOpen()
{
    if (dialog()->isVisible())
        dialog()->load();
}
