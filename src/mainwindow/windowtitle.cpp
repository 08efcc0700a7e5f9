// SPDX-License-Identifier: MIT
#include "mainwindow/windowtitle.h"

#include "device/vextralremotecontrol.h"

QString windowTitleOf(CVextralRemoteControl &controller)
{
    const QString prefix = QStringLiteral("Vextral - ");
    const QString model = controller.modelName();
    const QString name = controller.relayBoxName();
    if (controller.capabilityA())
        return prefix + QStringLiteral("%1 %2 %3").arg(model, QString::number(controller.relayBoxId()), name);
    return prefix + model + QLatin1String(" : ") + name;
}
