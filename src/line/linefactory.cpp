// SPDX-License-Identifier: MIT
#include "line/linefactory.h"

#include "line/networkaddress.h"
#include "line/networkline.h"
#include "line/serialline.h"

std::unique_ptr<Line> createLine(const QString &portName)
{
    if (NetworkAddress::isMeantBy(portName))
        return std::make_unique<NetworkLine>(portName);
    return std::make_unique<SerialLine>(portName);
}
