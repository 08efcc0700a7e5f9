// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "app/resources.h"
#include "device/devicelumen4s.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "simbox/ptyline.h"
#include "simbox/tcpline.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSerialPort>
#include <QSettings>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <functional>
#include <memory>
#include <vector>

#include <unistd.h>

// The program's figures as ratios within one run; docs/performance.md explains them. Each figure is the
// median of its rounds.

namespace {

double millisecondsOf(const std::function<void()> &work)
{
    QElapsedTimer time;
    time.start();
    work();
    return time.nsecsElapsed() / 1e6;
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

double medianOf(int rounds, const std::function<double()> &measure)
{
    std::vector<double> values;
    for (int i = 0; i < rounds; ++i)
        values.push_back(measure());
    return median(values);
}

void tell(const char *what, double value, const char *unit, double yardstick, const char *wanted)
{
    std::printf("| %s | %.3f %s | %.3f %s | %.2f | %s |\n", what, value, unit, yardstick, unit,
                value / yardstick, wanted);
    std::fflush(stdout);
}

QString boxLink()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/box");
}

void storePort(const QString &name)
{
    CSettings settings;
    settings.comPortName = name;
    settings.save();
}

// ---- Files ----

void measureSettings()
{
    CSettings().save();
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/yardstick.ini");
    QFile::remove(path);
    QFile::copy(SettingsFile::path(), path);
    const auto bare = [&path] {
        std::vector<QPair<QString, QVariant>> values;
        {
            const QSettings file(path, QSettings::IniFormat);
            const QStringList keys = file.allKeys();
            for (const QString &key : keys)
                values.push_back({key, file.value(key)});
        }
        QSettings file(path, QSettings::IniFormat);
        for (const auto &[key, value] : values)
            file.setValue(key, value);
    };
    const double own = medianOf(200, [] { return millisecondsOf([] { CSettings().save(); }); });
    tell("settings load and save", own, "ms", medianOf(200, [&] { return millisecondsOf(bare); }),
         "at most 1.3");
}

void measureLog()
{
    constexpr int records = 2000;
    const QTemporaryDir folder;
    const QByteArray message(60, 'x');
    CLog log(QStringLiteral("log"), folder.filePath(QString()) + QLatin1Char('/'));
    std::ofstream bare(QFile::encodeName(folder.filePath(QStringLiteral("bare"))).constData(), std::ios::app);
    const QByteArray line = message + QByteArray(60, 'y') + '\n'; // as long as a record
    const auto own = [&] {
        for (int i = 0; i < records; ++i)
            log.write(message.constData());
    };
    const auto yardstick = [&] {
        for (int i = 0; i < records; ++i)
            bare.write(line.constData(), line.size()).flush();
    };
    tell("log record", medianOf(9, [&] { return millisecondsOf(own); }) * 1000 / records, "us",
         medianOf(9, [&] { return millisecondsOf(yardstick); }) * 1000 / records, "at most 3");
}

// ---- The line ----

/// A line over the network connects after it was opened.
void waitForAnswer(const CVextralRemoteControl &controller)
{
    (void)QTest::qWaitFor([&] { return controller.lineState().kind == LineState::Kind::Answering; });
}

constexpr double tickWaits = 100; // K0

void measureWaits()
{
    constexpr double synchronisationWaits = 100 + 100 + 100 + 20 + 100; // K0, pause, K0, K9, K0
    PtyLine line(boxLink());
    line.start();
    CSettings settings;
    std::vector<double> passes;
    std::vector<double> ticks;
    for (int i = 0; i < 5; ++i) {
        CDeviceLumen4S controller(settings);
        controller.setRelayBoxId(1);
        passes.push_back(millisecondsOf([&] { controller.open(boxLink()); }));
        for (int tick = 0; tick < 5; ++tick)
            ticks.push_back(millisecondsOf([&] { controller.monitore(); }));
    }
    tell("one monitoring tick, against its waits", median(ticks), "ms", tickWaits, "at most 1.05");
    tell("synchronisation pass, against its waits", median(passes), "ms", synchronisationWaits,
         "at most 1.05");
}

void measureNetworkTick()
{
    TcpLine line;
    line.start();
    CSettings settings;
    CDeviceLumen4S controller(settings);
    controller.setRelayBoxId(1);
    controller.open(line.portName());
    waitForAnswer(controller);
    const double tick = medianOf(25, [&] { return millisecondsOf([&] { controller.monitore(); }); });
    tell("one monitoring tick over the network", tick, "ms", tickWaits, "at most 1.05");
}

/// Measures how long after an act the far end received the first command.
class Listener
{
public:
    explicit Listener(BoxLine &line) : m_line(line)
    {
        line.setListener([this](const BoxLine::Traffic &piece) {
            if (piece.fromProgram && m_heardAt < 0)
                m_heardAt = m_clock.nsecsElapsed();
        });
    }

