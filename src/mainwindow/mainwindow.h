#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QSize>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class CAntennaLabelEditorDialog;
class CSettings;
class CVextralAntenna;
class CVextralRemoteControl;
class QPushButton;
class QShortcut;

namespace Ui {
class CMainWindow;
}

/// The program's only top-level window: it stands the controller, the front panel, the map, the antennas'
/// editors, the memories and the keyboard together, and keeps the window size of each interface mode in the
/// settings.
///
/// It owns the controller. Sizes are in pixels; azimuths are whole compass degrees.
class CMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    using ControllerFactory = std::function<CVextralRemoteControl *(const CSettings &settings)>;

    /// Stands on the stack switch.
    explicit CMainWindow(QWidget *parent = nullptr);
    /// Stands on the controller that `makeController` returns; the window takes it over.
    explicit CMainWindow(const ControllerFactory &makeController, QWidget *parent = nullptr);
    ~CMainWindow() override;

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
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    // mainwindow.cpp
    void showIcon();
    void collectMemoryButtons();
    void passDirectionKeysToWindow();
    void createSettingsDialog();
    void createController(const ControllerFactory &makeController, const CSettings &settings);
    void connectController();
    void createEditors();
    void applySettings(const CSettings &settings);
    void applyAntennaSettings(const CSettings &settings);
    void applyIdentity(int relayBoxId, const QString &relayBoxName);
    bool isTitledByName() const;
    void openPort(const QString &portName);
    void onStopRotating();
    void onNameEdited();

    // windowshortcuts.cpp
    QShortcut *addShortcut(const QString &keys, void (CMainWindow::*slot)());
    void createFixedShortcuts();
    void createDeviceShortcuts();
    void connectMenu();
    void createRadioShortcuts();

    // windowmemories.cpp
    void recallMemory(int position);
    int memoryPositionOf(const QObject *button) const;
    /// Turns the current antenna; the button is lit while the antenna is under way.
    void approach(QPushButton *button, int azimuth);
    void light(const QPushButton *approached);
    /// No antenna is on its way to what a memory holds any more.
    void forgetRecall();
    void onStartRotating(double angle);

    // windowmodes.cpp
    static int modeOfName(const QString &name);
    QSize *sizeOfMode(int mode);
    void applyInterfaceMode(int mode);
    void fitFramesToContent();
    void resizeSettled(const QSize &size);
    void hidePropertiesFrame();
    void storeSize(const QSize &size);

    // heldkeys.cpp
    void changeCurrentAntennaDirection(int direction);
    void stopCurrentAntenna();

    // windowdialogs.cpp
    void onSettingsDialogFinished(int result);
    void takeLabels(const CAntennaLabelEditorDialog &dialog);
    void chooseMapImage();
    void installMapImage(const QString &chosenFile);

    QSize m_extendedSize;
    QSize m_miniSize;
    QSize m_superMiniSize;
    bool m_keyHeld = false;
    bool m_keyRotating = false;
    QTimer m_directionTimer;
    /// Memory 1 to 10, then +180.
    std::vector<QPushButton *> m_memoryButtons;
    std::vector<QShortcut *> m_shortcuts;
    int m_interfaceMode = 0; ///< A CVextralRemoteControl::InterfaceMode.
    /// The size before the properties panel was opened.
    QSize m_savedSize;
    std::unique_ptr<Ui::CMainWindow> m_ui;
    /// Null when the model's radios need the key.
    QShortcut *m_rotorShortcut = nullptr;

    // Position in these lists is the number of the button that the shortcut stands for.
    std::vector<QShortcut *> m_memoryShortcuts;
    std::vector<QShortcut *> m_rxShortcuts;
    std::vector<QShortcut *> m_txShortcuts;
    std::vector<QShortcut *> m_radioShortcuts;

    QPointer<CVextralRemoteControl> m_controller;
    bool m_changingRelayBox = false;
    /// The memory recalled last and where it leads, in degrees.
    QPushButton *m_recalled = nullptr;
    int m_recalledAzimuth = 0;
};
