#pragma once

#include <QSpinBox>

/// A wrapping spin box that tells when its value is confirmed: by Return or Enter, or by every change of the
/// value.
class CSpinBox : public QSpinBox
{
    Q_OBJECT

public:
    explicit CSpinBox(QWidget *parent = nullptr);

    /// 0 confirms on Return and Enter, 1 on every value change, any other number never.
    void setConfirmMode(int mode);

signals:
    void onConfirm();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void onValueChanged(int v);

private:
    int m_confirmMode = 0;
};
