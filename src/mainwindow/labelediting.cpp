// SPDX-License-Identifier: MIT
#include "mainwindow/labelediting.h"

#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "device/vextralremotecontrol.h"
#include "dialogs/antennalabeleditordialog.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/vextralremotecontrolwidget.h"

namespace {

std::vector<CAntennaButton *> toVector(const QList<CAntennaButton *> &buttons)
{
    return {buttons.begin(), buttons.end()};
}

/// Gives the buttons the captions that were changed on their copies, and keeps them as names.
void takeCaptions(const std::vector<CAntennaButton *> &copies, const QList<CAntennaButton *> &buttons,
                  CSettings::Elements<QString> &names)
{
    for (int i = 0; i < buttons.size(); ++i) {
        const QString caption = copies[std::size_t(i)]->text();
        if (caption == buttons[i]->text())
            continue;
        buttons[i]->setText(caption);
        if (i < CSettings::elementCount)
            names[std::size_t(i)] = nameOfCaption(caption);
    }
}

void takeLabels(const CAntennaLabelEditorDialog &dialog, CVextralRemoteControlWidget *panel,
                const CVextralRemoteControl &controller)
{
    CSettings settings;
    takeCaptions(dialog.antennaButtons(), panel->antennaButtons(), settings.names);
    takeCaptions(dialog.radioButtons(), panel->radioButtons(), settings.radioNames);
    settings.save();
    const int named = qMin(int(panel->antennaButtons().size()), CSettings::elementCount);
    for (CVextralAntenna *antenna : controller.antennas()) {
        if (antenna->index() >= named)
            continue;
        antenna->setName(settings.names[std::size_t(antenna->index())]);
        if (CVextralAntennaUI *editor = antenna->editor())
            editor->finishName(false);
    }
    panel->relayout();
}

} // namespace

QDialog *editLabels(CVextralRemoteControlWidget *panel, CVextralRemoteControl *controller, QWidget *window)
{
    auto *dialog = new CAntennaLabelEditorDialog(toVector(panel->antennaButtons()),
                                                 toVector(panel->radioButtons()), window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, controller,
                     [dialog, panel, controller] { takeLabels(*dialog, panel, *controller); });
    dialog->open();
    return dialog;
}
