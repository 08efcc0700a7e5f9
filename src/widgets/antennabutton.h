// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPushButton>

/// Round, dark, glossy selection button that glows when checked: in its own colour, or red with white text.
///
/// It draws itself by style sheet only. The glow asks for a minimum width of 80 px, which counts in a layout;
/// place the button by geometry where it must keep its size.
class CAntennaButton : public QPushButton
{
    Q_OBJECT

public:
    explicit CAntennaButton(QWidget *parent = nullptr);
    explicit CAntennaButton(const QString &text, QWidget *parent = nullptr);

    QColor color() const { return m_color; }
    /// Sets the colour of the glow and shows it at once, also in the red state.
    void setColor(const QColor &color);

    bool isRedState() const { return m_redState; }
    /// Leaving the red state shows a white glow until the next setColor().
    void setRedState(bool red);

    /// Shows the caption in `pixelSize`, or fitted into the present size of the button by fittedCaption().
    /// text() stays whole; when it is cut, the tool tip begins with all of it.
    void fitCaption(int pixelSize);

signals:
    /// The mouse went down or up on the button, whichever mouse button and whether or not it clicks.
    void onMouseDown();
    void onMouseUp();

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// The part of text() that is shown.
    QString shownText() const;
    void composeToolTip();

    QColor m_color = Qt::white;
    bool m_redState = false;
    /// The text that was fitted, and the part of it that is shown.
    QString m_wholeText;
    QString m_fittedText;
    /// The tool tip as others set it, and as it was made of that.
    QString m_givenToolTip;
    QString m_composedToolTip;
};
