// SPDX-License-Identifier: MIT
#include "antenna/vextralantenna.h"
#include "app/resources.h"
#include "device/devicekt240m.h"
#include "dialogs/serialportselectiondialog.h"
#include "dialogs/settingsdialog.h"
#include "dialogs/stationmapdialog.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "simbox/ptyline.h"
#include "stationmap/indexedimage.h"
#include "stationmap/positiontext.h"
#include "stationmap/stationmapfile.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

// Draws the pictures of the manual from the program itself, connected to simulated boxes: vextral-pictures
// FOLDER. With QT_SCALE_FACTOR=2 the files are named NAME@2x.png.

namespace {

constexpr int patienceMs = 10000;

QString pictureFolder;

QString beside(const char *name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(name);
}

/// Returns false and writes to the standard error when `what` does not become true in time.
bool waitFor(const char *what, const std::function<bool()> &condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        if (time.elapsed() > patienceMs) {
            std::fprintf(stderr, "waited in vain: %s\n", what);
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    return true;
}

bool write(const QImage &picture, const QString &name)
{
    const bool fine = picture.devicePixelRatioF() > 1.0;
    const QString path = pictureFolder + QLatin1Char('/') + name + QLatin1String(fine ? "@2x.png" : ".png");
    const bool saved = picture.save(path);
    std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(path));
    return saved;
}

bool save(QWidget *widget, const QString &name)
{
    QCoreApplication::processEvents();
    return write(widget->grab().toImage(), name);
}

QWidget *visibleToolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->inherits("QTipLabel"))
            return window;
    }
    return nullptr;
}

/// The window with the POWER lamp's tool tip over it, as it shows when the mouse rests there.
bool saveWithPowerTip(QWidget *window, CVextralRemoteControlWidget *panel, const QString &name)
{
    const CLedButton *lamp = panel->powerIndicator();
    QToolTip::showText(lamp->mapToGlobal(QPoint(20, 0)), lamp->toolTip(), panel);
    if (!waitFor("the tool tip shows", [] { return visibleToolTip() != nullptr; }))
        return false;
    QWidget *tip = visibleToolTip();
    const QPoint place = lamp->mapTo(window, QPoint(20, lamp->height() + 8));
    const QSize size = window->size().expandedTo(QSize(place.x() + tip->width(), place.y() + tip->height()));
    const qreal ratio = window->devicePixelRatioF();
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.drawPixmap(0, 0, window->grab());
    painter.drawPixmap(place, tip->grab());
    painter.end();
    QToolTip::hideText();
    return write(picture.toImage(), name);
}

