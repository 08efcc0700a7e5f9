// SPDX-License-Identifier: MIT
#include "app/resources.h"

#include <QtGlobal>

void initResources()
{
    Q_INIT_RESOURCE(resources);
}
