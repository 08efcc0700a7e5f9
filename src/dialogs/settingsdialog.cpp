// SPDX-License-Identifier: MIT
#include "dialogs/settingsdialog.h"

#include "dialogs/serialportselectiondialog.h"
#include "settings/interfacemode.h"
#include "settings/settings.h"
#include "ui_settingsdialog.h"
#include "widgets/latestyle.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QMessageBox>

#include <array>

namespace {

QString boldCaption(const QString &text)
{
    return QStringLiteral(
               "<html><head/><body><p><span style=\" font-weight:600;\">%1</span></p></body></html>")
        .arg(text.toHtmlEscaped());
}

/// By InterfaceMode.
std::array<QRadioButton *, interfaceModes.size()> modeButtonsOf(const Ui::CSettingsDIalog &ui)
{
    return {ui.extendedUIRadioButton, ui.miniUiRadioButton, ui.superMiniUIRadioButton};
}

} // namespace

CSettingsDIalog::CSettingsDIalog(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CSettingsDIalog>())
{
    new LateStyle(this);
    m_ui->setupUi(this);
    showEditorArea(false);
    connect(this, &QDialog::accepted, this, &CSettingsDIalog::onAccepted);
}

CSettingsDIalog::~CSettingsDIalog() = default;

void CSettingsDIalog::load()
{
    const CSettings settings;
    m_ui->serialPortLineEdit->setText(settings.comPortName);
    m_ui->relayIdLabel->setText(QString::number(settings.relayBoxId));
    m_ui->stackNameLineEdit->setText(settings.relayBoxName);
    checkInterfaceMode(settings.interfaceMode);
    if (!isVisible())
        m_ui->stackNameLineEdit->setFocus();
}

void CSettingsDIalog::save()
{
    qDebug("CSettingsDIalog::save() - IN");
    CSettings settings;
    const QString portName = m_ui->serialPortLineEdit->text();
    const bool portChanged = portName != settings.comPortName;
    settings.comPortName = portName;
    settings.interfaceMode = interfaceModeName();
    settings.relayBoxName = m_ui->stackNameLineEdit->text();
    settings.save();
    if (portChanged) {
        tellPortTakesEffectLater();
        return;
    }
    qDebug("CSettingsDIalog::save() - OUT");
}

QString CSettingsDIalog::interfaceModeName() const
{
    const auto buttons = modeButtonsOf(*m_ui);
    for (std::size_t mode = 0; mode < buttons.size(); ++mode) {
        if (buttons[mode]->isChecked())
            return interfaceModes[mode].word;
    }
    return {};
}

void CSettingsDIalog::setNameCaption(const QString &caption)
{
    m_ui->modelNameLabel->setText(boldCaption(caption));
    m_ui->stackNameLineEdit->setAccessibleName(caption);
}

void CSettingsDIalog::setIdCaption(const QString &caption)
{
    m_ui->modelIdLabel->setText(boldCaption(caption));
}

void CSettingsDIalog::setIdRowVisible(bool visible)
{
    m_ui->modelIdLabel->setVisible(visible);
    m_ui->relayIdLabel->setVisible(visible);
}

void CSettingsDIalog::setAntennaEditors(QWidget *editors)
{
    m_antennaEditors = editors;
    m_ui->antennaUILayout->addWidget(editors);
    showEditorArea(true);
}

QWidget *CSettingsDIalog::takeAntennaEditors()
{
    QWidget *editors = m_antennaEditors;
    if (editors == nullptr)
        return nullptr;
    m_antennaEditors.clear();
    m_ui->antennaUILayout->removeWidget(editors);
    showEditorArea(false);
    return editors;
}

void CSettingsDIalog::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // Return confirms a field of an antenna editor, not the dialog.
    if (isReturn && m_ui->antennaUIFrame->isAncestorOf(focusWidget()))
        return;
    QDialog::keyPressEvent(event);
}

void CSettingsDIalog::setVisible(bool visible)
{
    // Not before: looking for their icons in the desktop's theme takes longer than the rest of the dialog,
    // which every start of the program makes.
    if (visible && m_ui->buttonBox->standardButtons() == QDialogButtonBox::NoButton)
        m_ui->buttonBox->setStandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QDialog::setVisible(visible);
}

void CSettingsDIalog::onAccepted()
{
    save();
}

void CSettingsDIalog::on_serialPortButton_clicked()
{
    auto *chooser = new CSerialPortSelectionDialog(this);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    connect(chooser, &QDialog::accepted, this,
            [this, chooser] { m_ui->serialPortLineEdit->setText(chooser->selectedPortName()); });
    chooser->open();
}

void CSettingsDIalog::checkInterfaceMode(const QString &mode)
{
    const auto buttons = modeButtonsOf(*m_ui);
    // The checked button of an exclusive group refuses to be unchecked.
    for (QRadioButton *button : buttons)
        button->setAutoExclusive(false);
    for (std::size_t i = 0; i < buttons.size(); ++i)
        buttons[i]->setChecked(mode == interfaceModes[i].word);
    for (QRadioButton *button : buttons)
        button->setAutoExclusive(true);
}

void CSettingsDIalog::tellPortTakesEffectLater()
{
    // An accepted dialog has hidden itself by now.
    QWidget *owner = isVisible() ? this : parentWidget();
    auto *box =
        new QMessageBox(QMessageBox::Information, tr("Hold on"),
                        tr("As you changed serial port name, these settings will take effect only after "
                           "this software restarts."),
                        QMessageBox::Ok, owner);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void CSettingsDIalog::showEditorArea(bool visible)
{
    m_ui->label_3->setVisible(visible);
    m_ui->antennaUIFrame->setVisible(visible);
}
