// SPDX-License-Identifier: MIT
#include "mainwindow/stationmapentry.h"

#include "dialogs/stationmapdialog.h"
#include "widgets/map/azimuthalmapimage.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <functional>

void addStationMapEntry(QMenu *menu, QWidget *window, const std::function<void()> &showNewMap)
{
    auto *entry = new QAction(QObject::tr("&Map of My Station..."), menu);
    entry->setObjectName(QStringLiteral("actionStationMap"));
    QObject::connect(entry, &QAction::triggered, window, [window, showNewMap] {
        auto *dialog = new CStationMapDialog(AzimuthalMapImage::installedPath(), window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(dialog, &QDialog::accepted, window, showNewMap);
        dialog->open();
    });

    // Quit stays the last entry, below the line.
    const QList<QAction *> entries = menu->actions();
    const auto line = std::find_if(entries.begin(), entries.end(), std::mem_fn(&QAction::isSeparator));
    menu->insertAction(line == entries.end() ? nullptr : *line, entry);
}
