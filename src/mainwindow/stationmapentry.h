#pragma once

class CVextralAzimuthalWidget;
class QMenu;

/// Adds "Map of My Station..." to the menu. It opens the dialog that draws the map, and the map widget shows
/// the new one.
void addStationMapEntry(QMenu *menu, CVextralAzimuthalWidget *map);
