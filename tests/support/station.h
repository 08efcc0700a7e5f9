// SPDX-License-Identifier: MIT
#pragma once

#include "device/vextralremotecontrol.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "simbox/boxline.h"
#include "support/ser2net.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCoreApplication>
#include <QTest>

#include <memory>

/// The program's window on a simulated box, as an operator sees and hears it. After pollEvery(noPollsMs)
/// polls come from poll() alone, so that the dialogue on the line is the same on every run.
///
/// The environment chooses what lies between them, VEXTRAL_LINE: a pseudo-terminal, or "tcp" for a socket, or
/// "ser2net" for that server on the pseudo-terminal.
class Station
{
public:
    static constexpr int noPollsMs = 3600 * 1000;

    explicit Station(SimulatedBox::Model model = SimulatedBox::Model::StackSwitch);

    /// The port that fresh settings name and the box is found at.
    static QString portName();
    static bool isOverNetwork() { return portName().startsWith("tcp:"); }
    /// Leaves a settings file beside the test that knows this port and nothing else.
    static void writeFreshSettings(const QString &port = portName());

    /// Shows the window, which opens the port, and waits until it is connected.
    void startProgram();
    /// A network line that was opened answers later. Returns at once for others, and where fresh settings
    /// name another port than portName().
    void waitUntilConnected();

    void poll() { controller()->monitore(); }
    /// Polls by itself from now on, with the first poll at once.
    void pollEvery(int milliseconds);

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.get(), key, modifiers);
    }
    /// What the box heard since the last call.
    QString heard();
    /// Somebody works at the box itself: receive port 1 changes, and its rotor turns ten degrees.
    void changeBox();
    /// What shown() says when the window knows all.
    QString boxState();
    /// The lamps: receive ports, transmit lines, POWER.
    QString shown() const;

    CVextralRemoteControl *controller() const { return CurrentObjects::controller(); }
    CVextralRemoteControlWidget *panel() const
    {
        return get<CVextralRemoteControlWidget>("remoteControlWidget");
    }
    template <typename Widget>
    Widget *get(const QString &name) const
    {
        return window->findChild<Widget *>(name);
    }

private:
    std::unique_ptr<BoxLine> m_line;

public:
    BoxLine &line;
    std::unique_ptr<Ser2Net> server; // with "ser2net" only
    std::unique_ptr<CMainWindow> window;

private:
    SimulatedBox::Model m_model;
};
