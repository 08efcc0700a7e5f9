// SPDX-License-Identifier: MIT
#include "dialogs/serialportselectiondialog.h"

#include "ui_serialportselectiondialog.h"

#include <QListWidgetItem>
#include <QSerialPortInfo>

namespace {

/// A list marks the first row as current, unseen, when the focus reaches it: show what will be taken.
void highlight(QListWidgetItem *item)
{
    if (item != nullptr)
        item->setSelected(true);
}

} // namespace

CSerialPortSelectionDialog::CSerialPortSelectionDialog(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CSerialPortSelectionDialog>())
{
    m_ui->setupUi(this);
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports)
        m_ui->listWidget->addItem(port.portName());
    connect(m_ui->listWidget, &QListWidget::currentItemChanged, this, &highlight);
    connect(m_ui->listWidget, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    // Not the list, which would make its first row current.
    m_ui->okButton->setFocus();
}

CSerialPortSelectionDialog::~CSerialPortSelectionDialog() = default;

QString CSerialPortSelectionDialog::selectedPortName() const
{
    const QListWidgetItem *item = m_ui->listWidget->currentItem();
    return item != nullptr ? item->text() : QString();
}

void CSerialPortSelectionDialog::on_okButton_clicked()
{
    accept();
}
