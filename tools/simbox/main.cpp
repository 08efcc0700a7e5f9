// SPDX-License-Identifier: MIT
#include "simbox/boxoptions.h"
#include "simbox/boxorders.h"
#include "simbox/console.h"
#include "simbox/traffictext.h"

#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>

namespace {

void show(const QString &text)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

int complain(const QString &text)
{
    std::fprintf(stderr, "vextral-simbox: %s\n", qUtf8Printable(text));
    return EXIT_FAILURE;
}

void prepare(BoxLine &line, const BoxOptions &options)
{
    line.withBox([&options](SimulatedBox &box) {
        box.setRelayBoxId(options.relayBox);
        for (int i = 0; i < SimulatedBox::RotorCount; ++i)
            box.rotor(i).setSpeed(options.speed);
    });
    line.setListener([&line, &options](const BoxLine::Traffic &piece) {
        if (!options.quiet)
            show(QStringLiteral("%1  %2  %3")
                     .arg(QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss.zzz")),
                          piece.fromProgram ? QStringLiteral("box hears") : QStringLiteral("box says "),
                          trafficText(piece.bytes)));
        line.clearReceived(); // it may run for days
    });
}

void introduce(const BoxLine &line, const BoxOptions &options)
{
    const bool isRotator = options.model == SimulatedBox::Model::Rotator;
    show(QStringLiteral(
             "A simulated %1 answers on %2 (%3).\n"
             "To use it, type %2 as serial port under File, Preferences, and start the program again.\n"
             "Type help for what can be done to the box, quit to end it.")
             .arg(isRotator ? QStringLiteral("rotator") : QStringLiteral("stack switch"), line.portName(),
                  line.place()));
}

void obey(BoxOrders &orders, const QString &order)
{
    if (orders.wantsToQuit())
        return;
    const QString outcome = orders.obey(order);
    if (!outcome.isEmpty())
        show(outcome);
    if (orders.wantsToQuit())
        QCoreApplication::quit();
}

int serve(const QCoreApplication &application)
{
    QString error;
    const std::optional<BoxOptions> options = BoxOptions::read(application, &error);
    if (!options)
        return complain(error);
    if (!Console::quitOnSignals())
        return complain(QStringLiteral("cannot catch signals."));

    const std::unique_ptr<BoxLine> line = options->makeLine();
    prepare(*line, *options);
    if (!line->start())
        return complain(line->errorText());
    introduce(*line, *options);

    BoxOrders orders(*line);
    Console::readOrders([&orders](const QString &order) { obey(orders, order); });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    Console::occupyStandardDescriptors();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vextral-simbox"));
    return Console::leave(serve(application));
}
