// SPDX-License-Identifier: MIT
#pragma once

#include "antenna/vextralantenna.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "support/scriptedcontroller.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QCoreApplication>
#include <QDir>
#include <QPushButton>
#include <QTest>

#include <functional>

/// Tells what the panel was laid out for last.
class ScriptedBox : public ScriptedController
{
public:
    using ScriptedController::ScriptedController;
    bool hasOwnPanel() override { return true; }
    void relayoutPanel(int, int) override { shownName = antenna(0)->name(); }

    QString shownName;
};

/// A shown window on a scripted controller.
class ScriptedWindow : public CMainWindow
{
public:
    explicit ScriptedWindow(const std::function<void(ScriptedBox &)> &prepare = {}, int rotors = 2)
        : CMainWindow([prepare, rotors](const CSettings &) {
              auto *box = new ScriptedBox(rotors);
              box->statuses = {ScriptedController::status(0)};
              box->angles = {30.0};
              if (prepare)
                  prepare(*box);
              return box;
          })
    {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
        box()->sent.clear();
    }

    template <typename Widget>
    Widget *get(const char *name)
    {
        return findChild<Widget *>(QString(name));
    }

    void press(const QString &keys) { QTest::keySequence(this, QKeySequence(keys)); }
    void click(const char *button) { get<QPushButton>(button)->click(); }

    QString sent()
    {
        const QString text = box()->sent.join(' ');
        box()->sent.clear();
        return text;
    }

    /// The names of the memory buttons that are lit.
    QString litMemories()
    {
        QString names;
        for (const QPushButton *button : get<QWidget>("memoryButtonsFrame")->findChildren<QPushButton *>())
            names += button->isChecked() ? button->objectName() : QString();
        return names;
    }

    ScriptedBox *box() { return static_cast<ScriptedBox *>(CurrentObjects::controller()); }
    CVextralAntenna *antenna(int index) { return box()->antenna(index); }
    CVextralAzimuthalWidget *map() { return get<CVextralAzimuthalWidget>("azimuthalWidget"); }
};

/// What another test left beside the executable.
inline void removeSettingsAndMaps()
{
    QDir folder(QCoreApplication::applicationDirPath());
    for (const QString &file : folder.entryList({"VextralRemoteControl.ini*", "*.png*"}))
        folder.remove(file);
}
