#pragma once

class CAntennaLabelEditorDialog;
class CVextralRemoteControl;
class CVextralRemoteControlWidget;
class QWidget;

/// Opens a dialog, modal for `window`, in which the operator edits the captions of the panel's buttons, and
/// returns it. When it is accepted the buttons, the antennas and the settings get the new captions. It
/// deletes itself when it is closed.
CAntennaLabelEditorDialog *editLabels(CVextralRemoteControlWidget *panel, CVextralRemoteControl *controller,
                                      QWidget *window);
