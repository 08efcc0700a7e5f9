// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>
#include <QTimer>

class CMemoryButtonSpinEdit;

/// Button for a stored azimuth, whose text is the azimuth in whole degrees.
///
///     idle --press--> timing --release--> idle (a click)
///                     timing --1.5 s----> editing --Return, Enter, focus lost--> idle (value reported)
///                                         editing --press anywhere else -------> idle (value reported)
///                                         editing --Escape---------------------> idle (value dropped)
///
/// The editor is a child over the top of the button. A text that is no number opens it at 0. A
/// press beside it on its own button ends the edit and is no click.
class CMemoryButton : public QPushButton
{
    Q_OBJECT

public:
    explicit CMemoryButton(QWidget *parent = nullptr);

    /// A locked button has no long press.
    void setLocked(bool locked) { m_locked = locked; }

    bool isReadOnlyLook() const { return m_readOnlyLook; }
    void setReadOnlyLook(bool on);

    /// The last press opened the editor, so its release is no request to recall the value.
    bool isLongPressed() const { return m_longPressed; }
    /// Closes an open editor and takes its value, as if the operator had left it.
    void finishEdit();
    /// Closes an open editor without taking its value.
    void abandonEdit();

signals:
    /// The operator left the editor; value is 0..359 degrees and already the button's text.
    void onMemoryValueChanged(int value);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private slots:
    void timeout();
    void onSpinBoxLeave();

private:
    bool m_locked = false;
    bool m_readOnlyLook = false;
    CMemoryButtonSpinEdit *m_editor = nullptr;
    bool m_longPressed = false;
    QTimer m_longPressTimer;
    bool m_editing = false;
};
