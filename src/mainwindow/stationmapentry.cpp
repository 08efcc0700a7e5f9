#include "mainwindow/stationmapentry.h"

#include "dialogs/stationmapdialog.h"
#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <functional>

void addStationMapEntry(QMenu *menu, CVextralAzimuthalWidget *map)
{
    auto *entry = new QAction(QObject::tr("&Map of My Station..."), menu);
    entry->setObjectName(QStringLiteral("actionStationMap"));
    QObject::connect(entry, &QAction::triggered, map, [map] {
        auto *dialog = new CStationMapDialog(AzimuthalMapImage::installedPath(), map->window());
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(dialog, &QDialog::accepted, map, &CVextralAzimuthalWidget::reloadMap);
        dialog->open();
    });

    // Quit stays the last entry, below the line.
    const QList<QAction *> entries = menu->actions();
    const auto line = std::find_if(entries.begin(), entries.end(), std::mem_fn(&QAction::isSeparator));
    menu->insertAction(line == entries.end() ? nullptr : *line, entry);
}
