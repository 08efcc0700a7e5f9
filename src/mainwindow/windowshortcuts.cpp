#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "device/vextralremotecontrol.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QShortcut>

#include <algorithm>

// The window's function keys. A key may serve only one shortcut: two on the same key never fire.

namespace {

constexpr int firstTxKey = 5;
constexpr int firstRadioKey = 7;

QString functionKey(int number)
{
    return QStringLiteral("F%1").arg(number);
}

QString toolTipWithKey(const QString &kind, int number, const QString &keys)
{
    return QStringLiteral("%1%2\t%3").arg(kind, QString::number(number), keys);
}

/// Position of the sender in its list, -1 when it is not there.
int positionOf(const QObject *sender, const std::vector<QShortcut *> &shortcuts)
{
    const auto found = std::find(shortcuts.begin(), shortcuts.end(), sender);
    return found == shortcuts.end() ? -1 : static_cast<int>(found - shortcuts.begin());
}

} // namespace

QShortcut *CMainWindow::addShortcut(const QString &keys, void (CMainWindow::*slot)())
{
    auto *shortcut = new QShortcut(QKeySequence(keys), this);
    shortcut->setContext(Qt::WindowShortcut);
    // A key that is held down would switch a relay on and off many times.
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, slot);
    m_shortcuts.push_back(shortcut);
    return shortcut;
}

void CMainWindow::createFixedShortcuts()
{
    const int memories = static_cast<int>(m_memoryButtons.size()) - 1;
    for (int i = 0; i < memories; ++i) {
        const QString keys = QStringLiteral("Shift+F%1").arg(i + 1);
        m_memoryShortcuts.push_back(addShortcut(keys, &CMainWindow::onMemoryButtonShortcutTrigered));
        m_memoryButtons[i]->setToolTip(toolTipWithKey(QStringLiteral("M"), i + 1, keys));
        m_memoryButtons[i]->setAccessibleName(tr("Memory %1").arg(i + 1));
    }
    const QString plus180Keys = QStringLiteral("F12");
    addShortcut(plus180Keys, &CMainWindow::on_plus180Button_clicked);
    m_ui->plus180Button->setToolTip(tr("Opposite bearing") + QLatin1Char('\t') + plus180Keys);
    m_ui->plus180Button->setAccessibleName(tr("Opposite bearing"));
    m_rotorShortcut = addShortcut(QStringLiteral("F9"), &CMainWindow::toggleRotor);
}

void CMainWindow::createDeviceShortcuts()
{
    const QList<CAntennaButton *> rxButtons = m_ui->remoteControlWidget->antennaButtons();
    for (int i = 0; i < rxButtons.size(); ++i) {
        const QString keys = functionKey(i + 1);
        m_rxShortcuts.push_back(addShortcut(keys, &CMainWindow::onAtennaButtonShortcutTrigered));
        rxButtons[i]->setToolTip(toolTipWithKey(QStringLiteral("RX"), i + 1, keys));
    }
    const QList<CLedButton *> txButtons = m_ui->remoteControlWidget->txButtons();
    for (int i = 0; i < txButtons.size(); ++i) {
        const QString keys = functionKey(firstTxKey + i);
        m_txShortcuts.push_back(addShortcut(keys, &CMainWindow::onAtennaTXButtonShortcutTrigered));
        txButtons[i]->setToolTip(toolTipWithKey(QStringLiteral("TX"), i + 1, keys));
    }
    createRadioShortcuts();
}

void CMainWindow::connectMenu()
{
    const bool allowsSettingsDialog = m_controller->capabilityH();
    const bool allowsLabelEditor = m_controller->capabilityI();
    if (allowsSettingsDialog)
        addShortcut(QStringLiteral("Ctrl+F5"), &CMainWindow::onShowSettingsDialog);
    if (allowsLabelEditor)
        addShortcut(QStringLiteral("Ctrl+F6"), &CMainWindow::onShowAntennaLabelEditorDialog);
    m_ui->actionPreferences->setEnabled(allowsSettingsDialog);
    m_ui->actionLabels->setEnabled(allowsLabelEditor);
    connect(m_ui->actionPreferences, &QAction::triggered, this, &CMainWindow::onPreferenceMenuTriggered);
    connect(m_ui->actionLabels, &QAction::triggered, this, &CMainWindow::onEditLabelsMenuTriggered);
}

void CMainWindow::createRadioShortcuts()
{
    const int radios = m_controller->radioCount();
    for (int i = 0; i < radios; ++i) {
        m_radioShortcuts.push_back(
            addShortcut(functionKey(firstRadioKey + i), &CMainWindow::onRadioButtonShortcutTrigered));
    }
    if (radios == 0 || m_controller->rotorCount() > 0)
        return;
    m_shortcuts.erase(std::find(m_shortcuts.begin(), m_shortcuts.end(), m_rotorShortcut));
    delete m_rotorShortcut;
    m_rotorShortcut = nullptr;
}

void CMainWindow::onAtennaButtonShortcutTrigered()
{
    const int position = positionOf(sender(), m_rxShortcuts);
    if (position >= 0)
        m_ui->remoteControlWidget->antennaButtons().at(position)->click();
}

void CMainWindow::onAtennaTXButtonShortcutTrigered()
{
    const int position = positionOf(sender(), m_txShortcuts);
    if (position >= 0)
        m_ui->remoteControlWidget->txButtons().at(position)->click();
}

void CMainWindow::onRadioButtonShortcutTrigered()
{
    const int position = positionOf(sender(), m_radioShortcuts);
    if (position >= 0)
        m_controller->toggleRadio(position);
}

void CMainWindow::onMemoryButtonShortcutTrigered()
{
    const int position = positionOf(sender(), m_memoryShortcuts);
    if (position >= 0)
        recallMemory(position);
}
