#pragma once

class CSettingsDIalog;
class CVextralRemoteControl;

/// The two objects of which a process has one each. The window that owns them sets them and clears them; both
/// are null before it stands and after it is gone.
namespace CurrentObjects {

CVextralRemoteControl *controller();
void setController(CVextralRemoteControl *controller);

CSettingsDIalog *settingsDialog();
void setSettingsDialog(CSettingsDIalog *dialog);

} // namespace CurrentObjects
