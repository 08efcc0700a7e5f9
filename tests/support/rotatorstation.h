// SPDX-License-Identifier: MIT
#pragma once

#include "antenna/vextralantenna.h"
#include "device/devicekt240m.h"
#include "mainwindow/mainwindow.h"
#include "rotctld/rotctlddevice.h"
#include "rotctld/rotctldserver.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "support/simulatedline.h"
#include "widgets/antennabutton.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralremotecontrolwidget.h"
#include "widgets/widgetevents.h"

#include <QFile>
#include <QPushButton>
#include <QTcpSocket>
#include <QTest>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>

/// A rotator whose azimuths the test may make up, also such that no box would say.
class ScriptedRotator : public CDeviceKT240M
{
public:
    using CDeviceKT240M::CDeviceKT240M;
    double getCurrentAngle() override { return scripted ? *scripted : CDeviceKT240M::getCurrentAngle(); }

    std::optional<double> scripted = -1.0;
};

/// The whole window on a simulated rotator, which is polled by the test alone and turns while the test lets
/// time pass. Memory 1 holds 200, memory 2 holds 300.
struct RotatorStation
{
    RotatorStation()
    {
        line.box().rotor().setPosition(0.0);
        CSettings settings;
        settings.comPortName = "rotator";
        settings.memories[0] = "200";
        settings.memories[1] = "300";
        settings.save();
        window = std::make_unique<CMainWindow>([&](const CSettings &s) {
            rotator = new ScriptedRotator(s);
            rotator->setLineFactory(line.factory());
            return rotator;
        });
        rotator->stopMonitoring();
        QFile::remove(SettingsFile::path());
        panel = window->findChild<CVextralRemoteControlWidget *>();
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        dial = shown<CRotationDialWidget>();
        display = shown<CRotationDigitalDisplayWidget>();
    }

    /// The visible child of the panel; it has hidden ones for other models.
    template <typename Widget>
    Widget *shown(const QString &text = QString()) const
    {
        for (Widget *widget : panel->findChildren<Widget *>()) {
            if (widget->isVisible() && (text.isEmpty() || widget->property("text") == text))
                return widget;
        }
        return nullptr;
    }

    /// Without an azimuth the box itself is asked.
    void poll(std::optional<double> azimuth)
    {
        rotator->scripted = azimuth;
        rotator->monitore();
    }

    /// Plays a dialogue and returns it as it really came out. Its lines, divided by "; ", say what happens,
    /// what the box hears of it, which lamps are lit then, and what a display that is being changed shows:
    /// "STOP -> M115 [STOP]", "wheel (102)". Numbers are azimuths that are polled, or with "+" the
    /// milliseconds to let pass before the box is asked; "at" puts its rotor there, 20 degrees a second fast.
    QString play(const QString &dialogue)
    {
        QStringList outcome;
        for (const QString &expected : dialogue.split("; ")) {
            const QString action = expected.section(" -> ", 0, 0).section(" [", 0, 0).section(" (", 0, 0);
            if (const QString asked = answer(action.section(' ', 0, 0)); !asked.isEmpty()) {
                outcome << asked;
                continue;
            }
            act(action.section(' ', 0, 0), action.section(' ', 1));
            const QString dialled = display->isEditing() ? QString(" (%1)").arg(display->value()) : "";
            outcome << action + heard() + lit() + dialled;
        }
        return outcome.join("; ");
    }

    /// What is seen of the dashed target line, of STOP's tool tip and of the memories' lamps.
    QString answer(const QString &question) const
    {
        const CVextralAntenna *antenna = rotator->antenna(0);
        const bool isAimed = antenna->hasPendingTarget() && antenna->target() != -1.0;
        if (question == "target")
            return "target " + (isAimed ? QString::number(antenna->target()) : "none");
        if (question == "tip")
            return shown<CAntennaButton>("STOP")->toolTip().contains("press again") ? "tip again"
                                                                                    : "tip quiet";
        if (question != "memory")
            return QString();
        const auto memories =
            window->findChild<QWidget *>("memoryButtonsFrame")->findChildren<QPushButton *>();
        const bool isLit =
            std::any_of(memories.begin(), memories.end(), [](auto *m) { return m->isChecked(); });
        return isLit ? "memory lit" : "memory dark";
    }