    double millisecondsAfter(const std::function<void()> &act)
    {
        QThread::msleep(20);
        m_line.clearReceived();
        m_clock.start();
        m_heardAt = -1;
        act();
        while (m_heardAt < 0)
            QThread::msleep(1);
        return m_heardAt / 1e6;
    }

private:
    BoxLine &m_line;
    QElapsedTimer m_clock;
    std::atomic<qint64> m_heardAt{0};
};

void measureKeyPress(BoxLine &line, QIODevice &bareLine, const char *what)
{
    Listener listener(line);
    line.start();
    storePort(line.portName());
    CMainWindow window;
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        return;
    waitForAnswer(*CurrentObjects::controller());
    CurrentObjects::controller()->stopMonitoring();
    const auto press = [&] { QTest::keyClick(&window, Qt::Key_F1); };
    const double own = medianOf(15, [&] { return listener.millisecondsAfter(press); });
    CurrentObjects::controller()->close();

    bareLine.open(QIODevice::ReadWrite);
    const auto write = [&] {
        bareLine.write("K1\r\n");
        bareLine.waitForBytesWritten(1000);
    };
    const double bare = medianOf(15, [&] { return listener.millisecondsAfter(write); });
    std::printf("| %s | %.2f ms | %.2f ms | %+.2f ms | at most 1 ms more |\n", what, own, bare, own - bare);
}

void measureKeyPresses()
{
    PtyLine pty(boxLink());
    QSerialPort port(boxLink());
    measureKeyPress(pty, port, "key press to the first byte on the line");

    /// Connects when it is opened.
    class Socket : public QTcpSocket
    {
    public:
        explicit Socket(const TcpLine &line) : m_line(line) {}
        bool open(OpenMode) override
        {
            connectToHost(QHostAddress::LocalHost, m_line.port());
            const bool connected = waitForConnected();
            setSocketOption(LowDelayOption, 1);
            return connected;
        }

    private:
        const TcpLine &m_line;
    };
    TcpLine tcp;
    tcp.start();
    Socket socket(tcp);
    measureKeyPress(tcp, socket, "the same over the network");
}

// ---- Painting ----

void measurePanel()
{
    CSettings settings;
    CDeviceLumen4S controller(settings);
    CVextralRemoteControlWidget panel;
    controller.setRemoteControlWidget(&panel);
    panel.resize(600, 140);
    panel.show();
    QPixmap target(panel.size());
    const QPixmap source = panel.grab();
    const double own = medianOf(300, [&] { return millisecondsOf([&] { panel.render(&target); }); });
    const double bare =
        medianOf(300, [&] { return millisecondsOf([&] { QPainter(&target).drawPixmap(0, 0, source); }); });
    tell("panel repaint, against the bare blit", own, "ms", bare, "reported");
}

// ---- Whole processes ----

/// A window that is started in a process of its own, until it has been painted.
struct Process
{
    Process(const QString &platform, const QString &program, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
        environment.insert(QStringLiteral("HOME"), QCoreApplication::applicationDirPath()); // for the log
        process.setProcessEnvironment(environment);
        start.start();
        process.start(program, arguments);
        QByteArray line;
        while (line != "painted\n" && (process.canReadLine() || process.waitForReadyRead(10000)))
            line = process.readLine();
        toFirstPaint = start.nsecsElapsed() / 1e6;
    }
    ~Process()
    {
        process.kill();
        process.waitForFinished();
    }

    QList<QByteArray> stat(const char *name) const
    {
        QFile file(QStringLiteral("/proc/%1/%2").arg(process.processId()).arg(QLatin1String(name)));
        file.open(QIODevice::ReadOnly);
        return file.readAll().simplified().split(' ');
    }
    double megabytes() const { return stat("statm").at(1).toDouble() * sysconf(_SC_PAGESIZE) / 1e6; }
    double cpuSeconds() const
    {
        const QList<QByteArray> fields = stat("stat");
        return (fields.at(13).toDouble() + fields.at(14).toDouble()) / sysconf(_SC_CLK_TCK);
    }

