#include "app/program.h"
#include "device/devicekt240m.h"
#include "settings/settings.h"

// The whole program on a rotator instead of the stack switch.

int main(int argc, char *argv[])
{
    return runProgram(argc, argv, [](const CSettings &settings) { return new CDeviceKT240M(settings); });
}
