// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>
#include <optional>

class CVextralAntenna;

namespace Ui {
class Form;
}

/// The property editor of one antenna, a tab page. Every change reaches the antenna, the map and the settings
/// file at once; only the fields that the editor shows are changed in the file.
class CVextralAntennaUI : public QWidget
{
    Q_OBJECT

public:
    /// `rotorCount` is how many rotors the controller has.
    CVextralAntennaUI(int rotorCount, QWidget *parent);
    ~CVextralAntennaUI() override;

    CVextralAntenna *antenna() const;
    /// Stores the antenna and shows its name; bind() shows the rest and calls this.
    void setAntenna(CVextralAntenna *antenna);
    void setRotorSelectorEnabled(bool enabled);

    /// Takes the antenna and shows its angle, colour and name; "Turn to" starts at 0.
    void bind(CVextralAntenna *antenna);
    /// Shows the bound antenna's angle and rotor and, where a rotor turns it, whether it is in use. Runs at
    /// each poll and leaves what is being typed alone.
    void refresh();
    /// Shows all of the bound antenna, after its settings were loaded.
    void showSettings();

    /// Keeps a name that was typed without Return, or shows the kept one again.
    void finishName(bool keep);
    /// Closes what is open for a choice of the operator, without taking it.
    void giveUp();

signals:
    /// The operator gave the antenna another name; the antenna has it already.
    void onNameEdited();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private slots:
    void onTargetAngleValueChanged(int value);
    void onTargetConfirm();
    void onColorChanged(QColor color);
    void onRotorSelectorIndexChanged(int currentIndex);
    void on_nameEdit_returnPressed();
    void on_enabledCheckBox_clicked(bool checked);

private:
    /// Targets of the antenna in degrees, negative where it has none.
    struct Preview
    {
        double before;
        double shown;
    };

    void showName();
    void showTurnTo(int degrees);
    /// The tool tip of "Turn to": how to use it, or why it turns nothing.
    void explainTurnTo();
    /// Moves the rotor choice among the rotors that the controller has, and "none".
    void stepRotor(int step);
    /// Drops degrees that were typed into "Turn to" without confirming them, and restores the former
    /// target.
    void takePreviewBack();

    QPointer<CVextralAntenna> m_antenna;
    std::unique_ptr<Ui::Form> m_ui;
    /// Degrees that were typed into "Turn to", until they are confirmed.
    std::optional<Preview> m_preview;
};
