// SPDX-License-Identifier: MIT
#pragma once

#include <QSpinBox>

/// Inline editor of a memory button: whole degrees 0..359, wrapping. Its button hides it.
class CMemoryButtonSpinEdit : public QSpinBox
{
    Q_OBJECT

public:
    explicit CMemoryButtonSpinEdit(QWidget *parent = nullptr);

signals:
    /// Return, Enter or loss of focus.
    void onLeave();
    /// The operator wants the former value back.
    void onEscape();

protected:
    bool event(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
