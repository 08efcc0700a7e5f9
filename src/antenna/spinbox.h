// SPDX-License-Identifier: MIT
#pragma once

#include <QSpinBox>

/// A wrapping spin box with a signal for a confirmed value: on Return or Enter, or on every change.
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
