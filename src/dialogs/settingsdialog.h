// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPointer>

#include <memory>

namespace Ui {
class CSettingsDIalog;
}

/// Edits the settings that belong to no antenna: serial port, interface mode and stack name. It shows the
/// stack id, and gives room to the window's antenna editors while it is open.
///
/// The form is filled by load() and written when the dialog is accepted; Cancel writes nothing.
class CSettingsDIalog : public QDialog
{
    Q_OBJECT

public:
    explicit CSettingsDIalog(QWidget *parent = nullptr);
    ~CSettingsDIalog() override;

    void setVisible(bool visible) override;

    /// Fills the form from the settings file.
    void load();
    /// Writes the form to the settings file. A changed port name is answered with a box that says when it
    /// takes effect; the box does not wait for its answer here.
    void save();

    /// "extended", "mini" or "supermini"; empty when no mode is chosen.
    QString interfaceModeName() const;

    /// The captions of the stack's name and id, in plain text.
    void setNameCaption(const QString &caption);
    void setIdCaption(const QString &caption);
    void setIdRowVisible(bool visible);

    /// Shows `editors` in the dialog until takeAntennaEditors(). They become a child of the dialog.
    void setAntennaEditors(QWidget *editors);
    /// Returns the editors, for the caller to put them into a layout of its own; null when there are none.
    QWidget *takeAntennaEditors();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void onAccepted();
    void on_serialPortButton_clicked();

private:
    void checkInterfaceMode(const QString &mode);
    void tellPortTakesEffectLater();
    void showEditorArea(bool visible);

    std::unique_ptr<Ui::CSettingsDIalog> m_ui;
    QPointer<QWidget> m_antennaEditors;
};
