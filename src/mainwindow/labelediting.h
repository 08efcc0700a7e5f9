// SPDX-License-Identifier: MIT
#pragma once

class CVextralRemoteControl;
class CVextralRemoteControlWidget;
class QDialog;
class QWidget;

/// Opens a dialog, modal for `window`, in which the operator edits the captions of the panel's buttons, and
/// returns it. When it is accepted the buttons, the antennas and the settings get the new captions. It
/// deletes itself when it is closed.
QDialog *editLabels(CVextralRemoteControlWidget *panel, CVextralRemoteControl *controller, QWidget *window);
