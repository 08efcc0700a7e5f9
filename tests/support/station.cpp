#include "support/station.h"

#include "device/devicekt240m.h"
#include "mainwindow/currentobjects.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCoreApplication>
#include <QDir>

Station::Station(SimulatedBox::Model model) : line(boxLink(), model), m_model(model)
{
    line.start();
}

QString Station::boxLink()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/box");
}

void Station::writeFreshSettings(const QString &portName)
{
    QDir folder(QCoreApplication::applicationDirPath());
    const QStringList files = folder.entryList({QStringLiteral("VextralRemoteControl.ini*")});
    for (const QString &file : files)
        folder.remove(file);
    CSettings settings;
    settings.comPortName = portName;
    settings.save();
}

void Station::startProgram()
{
    if (m_model == SimulatedBox::Model::StackSwitch)
        m_window = std::make_unique<CMainWindow>();
    else
        m_window = std::make_unique<CMainWindow>(
            [](const CSettings &settings) { return new CDeviceKT240M(settings); });
}

void Station::show()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void Station::closeProgram()
{
    m_window->close();
    m_window.reset();
}

void Station::settle()
{
    controller()->stopMonitoring();
    pollEvery(noPollsMs);
    line.clearReceived();
}

void Station::poll()
{
    controller()->monitore();
}

void Station::pollEvery(int milliseconds)
{
    controller()->setMonitorInterval(milliseconds);
    controller()->startMonitoring();
}

QString Station::heard()
{
    const QString text = QString::fromLatin1(line.commands().join(' '));
    line.clearReceived();
    return text;
}

void Station::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window.get(), key, modifiers);
}

QString Station::shown()
{
    QString text = QStringLiteral("RX ");
    for (const CAntennaButton *button : panel()->antennaButtons())
        text += button->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
    text += QStringLiteral(" TX ");
    for (const CLedButton *button : panel()->txButtons())
        text += button->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
    return text + (panel()->powerIndicator()->isChecked() ? QStringLiteral(" POWER") : QStringLiteral(" -"));
}

CVextralRemoteControl *Station::controller()
{
    return CurrentObjects::controller();
}

CVextralRemoteControlWidget *Station::panel()
{
    return get<CVextralRemoteControlWidget>("remoteControlWidget");
}
