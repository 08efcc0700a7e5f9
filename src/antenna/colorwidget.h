// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPointer>
#include <QWidget>

class QColorDialog;

/// A colour swatch. A click, Space or Return opens the colour dialog, which leaves the event loop running.
class CColorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CColorWidget(QWidget *parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    /// Closes an open colour dialog without taking its colour.
    void abandonChoice();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The operator picked `color`.
    void onColorChanged(QColor color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void openDialog();
    void takeColor(const QColor &color);
    void describeColor();

    QColor m_color = Qt::blue;
    QPointer<QColorDialog> m_dialog;
};
