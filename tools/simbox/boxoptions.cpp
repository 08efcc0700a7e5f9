// SPDX-License-Identifier: MIT
#include "simbox/boxoptions.h"

#include "simbox/tcpline.h"
#ifdef Q_OS_LINUX
#include "simbox/ptyline.h"
#endif

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

namespace {

const QString linkOption = QStringLiteral("link");
const QString listenOption = QStringLiteral("listen");
const QString modelOption = QStringLiteral("model");
const QString speedOption = QStringLiteral("speed");
const QString relayBoxOption = QStringLiteral("relay-box");
const QString quietOption = QStringLiteral("quiet");
const QString stackModel = QStringLiteral("stack");
const QString rotatorModel = QStringLiteral("rotator");

void addOptions(QCommandLineParser &parser)
{
    const SimulatedBox usual;
    const QString speed = QString::number(usual.rotor().speed());
    const QString relayBox = QString::number(usual.relayBoxId());
    parser.setApplicationDescription(QStringLiteral("A simulated controller box on a line."));
    parser.addHelpOption();
#ifdef Q_OS_LINUX
    parser.addOption({linkOption,
                      QStringLiteral("Serve the box on a pseudo-terminal behind this symbolic link."),
                      QStringLiteral("PATH")});
#endif
    parser.addOptions(
        {{listenOption,
          QStringLiteral("Serve the box over TCP, to one program at a time; without an address to this "
                         "machine alone."),
          QStringLiteral("[ADDRESS:]PORT")},
         {modelOption, QStringLiteral("stack (default) or rotator."), QStringLiteral("NAME"), stackModel},
         {speedOption, QStringLiteral("Speed of the rotors (default %1).").arg(speed),
          QStringLiteral("DEG_PER_S"), speed},
         {relayBoxOption, QStringLiteral("Relay box id, 0 to 15 (default %1).").arg(relayBox),
          QStringLiteral("N"), relayBox},
         {quietOption, QStringLiteral("Do not print the traffic.")}});
}

/// What is wrong with the options for the line; empty when nothing is.
QString judgeLine(const BoxOptions &options)
{
#ifdef Q_OS_LINUX
    if (options.link.isEmpty() == options.listen.isEmpty())
        return QStringLiteral("Give either --link PATH or --listen [ADDRESS:]PORT. See --help.");
#else
    if (options.listen.isEmpty())
        return QStringLiteral("--listen [ADDRESS:]PORT is missing. See --help.");
#endif
    if (!options.listen.isEmpty() && !ListenAddress::parse(options.listen))
        return QStringLiteral("--listen is a port from 0 to 65535, with an address before it if you like: "
                              "7000, 0.0.0.0:7000, [::1]:7000.");
    return QString();
}

QString judge(const QCommandLineParser &parser)
{
    bool isNumber = false;
    const QString model = parser.value(modelOption);
    if (model != rotatorModel && model != stackModel)
        return QStringLiteral("--model is stack or rotator.");
    const double speed = parser.value(speedOption).toDouble(&isNumber);
    if (!isNumber || !(speed >= 0.0 && speed <= 3600.0))
        return QStringLiteral("--speed is a number from 0 to 3600.");
    const int relayBox = parser.value(relayBoxOption).toInt(&isNumber);
    if (!isNumber || relayBox < 0 || relayBox > 15)
        return QStringLiteral("--relay-box is a number from 0 to 15.");
    return QString();
}

} // namespace

std::optional<BoxOptions> BoxOptions::read(const QCoreApplication &application, QString *error)
{
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);

    BoxOptions options;
#ifdef Q_OS_LINUX
    if (!parser.value(linkOption).isEmpty())
        options.link =
            QFileInfo(parser.value(linkOption)).absoluteFilePath(); // the program takes full paths only
#endif
    options.listen = parser.value(listenOption);
    if (parser.value(modelOption) == rotatorModel)
        options.model = SimulatedBox::Model::Rotator;
    options.speed = parser.value(speedOption).toDouble();
    options.relayBox = parser.value(relayBoxOption).toInt();
    options.quiet = parser.isSet(quietOption);

    *error = judgeLine(options);
    if (error->isEmpty())
        *error = judge(parser);
    return error->isEmpty() ? std::make_optional(options) : std::nullopt;
}

std::unique_ptr<BoxLine> BoxOptions::makeLine() const
{
#ifdef Q_OS_LINUX
    if (!link.isEmpty())
        return std::make_unique<PtyLine>(link, model);
#endif
    return std::make_unique<TcpLine>(ListenAddress::parse(listen).value_or(ListenAddress()), model);
}
