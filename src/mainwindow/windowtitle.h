#pragma once

class CVextralRemoteControl;
class QString;

/// What the window of a controller is called: its model, and the relay box with its number where the model's
/// boxes have one.
QString windowTitleOf(CVextralRemoteControl &controller);
