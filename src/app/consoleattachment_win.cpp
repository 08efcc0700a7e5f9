// SPDX-License-Identifier: MIT
#include "app/consoleattachment.h"

#include <windows.h>

#include <cstdio>

void attachToParentConsole()
{
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    // Without these the streams stay unusable, so a failure leaves nothing worse behind.
    static_cast<void>(std::freopen("CONOUT$", "w", stdout));
    static_cast<void>(std::freopen("CONOUT$", "w", stderr));
}
