#include "support/station.h"

#include "device/devicekt240m.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"

#include <QDir>

void Station::writeFreshSettings(const QString &portName)
{
    QDir folder(QCoreApplication::applicationDirPath());
    for (const QString &file : folder.entryList({"VextralRemoteControl.ini*"}))
        folder.remove(file);
    CSettings settings;
    settings.comPortName = portName;
    settings.save();
}

void Station::startProgram()
{
    if (m_model == SimulatedBox::Model::StackSwitch)
        window = std::make_unique<CMainWindow>();
    else
        window = std::make_unique<CMainWindow>(
            [](const CSettings &settings) { return new CDeviceKT240M(settings); });
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
}

void Station::pollEvery(int milliseconds)
{
    controller()->setMonitorInterval(milliseconds);
    controller()->startMonitoring();
}

QString Station::heard()
{
    const QString text = line.commands().join(' ');
    line.clearReceived();
    return text;
}

QString Station::shown() const
{
    QString text = "RX ";
    for (const CAntennaButton *button : panel()->antennaButtons())
        text += button->isChecked() ? '1' : '0';
    text += " TX ";
    for (const CLedButton *button : panel()->txButtons())
        text += button->isChecked() ? '1' : '0';
    return text + (panel()->powerIndicator()->isChecked() ? " POWER" : " -");
}