void sendMouse(QWidget *widget, QEvent::Type type)
{
    const QPointF middle = widget->rect().center();
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, middle, widget->mapToGlobal(middle.toPoint()), Qt::LeftButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

void turnWheel(QWidget *widget, int steps)
{
    const QPointF middle = widget->rect().center();
    for (int i = 0; i < steps; ++i) {
        QWheelEvent event(middle, widget->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &event);
    }
}

/// Settings as an operator might have them after the first evening.
CSettings stationSettings(const QString &mode)
{
    QFile::remove(SettingsFile::path());
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
    bool good = waitFor("POWER is lit", [panel] { return panel->powerIndicator()->isChecked(); })
             && save(&window, QStringLiteral("stack-switch"));
    line.withBox([](SimulatedBox &box) { box.setAux(true); });
    QCoreApplication::processEvents();
    CurrentObjects::controller()->monitore();
    good = save(&window, QStringLiteral("stack-switch-transmitting")) && good;

    QMetaObject::invokeMethod(&window, "onShowSettingsDialog");
    auto *portField =
        CurrentObjects::settingsDialog()->findChild<QLineEdit *>(QStringLiteral("serialPortLineEdit"));
    portField->setText(QStringLiteral("ttyUSB0"));
    good = save(CurrentObjects::settingsDialog(), QStringLiteral("settings")) && good;
    CurrentObjects::settingsDialog()->reject();

    line.withBox([](SimulatedBox &box) { box.setAux(false); });
    CurrentObjects::controller()->monitore();
    line.setFault(LineFault::silence());
    good = waitFor("POWER is dark", [panel] { return !panel->powerIndicator()->isChecked(); }) && good;
    LineState silence = CurrentObjects::controller()->lineState();
    silence.portName = QStringLiteral("ttyUSB0");
    silence.silentSeconds = 7;
    panel->powerIndicator()->setToolTip(describe(silence));
    return saveWithPowerTip(&window, panel, QStringLiteral("no-answer")) && good;
}

bool drawFirstStart()
{
    QFile::remove(SettingsFile::path());
    CMainWindow window;
    window.show();
    auto *panel = window.findChild<CVextralRemoteControlWidget *>(QStringLiteral("remoteControlWidget"));
    const bool good = saveWithPowerTip(&window, panel, QStringLiteral("first-start"));

    CSerialPortSelectionDialog chooser(&window);
    auto *ports = chooser.findChild<QListWidget *>();
    ports->clear();
    ports->addItems({QStringLiteral("ttyS0"), QStringLiteral("ttyUSB0")});
    ports->setCurrentRow(1);
    chooser.show();
    return save(&chooser, QStringLiteral("serial-port")) && good;
}

/// The rotator's window with a simulated rotator at 40 degrees.
struct Rotator
{
    explicit Rotator(const CSettings &settings)
    {
        settings.save();
        line.withBox([](SimulatedBox &box) { box.rotor().setPosition(40); });
        line.start();
        window =
            std::make_unique<CMainWindow>([](const CSettings &loaded) { return new CDeviceKT240M(loaded); });
        window->show();
        antenna = CurrentObjects::controller()->antenna(0);
    }

    bool isRead() const
    {
        return waitFor("the rotator's azimuth is read", [this] { return antenna->angle() == 40.0; });
    }
    bool turnsPast(double angle) const
    {
        return waitFor("the antenna turns", [this, angle] { return antenna->angle() > angle; });
    }

    PtyLine line{beside("box"), SimulatedBox::Model::Rotator};
    std::unique_ptr<CMainWindow> window;
    CVextralAntenna *antenna = nullptr;
};

Rotator startRotator(const QString &mode)
{
    CSettings settings = stationSettings(mode);
    settings.names[0] = QStringLiteral("Beam");
    return Rotator(settings);
}

bool drawRotatorAtRest(const QString &mode)
{
    const Rotator rotator = startRotator(mode);
    return rotator.isRead() && save(rotator.window.get(), QStringLiteral("rotator-") + mode);
}

bool drawRotatorTurning()
{
    const Rotator rotator = startRotator(QStringLiteral("extended"));
    bool good = rotator.isRead();
    CurrentObjects::controller()->rotateTo(120.0);
    good = rotator.turnsPast(62.0) && good;
    good = save(rotator.window.get(), QStringLiteral("rotator-extended-turning")) && good;
    QMetaObject::invokeMethod(rotator.window.get(), "on_propertiesButton_clicked");
    return save(rotator.window.get(), QStringLiteral("rotator-properties")) && good;
}

template <typename Widget, typename Condition>
Widget *childWhere(const QWidget *parent, Condition condition)
{
    const auto children = parent->findChildren<Widget *>();
    const auto found = std::find_if(children.begin(), children.end(), condition);
    return found == children.end() ? nullptr : *found;
}

CRotationDigitalDisplayWidget *panelDigits(const QWidget *panel)
{
    return childWhere<CRotationDigitalDisplayWidget>(
        panel, [](const QWidget *display) { return display->isVisible(); });
}

bool drawDialling(const Rotator &rotator)
{
    auto *panel = rotator.window->findChild<QWidget *>(QStringLiteral("remoteControlWidget"));
    turnWheel(panelDigits(panel), 60);
    const bool good = save(rotator.window.get(), QStringLiteral("rotator-target"));

    auto *stop = childWhere<CAntennaButton>(
        panel, [](const CAntennaButton *button) { return button->text() == QLatin1String("STOP"); });
    const bool turned = rotator.turnsPast(50.0);
    sendMouse(stop, QEvent::MouseButtonPress);
    sendMouse(stop, QEvent::MouseButtonRelease);
    return save(rotator.window.get(), QStringLiteral("rotator-stopping")) && turned && good
        && waitFor("the antenna rests", [&rotator] { return !rotator.antenna->isRotating(); });
}

bool drawMemoryEdit(const Rotator &rotator)
{
    auto *memory = rotator.window->findChild<QPushButton *>(QStringLiteral("memoButton1"));
    auto *editor = memory->findChild<QSpinBox *>();
    sendMouse(memory, QEvent::MouseButtonPress);
    const bool opened = waitFor("the memory is edited", [editor] { return editor->isVisible(); });
    sendMouse(memory, QEvent::MouseButtonRelease);
    editor->setValue(120);
    editor->findChild<QLineEdit *>()->deselect();
    const bool good = save(rotator.window.get(), QStringLiteral("memory-edit"));
    editor->clearFocus();
    return opened && good;
}

bool drawNoReading(Rotator &rotator)
{
    const auto *display = panelDigits(CurrentObjects::controller()->remoteControlWidget());
    rotator.line.setFault(LineFault::silence());
    const bool silent = waitFor("the digits are grey", [display] { return display->value() == 359; });
    return save(rotator.window.get(), QStringLiteral("rotator-no-reading")) && silent;
}

bool drawRotatorAtWork()
{
    CSettings settings = stationSettings(QStringLiteral("extended"));
    settings.extendedSize = QSize(441, 473);
    Rotator rotator(settings);
    return rotator.isRead() && drawDialling(rotator) && drawMemoryEdit(rotator) && drawNoReading(rotator);
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

bool writeFile(const QByteArray &contents, const QString &path)
{
    QFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
    std::printf("%s %s\n", written ? "wrote" : "could not write", qPrintable(path));
    return written;
}

QByteArray stationMap(const StationMap &map, int side)
{
    return StationMapFile::encoded(map.drawn(readLandOutlines(), side), {});
}

/// The map that comes with the program, where the programs of the other pictures look for it.
bool drawDefaultMap()
{
    const StationMap map{{0.0, 0.0}, QString::fromUtf8("0° N 0° E")};
    return writeFile(stationMap(map, StationMapFile::usualSide), AzimuthalMapImage::installedPath());
}

bool drawStationMaps()
{
    bool good = true;
    for (const char *locator : {"GG66rp", "JO62qm", "PM95up"}) {
        const QString caption = QLatin1String(locator);
        const StationMap map{*PositionText::positionOfLocator(caption), caption};
        const QString name = QStringLiteral("map-of-%1.png").arg(caption.toLower());
        good = writeFile(stationMap(map, 300), pictureFolder + QLatin1Char('/') + name) && good;
    }
    return good;
}

bool drawStationMapDialog()
{
    const Rotator rotator = startRotator(QStringLiteral("extended"));
    rotator.window->findChild<QAction *>(QStringLiteral("actionStationMap"))->trigger();
    auto *dialog = rotator.window->findChild<CStationMapDialog *>();
    const auto type = [dialog](const char *field, const QString &text) {
        auto *edit = dialog->findChild<QLineEdit *>(QLatin1String(field));
        edit->setText(text);
        emit edit->textEdited(text);
    };
    type("captionEdit", QStringLiteral("DL0ABC"));
    type("locatorEdit", QStringLiteral("JO62qm"));
    const auto *preview = dialog->findChild<QLabel *>(QStringLiteral("previewLabel"));
    return waitFor("the preview is drawn", [preview] { return preview->text().isEmpty(); })
        && write(indexedImage(dialog->grab().toImage()), QStringLiteral("map-of-my-station"));
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    initResources();
    if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "usage: vextral-pictures FOLDER\n");
        return 2;
    }
    pictureFolder = QString::fromLocal8Bit(argv[1]);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    bool good = drawDefaultMap();
    good = drawFirstStart() && good;
    good = drawStackSwitch() && good;
    for (const char *mode : {"mini", "supermini"})
        good = drawRotatorAtRest(QLatin1String(mode)) && good;
    good = drawRotatorTurning() && good;
    good = drawRotatorAtWork() && good;
    good = drawMap(QSize(672, 480)) && good;
    good = drawStationMaps() && good;
    good = drawStationMapDialog() && good;
    return good ? 0 : 1;
}
