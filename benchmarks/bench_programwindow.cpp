// SPDX-License-Identifier: MIT
#include "app/program.h"
#include "device/devicekt240m.h"
#include "device/devicelumen4s.h"
#include "firstpaint.h"
#include "settings/settings.h"

#include <QApplication>

// The whole program, which prints a line when its window has been painted: a stack switch, with --rotator a
// rotator. It links what the program links, nothing more: loading a library takes its part of the start.

int main(int argc, char *argv[])
{
    const bool isRotator = argc > 1 && QByteArray(argv[1]) == "--rotator";
    return runProgram(argc, argv, [isRotator](const CSettings &settings) -> CVextralRemoteControl * {
        qApp->installEventFilter(new FirstPaint(qApp));
        if (isRotator)
            return new CDeviceKT240M(settings);
        return new CDeviceLumen4S(settings);
    });
}
