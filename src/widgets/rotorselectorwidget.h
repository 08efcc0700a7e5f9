// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QWidget>

/// Strip of square cells to pick a rotor from: "X" for none, then 1, 2, ...
///
/// Cells count from 0 ("X"); the index seen from outside is the cell - 1, so -1 means no rotor. The
/// strip is three cells wide whatever the count, and a click picks by thirds of it: the index reported may be
/// a rotor that does not exist, which the receiver has to ignore.
class CRotorSelectorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CRotorSelectorWidget(QWidget *parent = nullptr);

    /// Number of numbered cells. 0 also selects "X".
    void setCount(int count);

    int currentIndex() const { return m_selection - 1; }
    void setCurrentIndex(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// The strip, and the outline of a cell, in widget pixels.
    static QRect stripRect(int cellSize);
    static QRect cellRect(int cellSize, int cell);

signals:
    void onCurrentIndexChanged(int value);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void select(int cell);
    void paintCell(QPainter &painter, int cell) const;

    int m_count = 2;
    int m_cellSize = 20;
    int m_selection = 0;
};
