#pragma once

#include "device/vextralremotecontrol.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "simbox/ptyline.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QCoreApplication>
#include <QTest>

#include <memory>

/// The program's window on a simulated box, as an operator sees and hears it. After pollEvery(noPollsMs)
/// polls come from poll() alone, so that the dialogue on the line is the same on every run.
class Station
{
public:
    static constexpr int noPollsMs = 3600 * 1000;

    explicit Station(SimulatedBox::Model model = SimulatedBox::Model::StackSwitch)
        : line(boxLink(), model), m_model(model)
    {
        line.start();
    }

    /// Where the box is found, which fresh settings name.
    static QString boxLink() { return QCoreApplication::applicationDirPath() + "/box"; }
    /// Leaves a settings file beside the test that knows this port and nothing else.
    static void writeFreshSettings(const QString &portName = boxLink());

    /// Shows the window, which opens the port.
    void startProgram();

    void poll() { controller()->monitore(); }
    /// Polls by itself from now on, with the first poll at once.
    void pollEvery(int milliseconds);

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.get(), key, modifiers);
    }
    /// What the box heard since the last call.
    QString heard();
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

    PtyLine line;
    std::unique_ptr<CMainWindow> window;

private:
    SimulatedBox::Model m_model;
};
