// SPDX-License-Identifier: MIT
#include "support/station.h"

#include "device/devicekt240m.h"
#include "settings/settings.h"
#include "simbox/ptyline.h"
#include "simbox/tcpline.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"

#include <QDir>
#include <QTcpServer>

namespace {

constexpr int connectMs = 10000;

QString terminalLink()
{
    return QCoreApplication::applicationDirPath() + "/box";
}

/// The same one in the whole run.
quint16 tcpPort()
{
    static const quint16 port = [] {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }();
    return port;
}

std::unique_ptr<BoxLine> makeLine(SimulatedBox::Model model)
{
    if (qgetenv("VEXTRAL_LINE") == "tcp")
        return std::make_unique<TcpLine>(ListenAddress{QHostAddress::LocalHost, tcpPort()}, model);
    return std::make_unique<PtyLine>(terminalLink(), model);
}

} // namespace

Station::Station(SimulatedBox::Model model) : m_line(makeLine(model)), line(*m_line), m_model(model)
{
    line.start();
    if (qgetenv("VEXTRAL_LINE") == "ser2net") {
        server = std::make_unique<Ser2Net>(tcpPort(), terminalLink());
        server->start();
    }
}

QString Station::portName()
{
    return qEnvironmentVariableIsSet("VEXTRAL_LINE") ? QString("tcp://localhost:%1").arg(tcpPort())
                                                     : terminalLink();
}

void Station::writeFreshSettings(const QString &port)
{
    QDir folder(QCoreApplication::applicationDirPath());
    for (const QString &file : folder.entryList({"VextralRemoteControl.ini*"}))
        folder.remove(file);
    CSettings settings;
    settings.comPortName = port;
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
    waitUntilConnected();
}

void Station::waitUntilConnected()
{
    if (isOverNetwork() && CSettings().comPortName == portName())
        QTRY_COMPARE_WITH_TIMEOUT(controller()->lineState().kind, LineState::Kind::Answering, connectMs);
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

void Station::changeBox()
{
    line.withBox([](SimulatedBox &box) {
        box.setReceivePort(0, !box.receivePort(0));
        box.rotor().setPosition(box.rotor().position() + 10);
    });
}

QString Station::boxState()
{
    bool receives = false;
    line.withBox([&](const SimulatedBox &box) { receives = box.receivePort(0); });
    return receives ? "RX 1000 TX 0000 POWER" : "RX 0000 TX 0000 POWER";
}
