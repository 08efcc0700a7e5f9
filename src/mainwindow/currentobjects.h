// SPDX-License-Identifier: MIT
#pragma once

class CSettingsDIalog;
class CVextralRemoteControl;

/// The process's one controller and one settings dialog. The window that owns them sets and clears them; both
/// are null before that window is made and after it is gone.
namespace CurrentObjects {

CVextralRemoteControl *controller();
void setController(CVextralRemoteControl *controller);

CSettingsDIalog *settingsDialog();
void setSettingsDialog(CSettingsDIalog *dialog);

} // namespace CurrentObjects
