// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <QTimer>
#include <QWidget>

/// Shows an azimuth as three seven-segment digits, "000" to "359", and lets the operator dial it by wheel.
///
///     left press: held     release: no longer held; reports a value that differs from the one at the press
///     wheel:      dialling, prolonged by every step     1 s without a step: reports the value
///
/// It may be held and dialled at once; a release that reports ends the wheel run, too.
/// Values are whole compass degrees. While the operator is changing one, unforced sets are ignored, so the
/// polled angle never fights the operator. The middle button makes the wheel step in tens. Setting a value
/// neither repaints nor emits.
class CRotationDigitalDisplayWidget : public QWidget
{
    Q_OBJECT

public:
    explicit CRotationDigitalDisplayWidget(QWidget *parent = nullptr);

    int value() const { return m_value; }
    /// Ignored while editing, unless forced. Takes or adds 360 once: callers stay within one turn.
    void setValue(int value, bool force);

    /// Orange digits instead of grey ones.
    void setHighlighted(bool highlighted);

    /// Whether the operator is changing the value: by holding the display, by a wheel run, or elsewhere,
    /// which has claimed the display then.
    bool isEditing() const { return m_mouseMode == LeftHeld || m_wheelTimer.isActive() || m_claimed; }
    /// Claims the display for a change that is made elsewhere, or gives it back. A hold and a wheel run go
    /// on.
    void setEditing(bool editing);
    /// Ends hold, wheel run and claim; nothing is reported any more. Does so itself when it is disabled or
    /// hidden.
    void giveUp();

    /// A fixed display ignores the wheel.
    bool isFixed() const { return m_fixed; }
    void setFixed(bool fixed) { m_fixed = fixed; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Where digit 1, 2 or 3 is right-aligned in a display of that size.
    static QRect digitRect(const QSize &size, int digit);
    /// Where the decimal point after that digit is right-aligned.
    static QRect pointRect(const QSize &size, int digit);
    /// The value one wheel step on, not brought into one turn.
    static int steppedValue(int value, bool up, bool byTens);

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
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private slots:
    void onWheelTimerCheck();

private:
    enum MouseMode { Idle = 0, LeftHeld = 1, MiddleHeld = 4 };

    /// Everything that the picture shows.
    struct Look
    {
        QFont font;
        QSize size;
        qreal pixelRatio = 0.0;
        QString digits;
        QColor color;
        bool withPoints = false;

        bool operator==(const Look &other) const
        {
            return font == other.font && size == other.size && pixelRatio == other.pixelRatio
                && digits == other.digits && color == other.color && withPoints == other.withPoints;
        }
    };

    Look look() const;
    QPixmap drawn(const Look &look) const;
    static void paintPanel(QPainter &painter, const Look &look);
    void paintDigits(QPainter &painter, const Look &look) const;
    QString digits() const;
    QColor digitColor() const;

    int m_startValue = -1;
    int m_value = 0;
    bool m_highlighted = false;
    bool m_claimed = false;
    QTimer m_wheelTimer;
    MouseMode m_mouseMode = Idle;
    QPoint m_pressPosition;
    bool m_fixed = false;

    // The map below repaints the displays on each tick of its animation; few of them look otherwise then.
    Look m_drawnLook;
    QPixmap m_picture;
};
