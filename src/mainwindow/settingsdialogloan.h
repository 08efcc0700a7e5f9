// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class AntennaTabs;
class CSettingsDIalog;
class CVextralRemoteControl;
class QWidget;

/// Opens the process's one settings dialog for a window and lends it the antennas' tabs meanwhile:
///
///     open() --the dialog closes--> the tabs are back, their names are kept or dropped --OK--> accepted()
///
/// The window that made the dialog owns it. When that window goes, the next open() makes another one.
class SettingsDialogLoan : public QObject
{
    Q_OBJECT

public:
    /// The first window of the process makes the dialog. `window` is not owned.
    explicit SettingsDialogLoan(QWidget *window);

    /// Opens the dialog unless it is open. Neither controller nor tabs are owned.
    void open(CVextralRemoteControl *controller, AntennaTabs *tabs);
    /// Closes the dialog when it is this window's or has its tabs. The window that has lent its tabs takes
    /// them back.
    void close();
    void saveWhereOpen();
    void reloadWhereOpen();

signals:
    /// The operator pressed OK. `mode` is the word of an interface mode, empty when none is chosen.
    void accepted(const QString &mode);

private:
    CSettingsDIalog *dialog();
    void onFinished(int result);

    QPointer<QWidget> m_window;
    QPointer<AntennaTabs> m_tabs;
};
