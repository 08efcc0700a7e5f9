// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QMenu;
class QWidget;

/// Adds "Map of My Station..." to the menu. It opens the dialog that draws the map over `window`, and calls
/// `showNewMap` when a new one has been put in place.
void addStationMapEntry(QMenu *menu, QWidget *window, const std::function<void()> &showNewMap);
