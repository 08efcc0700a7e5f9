// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class CSerialPortSelectionDialog;
}

/// Lists the serial ports that the system reports when the dialog is made, for the operator to pick one.
class CSerialPortSelectionDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CSerialPortSelectionDialog(QWidget *parent = nullptr);
    ~CSerialPortSelectionDialog() override;

    /// The name of the picked port, e.g. COM3; empty when none was picked.
    QString selectedPortName() const;

private slots:
    void on_okButton_clicked();

private:
    std::unique_ptr<Ui::CSerialPortSelectionDialog> m_ui;
};
