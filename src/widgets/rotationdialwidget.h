// SPDX-License-Identifier: MIT
#pragma once

#include <QLine>
#include <QPoint>
#include <QRect>
#include <QWidget>

/// Round knob that the operator drags up and down to set an azimuth, one degree per pixel.
///
/// Values are whole compass degrees. The knob sits at the top of the widget, centred, and shows relative
/// movement only: its pointer turns clockwise with the value, but value 0 points down and to the right.
/// Values set by the program are stored as given, without a repaint.
class CRotationDialWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CRotationDialWidget(QWidget *parent = nullptr);

    int value() const { return m_value; }
    /// Ignored while the dial is pressed, unless forced.
    void setValue(int value, bool force);

    /// Ends a hold; it reports no value any more. The dial does so itself when it is disabled or hidden.
    void giveUp();

    bool isPressed() const { return m_pressed; }
    void setPressed(bool pressed) { m_pressed = pressed; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// The knob's place in a widget of that size, in widget pixels.
    static QRect knobRect(const QSize &size);
    /// The pointer at value 0, seen from the knob's centre.
    static QLine pointerLine(int diameter);
    /// The value 0..359 after a drag of dy pixels (down is positive) that began at startValue.
    static int draggedValue(int startValue, int dy);

signals:
    void onRotationStarted();
    void onRotationChanging(int rotation);
    void onRotationChanged(int rotation);
    /// giveUp() has ended a change.
    void onRotationGivenUp();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void storeValue(int value);
    int valueAt(const QMouseEvent *event) const;
    void paintBackground(QPainter &painter, int diameter) const;
    void paintInnerDisc(QPainter &painter, int diameter) const;
    void paintPointer(QPainter &painter, int diameter) const;

    bool m_pressed = false;
    int m_startValue = 0;
    QPoint m_pressPosition; // global
    int m_value = 0;
    bool m_dragging = false; // pressed by the mouse on this dial, not by setPressed()
};
