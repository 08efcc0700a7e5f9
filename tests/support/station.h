#pragma once

#include "mainwindow/mainwindow.h"
#include "simbox/ptyline.h"

#include <QTest>

#include <memory>

class CVextralRemoteControl;
class CVextralRemoteControlWidget;

/// The program's window on a simulated box, as an operator sees and hears it. After settle() polls come from
/// poll() alone, so that the dialogue on the line is the same on every run.
class Station
{
public:
    static constexpr int noPollsMs = 3600 * 1000;

    explicit Station(SimulatedBox::Model model = SimulatedBox::Model::StackSwitch);

    /// Where the box is found, which fresh settings name.
    static QString boxLink();
    /// Leaves a settings file beside the test that knows this port and nothing else.
    static void writeFreshSettings(const QString &portName = boxLink());

    void startProgram();
    void show();
    void closeProgram();

    void settle();
    void poll();
    /// Polls by itself from now on, with the first poll at once.
    void pollEvery(int milliseconds);

    /// What the box heard since the last call.
    QString heard();
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    template <typename Button>
    static void click(Button *button)
    {
        QTest::mouseClick(button, Qt::LeftButton);
    }
    /// The lamps: receive ports, transmit lines, POWER.
    QString shown();

    CMainWindow *window() { return m_window.get(); }
    CVextralRemoteControl *controller();
    CVextralRemoteControlWidget *panel();
    template <typename Widget>
    Widget *get(const char *name)
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }

    PtyLine line;

private:
    SimulatedBox::Model m_model;
    std::unique_ptr<CMainWindow> m_window;
};
