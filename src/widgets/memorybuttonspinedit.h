#pragma once

#include <QSpinBox>

/// Inline editor of a memory button: whole degrees 0..359, wrapping. It hides itself when it is left.
class CMemoryButtonSpinEdit : public QSpinBox
{
    Q_OBJECT

public:
    explicit CMemoryButtonSpinEdit(QWidget *parent = nullptr);

signals:
    /// Return, Enter or loss of focus. Return on a focused editor emits it twice: hiding costs it the focus.
    void onLeave();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void leave();
};
