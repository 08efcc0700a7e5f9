#pragma once

#include <QPointer>
#include <QWidget>

#include <memory>

class CColorWidget;
class CRotorSelectorWidget;
class CSpinBox;
class CVextralAntenna;
class QCheckBox;
class QLineEdit;
class QSpinBox;

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
    /// Stores the antenna and shows its name; CVextralAntenna::setEditor() fills the rest and calls this.
    void setAntenna(CVextralAntenna *antenna);
    void setRotorSelectorEnabled(bool enabled);

    QSpinBox *angleSpinBox() const;
    CSpinBox *turnToSpinBox() const;
    CColorWidget *colorWidget() const;
    QLineEdit *nameEdit() const;
    QCheckBox *enabledCheckBox() const;
    CRotorSelectorWidget *rotorSelector() const;

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
    /// Moves the rotor choice among the rotors that the controller has, and "none".
    void stepRotor(int step);

    QWidget *m_parent;
    QPointer<CVextralAntenna> m_antenna;
    std::unique_ptr<Ui::Form> m_ui;
};
