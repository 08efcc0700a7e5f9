#include "app/program.h"
#include "device/devicekt240m.h"
#include "rotctld/rotctlddevice.h"
#include "rotctld/rotctldserver.h"
#include "settings/settings.h"

#include <QCoreApplication>
#include <QStringList>

#include <memory>

// The whole program on a rotator instead of the stack switch, which lets the network turn it when asked to:
//
//     vextral-rotator [--rotctld [ADDRESS:]PORT]

int main(int argc, char *argv[])
{
    return runProgram(argc, argv, [](const CSettings &settings) {
        auto *device = new CDeviceKT240M(settings);
        const QStringList arguments = QCoreApplication::arguments();
        const int option = arguments.indexOf(QStringLiteral("--rotctld"));
        if (option > 0) {
            auto *server = new RotctldServer(std::make_unique<RotctldDevice>(*device), device);
            server->listen(arguments.value(option + 1));
        }
        return device;
    });
}
