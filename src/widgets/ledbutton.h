// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPushButton>

/// Checkable indicator button: a thin grey outline when dark, filled with its colour when lit (checked).
///
/// It draws itself by style sheet only. Sizes are pixels. The lit state asks for a minimum width of 80 px,
/// which counts in a layout; place the button by geometry where it must keep its size.
class CLedButton : public QPushButton
{
    Q_OBJECT

public:
    explicit CLedButton(QWidget *parent = nullptr);
    explicit CLedButton(const QString &text, QWidget *parent = nullptr);

    void setRadius(int radius);
    /// -1 leaves the font size to the surroundings; an explicit size also tightens the lit padding.
    void setFontSize(int size);
    void setBackgroundColor(const QColor &color);
    void setTextColor(const QColor &color);

private:
    void rebuildStyleSheet();

    QColor m_backgroundColor = Qt::red;
    QColor m_textColor = QColor(255, 255, 255);
    int m_radius = 10;
    int m_fontSize = -1;
};
