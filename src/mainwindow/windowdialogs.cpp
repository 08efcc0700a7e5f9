#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "device/vextralremotecontrol.h"
#include "dialogs/antennalabeleditordialog.h"
#include "dialogs/settingsdialog.h"
#include "mainwindow/currentobjects.h"
#include "settings/relayboxswap.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QScopedValueRollback>

// What the window opens, and the change to another relay box. Dialogs are modal but run no event loop of
// their own: one that was opened inside a poll would stop the polling until it is closed.

namespace {

QString mapImagePath()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/AzimuthalMap.png");
}

std::vector<CAntennaButton *> toVector(const QList<CAntennaButton *> &buttons)
{
    return {buttons.begin(), buttons.end()};
}

/// Buttons show each "&" of a name doubled, so that it is no mnemonic.
QString nameOfCaption(const QString &caption)
{
    return QString(caption).replace(QLatin1String("&&"), QLatin1String("&"));
}

} // namespace

// ---- Settings
// -------------------------------------------------------------------------------------------------

void CMainWindow::onPreferenceMenuTriggered(bool c)
{
    Q_UNUSED(c)
    onShowSettingsDialog();
}

void CMainWindow::onShowSettingsDialog()
{
    CSettingsDIalog *dialog = CurrentObjects::settingsDialog();
    if (!dialog || dialog->isVisible() || !m_controller->capabilityH())
        return;
    on_hidePropertiesButton_clicked();
    dialog->setAntennaEditors(m_ui->tabWidget);
    dialog->setNameCaption(m_controller->modelName() + QLatin1String(" name:"));
    const bool hasId = m_controller->capabilityA();
    dialog->setIdRowVisible(hasId);
    if (hasId)
        dialog->setIdCaption(m_controller->modelName() + QLatin1String(" id:"));
    dialog->load();
    connect(dialog, &QDialog::finished, this, &CMainWindow::onSettingsDialogFinished, Qt::UniqueConnection);
    dialog->open();
}

void CMainWindow::onSettingsDialogFinished(int result)
{
    CSettingsDIalog *dialog = CurrentObjects::settingsDialog();
    m_ui->tabWidgetLayout->addWidget(dialog->takeAntennaEditors());
    m_ui->tabWidget->show();
    if (result != QDialog::Accepted)
        return;
    const QString mode = dialog->interfaceModeName();
    if (!mode.isEmpty())
        applyInterfaceMode(modeOfName(mode));
    applyIdentity(m_controller->relayBoxId(), CSettings().relayBoxName);
}

// ---- Labels
// ---------------------------------------------------------------------------------------------------

void CMainWindow::onEditLabelsMenuTriggered(bool c)
{
    Q_UNUSED(c)
    onShowAntennaLabelEditorDialog();
}

void CMainWindow::onShowAntennaLabelEditorDialog()
{
    if (!m_controller->capabilityI())
        return;
    auto *dialog = new CAntennaLabelEditorDialog(toVector(m_ui->remoteControlWidget->antennaButtons()),
                                                 toVector(m_ui->remoteControlWidget->radioButtons()), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { takeLabels(*dialog); });
    dialog->open();
}

void CMainWindow::takeLabels(const CAntennaLabelEditorDialog &dialog)
{
    CSettings settings;
    const QList<CAntennaButton *> antennaButtons = m_ui->remoteControlWidget->antennaButtons();
    const std::vector<CAntennaButton *> antennaCopies = dialog.antennaButtons();
    for (std::size_t i = 0; i < antennaCopies.size() && i < settings.names.size(); ++i) {
        const QString caption = antennaCopies[i]->text();
        antennaButtons[static_cast<int>(i)]->setText(caption);
        settings.names[i] = nameOfCaption(caption);
        if (CVextralAntenna *antenna = m_controller->antenna(static_cast<int>(i)))
            antenna->setName(settings.names[i]);
    }
    const QList<CAntennaButton *> radioButtons = m_ui->remoteControlWidget->radioButtons();
    const std::vector<CAntennaButton *> radioCopies = dialog.radioButtons();
    for (std::size_t i = 0; i < radioCopies.size() && i < settings.radioNames.size(); ++i) {
        radioButtons[static_cast<int>(i)]->setText(radioCopies[i]->text());
        settings.radioNames[i] = radioCopies[i]->text();
    }
    settings.save();
    m_ui->remoteControlWidget->relayout();
}

// ---- The map image
// --------------------------------------------------------------------------------------------

void CMainWindow::on_pushButton_clicked()
{
    auto *question = new QMessageBox(QMessageBox::Question, tr("Wait a minute!"),
                                     tr("Are you sure you want to select a new map image?"),
                                     QMessageBox::Yes | QMessageBox::No, this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QDialog::finished, this, [this](int answer) {
        if (answer != QMessageBox::No)
            chooseMapImage();
    });
    question->open();
}

void CMainWindow::chooseMapImage()
{
    auto *dialog = new QFileDialog(this, tr("Select a new map image"), QDir::homePath(),
                                   tr("Image Files (*.png *.jpg *.bmp)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &CMainWindow::installMapImage);
    dialog->open();
}

void CMainWindow::installMapImage(const QString &chosenFile)
{
    const QFileInfo chosen(chosenFile);
    const QFileInfo present(mapImagePath());
    if (!chosen.isFile())
        return;
    // The chosen file may be the one in place, which must not be removed before it is copied.
    if (chosen.canonicalFilePath() == present.canonicalFilePath()) {
        m_ui->azimuthalWidget->reloadMap();
        return;
    }
    const QString incoming = mapImagePath() + QLatin1String(".new");
    QFile::remove(incoming);
    if (!QFile::copy(chosenFile, incoming))
        return;
    QFile::remove(mapImagePath());
    if (QFile::rename(incoming, mapImagePath()))
        m_ui->azimuthalWidget->reloadMap();
}

// ---- Another relay box
// ----------------------------------------------------------------------------------------

void CMainWindow::onRotorRelayBoxIdChanged(int currentValue, int newValue)
{
    // Reopening the port polls, and a poll may report the same change again.
    if (m_changingRelayBox)
        return;
    const QScopedValueRollback<bool> changing(m_changingRelayBox, true);
    CSettingsDIalog *dialog = CurrentObjects::settingsDialog();
    if (dialog && dialog->isVisible())
        dialog->save();

    qDebug("CMainWindow::onRotorRelayBoxIdChanged() - O atual valor [%d] mudou para [%d]", currentValue,
           newValue);
    const CSettings settings = swapRelayBoxSettings(currentValue, newValue);
    m_controller->close();
    m_controller->applyRotorAssignment(&settings);
    applySettings(settings);
    for (CVextralAntenna *antenna : m_controller->antennas())
        antenna->refreshEditor();
    update();
    openPort(settings.comPortName);
    if (dialog && dialog->isVisible())
        dialog->load();
}
