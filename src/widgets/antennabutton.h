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
    /// Takes the colour as the glow and shows it at once, even over the red look.
    void setColor(const QColor &color);

    bool isRedState() const { return m_redState; }
    /// Leaving the red state shows a white glow until the next setColor().
    void setRedState(bool red);

signals:
    /// The mouse went down or up on the button, whichever mouse button and whether or not it clicks.
    void onMouseDown();
    void onMouseUp();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QColor m_color = Qt::white;
    bool m_redState = false;
};