    void replug()
    {
        line.plugIn();
        rotator->setMonitorInterval(10);
        rotator->startMonitoring();
        QTRY_VERIFY(rotator->isOpen());
        rotator->stopMonitoring();
    }

    void act(const QString &verb, const QString &object)
    {
        const int number = object.toInt();
        const std::map<QString, std::function<void()>> verbs = {
            {"at",
             [&] {
                 line.box().rotor().setPosition(number);
                 line.box().rotor().setSpeed(20.0);
                 poll(std::nullopt);
             }},
            {"press", [&] { QTest::mousePress(shown<CAntennaButton>(object), Qt::LeftButton); }},
            {"release", [&] { QTest::mouseRelease(shown<CAntennaButton>(object), Qt::LeftButton); }},
            {"key", [&] { QTest::keySequence(window.get(), QKeySequence(object)); }},
            {"dial", [&] { emit dial->onRotationChanged(number); }},
            {"hold", [&] { moveDial(QEvent::MouseButtonPress, 0); }},
            {"drag", [&] { moveDial(QEvent::MouseMove, number); }},
            {"drop", [&] { moveDial(QEvent::MouseButtonRelease, number); }},
            {"display", [&] { emit display->onRotationChanged(number); }},
            {"hide", [&] { panel->hide(), panel->show(); }},
            {"disable", [&] { panel->setEnabled(false), panel->setEnabled(true); }},
            {"click", [&] { QTest::mouseClick(display, Qt::LeftButton); }},
            {"wheel", [&] { turnWheel(display); }},
            {"net", [&] { order(object); }},
            {"unplug", [&] { line.pullOut(), QCoreApplication::processEvents(); }},
            {"replug", [&] { replug(); }},
            {"outage", [&] { line.setOutage(true); }},
            {"over", [&] { line.setOutage(false); }},
            {"pause", [&] { QTRY_VERIFY(!display->isEditing()); }}};
        const auto found = verbs.find(verb);
        if (found != verbs.end()) {
            found->second();
        } else if (CAntennaButton *button = shown<CAntennaButton>(verb)) {
            QTest::mouseClick(button, Qt::LeftButton);
        } else if (verb.startsWith('+')) {
            line.advance(verb.toInt());
            poll(std::nullopt);
        } else {
            poll(verb.toDouble());
        }
    }

    void moveDial(QEvent::Type type, int degrees)
    {
        const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        sendMouse(dial, type, QPointF(40, 20 - degrees), Qt::LeftButton, held);
    }

    /// From the network: a target, "stop", "left" or "right", or "again", which connects anew.
    void order(const QString &what)
    {
        if (!server) {
            server = std::make_unique<RotctldServer>(std::make_unique<RotctldDevice>(*rotator));
            server->listen("0");
        }
        if (what == "again")
            network.abort();
        if (network.state() == QAbstractSocket::UnconnectedState)
            network.connectToHost(QHostAddress::LocalHost, server->port());
        const std::map<QString, QString> commands = {
            {"again", "_"}, {"stop", "S"}, {"left", "M 8 1"}, {"right", "M 16 1"}};
        const auto command = commands.find(what);
        network.write((command == commands.end() ? "P " + what + " 0" : command->second).toUtf8() + '\n');
        QTRY_VERIFY(network.canReadLine());
        network.readAll();
    }

    /// The commands since the last call.
    QString heard()
    {
        const QString commands = line.heard();
        return commands.isEmpty() ? QString() : " -> " + commands;
    }

    QString lit() const
    {
        QStringList names;
        for (const char *name : {"CCW", "STOP", "CW"}) {
            if (shown<CAntennaButton>(name)->isChecked())
                names << name;
        }
        return names.isEmpty() ? QString() : " [" + names.join(' ') + "]";
    }

    SimulatedPort line{SimulatedBox::Model::Rotator};
    std::unique_ptr<CMainWindow> window;
    std::unique_ptr<RotctldServer> server;
    QTcpSocket network;
    ScriptedRotator *rotator = nullptr;
    CVextralRemoteControlWidget *panel = nullptr;
    CRotationDialWidget *dial = nullptr;
    CRotationDigitalDisplayWidget *display = nullptr;
};