    QElapsedTimer start;
    QProcess process;
    double toFirstPaint = 0.0;
};

/// The windows that are started: the program on either model, and what any window of this Qt costs.
enum Window { StackSwitch, Rotator, Texts, RasterWindow, PlainWindow, windowCount };

std::unique_ptr<Process> startWindow(const QString &platform, Window window)
{
    const char *const arguments[windowCount] = {"--switch", "--rotator", "--texts", "--raster", "--plain"};
    const char *const program = window <= Rotator ? "/bench_programwindow" : "/bench_emptywindow";
    return std::make_unique<Process>(platform,
                                     QCoreApplication::applicationDirPath() + QLatin1String(program),
                                     QStringList(QLatin1String(arguments[window])));
}

void tellStart(const QString &what, double own, double plain, double raster, const char *wanted)
{
    std::printf("| %s | %.1f ms | %.2f | %.2f | %s |\n", qPrintable(what), own, own / plain, own / raster,
                wanted);
}

void measureStarts(const QString &platform, const char *wantedStart, const char *wantedMemory)
{
    storePort(QStringLiteral("/nowhere/port"));
    // The rotator reads it.
    QFile::copy(QStringLiteral(VEXTRAL_MAP_IMAGE),
                QCoreApplication::applicationDirPath() + QStringLiteral("/AzimuthalMap.png"));
    std::vector<double> starts[windowCount];
    double megabytes[windowCount] = {};
    constexpr int rounds = 50;
    // In turns, so that a machine that slows down meanwhile slows all of them.
    for (int i = 0; i < rounds; ++i) {
        for (int window = 0; window < windowCount; ++window) {
            const auto process = startWindow(platform, Window(window));
            starts[window].push_back(process->toFirstPaint);
            megabytes[window] = process->megabytes();
        }
    }
    const double plain = median(starts[PlainWindow]);
    const double raster = median(starts[RasterWindow]);
    std::printf("\n| start on %s | to the first picture | / plain | / raster | wanted |\n",
                qPrintable(platform));
    std::puts("|---|---|---|---|---|");
    tellStart(QStringLiteral("stack switch"), median(starts[StackSwitch]), plain, raster, wantedStart);
    tellStart(QStringLiteral("rotator"), median(starts[Rotator]), plain, raster, "reported");
    tellStart(QStringLiteral("seven labels in the program's fonts"), median(starts[Texts]), plain, raster,
              "reported");
    tellStart(QStringLiteral("empty window, raster"), raster, plain, raster, "-");
    tellStart(QStringLiteral("empty window, plain"), plain, plain, raster, "-");
    std::printf("| memory: stack switch %.1f MB, rotator %.1f MB, raster window %.1f MB, plain window %.1f "
                "MB | | | | "
                "%s |\n",
                megabytes[StackSwitch], megabytes[Rotator], megabytes[RasterWindow], megabytes[PlainWindow],
                wantedMemory);
    std::fflush(stdout);
}

void measureIdleLoad()
{
    constexpr int idleSeconds = 30;
    PtyLine line(boxLink());
    line.start();
    storePort(boxLink());
    const auto running = startWindow(QStringLiteral("offscreen"), StackSwitch);
    QThread::sleep(3);
    const double before = running->cpuSeconds();
    QThread::sleep(idleSeconds);
    std::printf("| idle, connected: load | %.2f %% of a core | - | - | under 0.5 %% |\n",
                (running->cpuSeconds() - before) * 100 / idleSeconds);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    initResources();
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    std::puts("| what | value | yardstick | ratio | wanted |\n|---|---|---|---|---|");
    measureIdleLoad();
    measureKeyPresses();
    measureWaits();
    measureNetworkTick();
    measureSettings();
    measureLog();
    measurePanel();
    measureStarts(QStringLiteral("offscreen"), "/ plain at most 1.6", "reported");
    if (qEnvironmentVariableIsSet("DISPLAY"))
        measureStarts(QStringLiteral("xcb"), "/ plain at most 0.85, / raster at most 1.9",
                      "at most 40 MB, rotator 50 MB");
    return 0;
}
