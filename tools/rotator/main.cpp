// SPDX-License-Identifier: MIT
#include "app/program.h"
#include "device/devicekt240m.h"
#include "rotctld/rotctlddevice.h"
#include "rotctld/rotctldserver.h"
#include "settings/settings.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <memory>
#include <optional>

// The whole program on a rotator instead of the stack switch, which lets the network turn it when asked to:
//
//     vextral-rotator [--rotctld [ADDRESS:]PORT]

namespace {

/// Ends the program with a message when the options are wrong. Qt has taken its own ones out of them.
std::optional<QString> networkPlace()
{
    const QCommandLineOption rotctld(
        QStringLiteral("rotctld"),
        QStringLiteral("Let programs on the network turn the rotator, as Hamlib's rotctld does. Without an "
                       "ADDRESS only those on this computer may connect. The usual port is %1.")
            .arg(RotctldServer::usualPort),
        QStringLiteral("[ADDRESS:]PORT"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(rotctld);
    parser.process(*QCoreApplication::instance());
    if (!parser.positionalArguments().isEmpty())
        parser.showHelp(EXIT_FAILURE);
    return parser.isSet(rotctld) ? std::optional(parser.value(rotctld)) : std::nullopt;
}

} // namespace

int main(int argc, char *argv[])
{
    return runProgram(argc, argv, [](const CSettings &settings) {
        const std::optional<QString> place = networkPlace();
        auto *device = new CDeviceKT240M(settings);
        if (place) {
            auto *server = new RotctldServer(std::make_unique<RotctldDevice>(*device), device);
            server->listen(*place);
        }
        return device;
    });
}
