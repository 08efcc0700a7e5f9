// SPDX-License-Identifier: MIT
#pragma once

class CVextralRemoteControl;
class QString;

/// The title of a controller's window: its model, and the number and name of the relay box if the model's
/// boxes have a number.
QString windowTitleOf(CVextralRemoteControl &controller);
