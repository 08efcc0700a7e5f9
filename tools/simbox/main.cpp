#include "simbox/boxorders.h"
#include "simbox/ptyline.h"
#include "simbox/traffictext.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSocketNotifier>

#include <cctype>
#include <csignal>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int ReadSize = 4096;
int signalPipe[2] = {-1, -1};

const QString linkOption = QStringLiteral("link");
const QString modelOption = QStringLiteral("model");
const QString speedOption = QStringLiteral("speed");
const QString relayBoxOption = QStringLiteral("relay-box");
const QString quietOption = QStringLiteral("quiet");
const QString stackModel = QStringLiteral("stack");
const QString rotatorModel = QStringLiteral("rotator");

struct Options
{
    QString link;
    SimulatedBox::Model model = SimulatedBox::Model::StackSwitch;
    double speed = 0.0;
    int relayBox = 0;
    bool quiet = false;
};

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

// A program started with its standard input closed would get the pseudo-terminal as descriptor 0.
void occupyStandardDescriptors()
{
    int descriptor = open("/dev/null", O_RDWR);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = open("/dev/null", O_RDWR);
    if (descriptor >= 0)
        close(descriptor);
}

void onSignal(int)
{
    const char byte = 0;
    if (write(signalPipe[1], &byte, 1) < 0)
        _exit(EXIT_FAILURE);
}

bool catchSignals()
{
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return false;
    for (int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, onSignal);
    // A reader that went away, and a terminal that belongs to somebody else, must not end the box.
    for (int number : {SIGPIPE, SIGTTIN, SIGTTOU})
        std::signal(number, SIG_IGN);
    return true;
}

/// What is wrong with the options; empty when nothing is.
QString judge(const QCommandLineParser &parser)
{
    bool isNumber = false;
    if (parser.value(linkOption).isEmpty())
        return QStringLiteral("--link PATH is missing. See --help.");
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

std::optional<Options> readOptions(const QCoreApplication &application, QString *error)
{
    const SimulatedBox usual;
    const QString speed = QString::number(usual.rotor().speed());
    const QString relayBox = QString::number(usual.relayBoxId());
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A simulated controller box on a pseudo-terminal."));
    parser.addHelpOption();
    parser.addOptions(
        {{linkOption, QStringLiteral("Symbolic link to serve the box on."), QStringLiteral("PATH")},
         {modelOption, QStringLiteral("stack (default) or rotator."), QStringLiteral("NAME"), stackModel},
         {speedOption, QStringLiteral("Speed of the rotors (default %1).").arg(speed),
          QStringLiteral("DEG_PER_S"), speed},
         {relayBoxOption, QStringLiteral("Relay box id, 0 to 15 (default %1).").arg(relayBox),
          QStringLiteral("N"), relayBox},
         {quietOption, QStringLiteral("Do not print the traffic.")}});
    parser.process(application);
    *error = judge(parser);
    if (!error->isEmpty())
        return std::nullopt;

    Options options;
    options.link =
        QFileInfo(parser.value(linkOption)).absoluteFilePath(); // the program takes full paths only
    if (parser.value(modelOption) == rotatorModel)
        options.model = SimulatedBox::Model::Rotator;
    options.speed = parser.value(speedOption).toDouble();
    options.relayBox = parser.value(relayBoxOption).toInt();
    options.quiet = parser.isSet(quietOption);
    return options;
}

void prepare(PtyLine &line, const Options &options)
{
    line.withBox([&options](SimulatedBox &box) {
        box.setRelayBoxId(options.relayBox);
        for (int i = 0; i < SimulatedBox::RotorCount; ++i)
            box.rotor(i).setSpeed(options.speed);
    });
    line.setListener([&line, &options](const PtyLine::Traffic &piece) {
        if (!options.quiet)
            show(QStringLiteral("%1  %2  %3")
                     .arg(QDateTime::currentDateTime().toString(QStringLiteral("HH:mm:ss.zzz")),
                          piece.fromProgram ? QStringLiteral("box hears") : QStringLiteral("box says "),
                          trafficText(piece.bytes)));
        line.clearReceived(); // it may run for days
    });
}

/// A text as a settings file holds it. What is not plain ASCII is escaped, and so is a digit that would count
/// with an escape.
QString settingsValue(const QString &text)
{
    QString value;
    bool afterEscape = false;
    for (const QChar letter : text) {
        const ushort code = letter.unicode();
        const bool plain = code >= ' ' && code <= '~' && code != '"' && code != '\\'
                        && !(afterEscape && std::isxdigit(code));
        value += plain ? QString(letter) : QStringLiteral("\\x%1").arg(uint(code), 0, 16);
        afterEscape = !plain;
    }
    return QLatin1Char('"') + value + QLatin1Char('"');
}

void introduce(const PtyLine &line, const Options &options)
{
    const bool isRotator = options.model == SimulatedBox::Model::Rotator;
    show(QStringLiteral("A simulated %1 answers on %2 (%3).\n"
                        "To use it, put this line into VextralRemoteControl.ini beside the program, then "
                        "start the program:\n"
                        "    comPortName=%4\n"
                        "Type help for what can be done to the box, quit to end it.")
             .arg(isRotator ? QStringLiteral("rotator") : QStringLiteral("stack switch"), line.linkPath(),
                  line.slavePath(), settingsValue(line.linkPath())));
}

// Standard input, line by line. Its end is not the end of the box, which may run in the background.
class OrderReader
{
public:
    OrderReader(BoxOrders &orders, QSocketNotifier &notifier) : m_orders(orders), m_notifier(notifier) {}

    void read()
    {
        char buffer[ReadSize];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            m_notifier.setEnabled(false);
            return;
        }
        m_pending.append(buffer, int(count));
        int end = 0;
        while ((end = m_pending.indexOf('\n')) >= 0 && !m_orders.wantsToQuit()) {
            const QString outcome = m_orders.obey(QString::fromLocal8Bit(m_pending.left(end)));
            m_pending.remove(0, end + 1);
            if (!outcome.isEmpty())
                show(outcome);
        }
        if (m_orders.wantsToQuit())
            QCoreApplication::quit();
    }

private:
    BoxOrders &m_orders;
    QSocketNotifier &m_notifier;
    QByteArray m_pending;
};

} // namespace

int main(int argc, char *argv[])
{
    occupyStandardDescriptors();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vextral-simbox"));
    QString error;
    const std::optional<Options> options = readOptions(application, &error);
    if (!options)
        return complain(error);
    if (!catchSignals())
        return complain(QStringLiteral("cannot catch signals."));

    PtyLine line(options->link, options->model);
    prepare(line, *options);
    if (!line.start())
        return complain(line.errorText());
    introduce(line, *options);

    QSocketNotifier signalNotifier(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&signalNotifier, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    BoxOrders orders(line);
    QSocketNotifier inputNotifier(STDIN_FILENO, QSocketNotifier::Read);
    OrderReader reader(orders, inputNotifier);
    QObject::connect(&inputNotifier, &QSocketNotifier::activated, &application, [&reader] { reader.read(); });
    return QCoreApplication::exec();
}
