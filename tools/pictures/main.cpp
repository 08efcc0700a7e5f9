#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "device/devicekt240m.h"
#include "dialogs/settingsdialog.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "settings/settings.h"
#include "simbox/ptyline.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPixmap>
#include <QTabWidget>

#include <cstdio>
#include <functional>

// Draws the pictures of the manual from the program itself on simulated boxes: vextral-pictures FOLDER. The
// factor of QT_SCALE_FACTOR is told in the files' names.

namespace {

constexpr int patienceMs = 10000;

QString pictureFolder;

QString beside(const char *name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(name);
}

bool waitFor(const std::function<bool()> &condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        if (time.elapsed() > patienceMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    return true;
}

bool save(QWidget *widget, const QString &name)
{
    QCoreApplication::processEvents();
    const bool fine = widget->devicePixelRatioF() > 1.0;
    const QString path = pictureFolder + QLatin1Char('/') + name + QLatin1String(fine ? "@2x.png" : ".png");
    const bool saved = widget->grab().save(path);
    std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(path));
    return saved;
}

/// Settings as an operator might have them after the first evening.
CSettings stationSettings(const QString &mode)
{
    QFile::remove(CSettings::settingsFilePath());
    CSettings settings;
    settings.comPortName = beside("box");
    settings.interfaceMode = mode;
    settings.relayBoxName = QStringLiteral("Hill");
    const char *names[] = {"Beverage/NE", "Beverage/SW", "4-square", "Dipole"};
    const QColor colours[] = {QColor(0xff3b30), QColor(0xffc400), QColor(0x28c840), QColor(0x2f7bff)};
    const double angles[] = {52.0, 232.0, 305.0, 140.0};
    for (int i = 0; i < 4; ++i) {
        settings.names[i] = QLatin1String(names[i]);
        settings.colors[i] = colours[i];
        settings.angles[i] = angles[i];
        settings.enabled[i] = true;
    }
    const char *memories[] = {"0", "35", "75", "90", "120", "190", "245", "270", "310", "340"};
    for (int i = 0; i < 10; ++i)
        settings.memories[i] = QLatin1String(memories[i]);
    settings.miniSize = QSize(560, 170);
    settings.extendedSize = QSize(680, 660);
    settings.save();
    return settings;
}

bool drawStackSwitch()
{
    stationSettings(QStringLiteral("mini"));
    PtyLine line(beside("box"));
    line.withBox([](SimulatedBox &box) {
        box.setReceivePort(0, true);
        box.setReceivePort(2, true);
        box.setTransmitLine(2, true);
    });
    if (!line.start())
        return false;
    CMainWindow window;
    window.show();
    auto *panel = window.findChild<CVextralRemoteControlWidget *>(QStringLiteral("remoteControlWidget"));
    bool good = waitFor([panel] { return panel->powerIndicator()->isChecked(); })
             && save(&window, QStringLiteral("stack-switch"));
    line.withBox([](SimulatedBox &box) { box.setAux(true); });
    QCoreApplication::processEvents();
    CurrentObjects::controller()->monitore();
    good = save(&window, QStringLiteral("stack-switch-transmitting")) && good;

    QMetaObject::invokeMethod(&window, "onShowSettingsDialog");
    good = save(CurrentObjects::settingsDialog(), QStringLiteral("settings")) && good;
    CurrentObjects::settingsDialog()->reject();
    return good;
}

bool drawRotator(const QString &mode)
{
    CSettings settings = stationSettings(mode);
    settings.names[0] = QStringLiteral("Beam");
    settings.save();
    PtyLine line(beside("box"), SimulatedBox::Model::Rotator);
    line.withBox([](SimulatedBox &box) { box.rotor().setPosition(40); });
    if (!line.start())
        return false;
    CMainWindow window([](const CSettings &loaded) { return new CDeviceKT240M(loaded); });
    window.show();
    CVextralAntenna *antenna = CurrentObjects::controller()->antenna(0);
    bool good = waitFor([antenna] { return antenna->angle() == 40.0; })
             && save(&window, QStringLiteral("rotator-") + mode);
    CurrentObjects::controller()->rotateTo(120.0);
    good = waitFor([antenna] { return antenna->angle() > 62.0; }) && good;
    good = save(&window, QStringLiteral("rotator-%1-turning").arg(mode)) && good;
    if (mode != QLatin1String("extended"))
        return good;
    QMetaObject::invokeMethod(&window, "on_propertiesButton_clicked");
    return save(&window, QStringLiteral("rotator-properties")) && good;
}

bool drawMap(const QSize &size)
{
    const CSettings settings = stationSettings(QStringLiteral("extended"));
    CVextralRemoteControl controller(&settings);
    CVextralAzimuthalWidget map;
    controller.setAzimuthalWiget(&map);
    map.setDevice(&controller);
    for (CVextralAntenna *antenna : controller.antennas()) {
        const int i = antenna->index();
        antenna->setColor(settings.colors[i]);
        antenna->setAngle(settings.angles[i]);
        antenna->setTarget(i == 1 ? 280.0 : settings.angles[i]);
        antenna->setEnabled(true);
    }
    map.refreshDisplays(true, true);
    map.syncDisplays();
    map.resize(size);
    map.show();
    // The first picture only finds the scale.
    QCoreApplication::processEvents();
    return save(&map, QStringLiteral("map-%1x%2").arg(size.width()).arg(size.height()));
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    initResources();
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "usage: vextral-pictures FOLDER\n");
        return 2;
    }
    pictureFolder = QString::fromLocal8Bit(argv[1]);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    bool good = drawStackSwitch();
    for (const char *mode : {"extended", "mini"})
        good = drawRotator(QLatin1String(mode)) && good;
    for (const QSize &size : {QSize(441, 300), QSize(672, 480), QSize(1400, 900)})
        good = drawMap(size) && good;
    return good ? 0 : 1;
}
