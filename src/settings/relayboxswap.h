#pragma once

#include "settings/settings.h"

/// Puts the configuration of relay box `next` in the place of the one of box `current`:
///
///     settings file      ──copy──>  kept file of `current`
///     kept file of `next`  ──copy──>  settings file        (a box seen before)
///     settings file gets id and name of `next`             (a new box)
///
/// Returns the settings that stand then. Their relayBoxId is always `next`, even where the file could not be
/// written, so that the caller never takes a box for another one again and again. A configuration that could
/// not be kept is not replaced, which is told in the log. Killed at any moment, it leaves a whole settings
/// file.
CSettings swapRelayBoxSettings(int current, int next);
