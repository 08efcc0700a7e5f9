// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class CSettings;
class CSettingsDIalog;
class CVextralAntenna;
class CVextralAntennaUI;
class CVextralAzimuthalWidget;
class CVextralRemoteControl;
class QLayout;
class QTabWidget;

/// The antennas' property editors, one tab for each antenna, in the order of the controller's list. They live
/// in the window's properties panel and are lent to the settings dialog while it is open.
///
/// Nothing is owned.
class AntennaTabs : public QObject
{
    Q_OBJECT

public:
    /// `home` is the layout that the tabs are in while they are not lent.
    AntennaTabs(QTabWidget *tabs, QLayout *home, CVextralRemoteControl *controller);

    /// Makes an editor for each antenna.
    void createEditors();
    /// Applies the settings to the antennas, their editors and their displays on `map`.
    void apply(const CSettings &settings, CVextralAzimuthalWidget *map);

    /// Brings the antenna's tab to the front; its rotor stays as it is.
    void select(const CVextralAntenna *antenna);
    /// The operator chose a tab: selects the rotor of its antenna.
    void followTab(int index);

    /// Moves the tabs into the dialog, until takeBack().
    void lendTo(CSettingsDIalog *dialog);
    void takeBack();
    bool areLent() const;

    /// Keeps the names that were typed without Return, or shows the kept ones again.
    void finishNames(bool keep);
    /// Ends what the operator is choosing in them.
    void giveUp();

signals:
    void nameEdited();

private:
    std::vector<CVextralAntennaUI *> editors() const;

    QPointer<QTabWidget> m_tabs;
    QPointer<QLayout> m_home;
    QPointer<CVextralRemoteControl> m_controller;
    QPointer<CSettingsDIalog> m_borrower;
};
