// SPDX-License-Identifier: MIT
#include "mainwindow/currentobjects.h"

#include "device/vextralremotecontrol.h"
#include "dialogs/settingsdialog.h"

#include <QPointer>

namespace {

QPointer<CVextralRemoteControl> currentController;
QPointer<CSettingsDIalog> currentSettingsDialog;

} // namespace

namespace CurrentObjects {

CVextralRemoteControl *controller()
{
    return currentController;
}

void setController(CVextralRemoteControl *controller)
{
    currentController = controller;
}

CSettingsDIalog *settingsDialog()
{
    return currentSettingsDialog;
}

void setSettingsDialog(CSettingsDIalog *dialog)
{
    currentSettingsDialog = dialog;
}

} // namespace CurrentObjects
