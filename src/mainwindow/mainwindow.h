// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>

class AntennaTabs;
class CSettings;
class CVextralAntenna;
class CVextralRemoteControl;
class CloseRequests;
class HeldKeys;
class MapImageChoice;
class MemoryRow;
class QShortcut;
class SettingsDialogLoan;
class Shortcuts;
class WindowModes;

namespace Ui {
class CMainWindow;
}

/// The program's only top-level window. It makes the controller, the form and the objects that the window
/// consists of, connects them with each other, and gives the settings to all of them.
///
/// It owns the controller.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    using ControllerFactory = std::function<CVextralRemoteControl *(const CSettings &settings)>;

    /// Uses the stack-switch controller.
    explicit CMainWindow(QWidget *parent = nullptr);
    /// Uses the controller that `makeController` returns; the window takes it over.
    explicit CMainWindow(const ControllerFactory &makeController, QWidget *parent = nullptr);
    ~CMainWindow() override;

signals:
    /// Another configuration is about to replace this one: what is typed or chosen is saved now or given up.
    void configurationAboutToChange();

private slots:
    void onAntennaDirectionTimer();
    void on_zoomInButton_clicked();
    void on_zoomInButton_2_clicked();
    void onTabChanged(int index);
    void onCurrentAntennaChanged(CVextralAntenna *antenna);
    void on_propertiesButton_clicked();
    void on_hidePropertiesButton_clicked();
    void onMemoryButtonShortcutTrigered();
    void onMemoryButtonClicked(bool b);
    void onMemoryValueChanged(int value);
    void on_plus180Button_clicked();
    void onAtennaButtonShortcutTrigered();
    void onAtennaTXButtonShortcutTrigered();
    void onAntennaRotationDone();
    void onShowSettingsDialog();
    void onShowAntennaLabelEditorDialog();
    void toggleRotor();
    void onRadioButtonShortcutTrigered();
    void on_pushButton_clicked();
    void onRotorRelayBoxIdChanged(int currentValue, int newValue);
    void onPreferenceMenuTriggered(bool c);
    void onEditLabelsMenuTriggered(bool c);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void buildForm();
    void showNewMap();
    void showIcon();
    void createMemoryRow();
    void createController(const ControllerFactory &makeController, const CSettings &settings);
    void connectController();
    void createHeldKeys();
    void createAntennaTabs();
    void createFixedShortcuts();
    void createDeviceShortcuts();
    void connectMenu();
    void connectConfigurationChange();

    void applySettings(const CSettings &settings);
    void applyIdentity(int relayBoxId, const QString &relayBoxName);
    void openPort(const QString &portName);

    void onStopRotating();
    void onSettingsAccepted(const QString &mode);

    void tearDown();

    std::unique_ptr<Ui::CMainWindow> m_ui;
    std::unique_ptr<CVextralRemoteControl> m_controller;
    std::unique_ptr<MemoryRow> m_memoryRow;
    std::unique_ptr<Shortcuts> m_shortcuts;
    std::unique_ptr<HeldKeys> m_heldKeys;
    std::unique_ptr<AntennaTabs> m_antennaTabs;
    std::unique_ptr<WindowModes> m_modes;
    std::unique_ptr<CloseRequests> m_closeRequests;
    std::unique_ptr<MapImageChoice> m_mapImageChoice;
    std::unique_ptr<SettingsDialogLoan> m_settingsDialog;
    /// Gone when the model's radios need the key.
    QPointer<QShortcut> m_rotorShortcut;
    bool m_changingRelayBox = false;
};
