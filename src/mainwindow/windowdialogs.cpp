#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "device/vextralremotecontrol.h"
#include "dialogs/antennalabeleditordialog.h"
#include "dialogs/settingsdialog.h"
#include "mainwindow/currentobjects.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "settings/wholefile.h"
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/map/azimuthalmapimage.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/memorybutton.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QDir>
#include <QFileDialog>
#include <QImageReader>
#include <QMessageBox>
#include <QScopedValueRollback>

// What the window opens, and the change to another relay box. Dialogs are modal but run no event loop of
// their own: one that was opened inside a poll would stop the polling until it is closed.

namespace {

std::vector<CAntennaButton *> toVector(const QList<CAntennaButton *> &buttons)
{
    return {buttons.begin(), buttons.end()};
}

/// Gives the buttons the captions that were changed on their copies, and keeps them as names.
void takeCaptions(const std::vector<CAntennaButton *> &copies, const QList<CAntennaButton *> &buttons,
                  CSettings::Elements<QString> &names)
{
    for (int i = 0; i < buttons.size() && i < CSettings::elementCount; ++i) {
        const QString caption = copies[i]->text();
        if (caption == buttons[i]->text())
            continue;
        buttons[i]->setText(caption);
        names[i] = nameOfCaption(caption);
    }
}

} // namespace

// ---- Settings ----

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
    connect(dialog, &QDialog::finished, this, &CMainWindow::onSettingsDialogFinished);
    dialog->open();
}

void CMainWindow::onSettingsDialogFinished(int result)
{
    // The dialog serves every window of the process; it is this one's until it closes.
    CSettingsDIalog *dialog = CurrentObjects::settingsDialog();
    disconnect(dialog, &QDialog::finished, this, nullptr);
    m_ui->tabWidgetLayout->addWidget(dialog->takeAntennaEditors());
    m_ui->tabWidget->show();
    if (result != QDialog::Accepted)
        return;
    const QString mode = dialog->interfaceModeName();
    if (!mode.isEmpty())
        applyInterfaceMode(modeOfName(mode));
    applyIdentity(m_controller->relayBoxId(), CSettings().relayBoxName);
}

// ---- Labels ----

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
    takeCaptions(dialog.antennaButtons(), antennaButtons, settings.names);
    takeCaptions(dialog.radioButtons(), m_ui->remoteControlWidget->radioButtons(), settings.radioNames);
    settings.save();
    for (CVextralAntenna *antenna : m_controller->antennas()) {
        if (antenna->index() < antennaButtons.size())
            antenna->setName(settings.names[antenna->index()]);
    }
    m_ui->remoteControlWidget->relayout();
}

// ---- The map image ----

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
    if (!chosen.isFile() || !QImageReader(chosenFile).canRead())
        return;
    // The chosen file may be the one in place, which must not be removed before it is copied.
    const bool isInPlace =
        chosen.canonicalFilePath() == QFileInfo(AzimuthalMapImage::installedPath()).canonicalFilePath();
    if (isInPlace || copyWholeFile(chosenFile, AzimuthalMapImage::installedPath()))
        m_ui->azimuthalWidget->reloadMap();
}

// ---- Another relay box ----

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
    const CSettings settings = SettingsFile::ofThisProgram().exchange(currentValue, newValue);
    // What is being typed belongs to the box that went.
    for (auto *editor : findChildren<CAntennaLabelEditorDialog *>())
        editor->reject();
    for (auto *memory : findChildren<CMemoryButton *>())
        memory->abandonEdit();
    forgetRecall();
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
