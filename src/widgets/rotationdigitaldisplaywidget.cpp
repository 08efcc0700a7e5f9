// SPDX-License-Identifier: MIT
#include "widgets/rotationdigitaldisplaywidget.h"

#include "compass/degrees.h"
#include "widgets/mouseposition.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

namespace {

constexpr QColor frameColor(60, 60, 60);
constexpr QColor highlightedColor(255, 153, 0);
constexpr QColor plainColor(102, 102, 102);
constexpr QColor disabledColor(51, 51, 51);

constexpr int digitCount = 3;
constexpr int cornerRadius = 10;
constexpr int textTop = -8;
constexpr int textExtraHeight = 10;
constexpr int fontExtraHeight = 12;
constexpr double heightToPointShift = 4.9;

constexpr int wheelPauseMs = 1000;

// Qt registers the same file anew on every call, hence once for all displays.
QFont digitalFont()
{
    static const QStringList families = QFontDatabase::applicationFontFamilies(
        QFontDatabase::addApplicationFont(QStringLiteral(":/images/digital.ttf")));
    return families.isEmpty() ? QFont() : QFont(families.first());
}

QString describedValue(int value)
{
    return CRotationDigitalDisplayWidget::tr("%1 degrees").arg(value);
}

} // namespace

CRotationDigitalDisplayWidget::CRotationDigitalDisplayWidget(QWidget *parent) : QWidget(parent)
{
    setFont(digitalFont());
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Azimuth display"));
    setAccessibleDescription(describedValue(m_value));
    connect(&m_wheelTimer, &QTimer::timeout, this, &CRotationDigitalDisplayWidget::onWheelTimerCheck);
}

QSize CRotationDigitalDisplayWidget::sizeHint() const
{
    return {90, 45};
}

QSize CRotationDigitalDisplayWidget::minimumSizeHint() const
{
    return {60, 30};
}

void CRotationDigitalDisplayWidget::setValue(int value, bool force)
{
    if (isEditing() && !force)
        return;
    const int folded = foldedDegrees(value);
    if (folded == m_value)
        return;
    m_value = folded;
    setAccessibleDescription(describedValue(folded));
}

void CRotationDigitalDisplayWidget::setHighlighted(bool highlighted)
{
    m_highlighted = highlighted;
    update();
}

void CRotationDigitalDisplayWidget::setEditing(bool editing)
{
    if (editing == m_claimed)
        return;
    m_claimed = editing;
    update();
}

void CRotationDigitalDisplayWidget::giveUp()
{
    const bool isChanging = m_mouseMode == LeftHeld || m_wheelTimer.isActive();
    m_mouseMode = Idle;
    m_wheelTimer.stop();
    m_claimed = false;
    update();
    if (isChanging)
        emit onRotationGivenUp();
}

void CRotationDigitalDisplayWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        giveUp();
}

void CRotationDigitalDisplayWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    // A window that is minimised is only out of sight.
    if (!event->spontaneous())
        giveUp();
}

QRect CRotationDigitalDisplayWidget::digitRect(const QSize &size, int digit)
{
    return {0, textTop, size.width() / digitCount * digit, size.height() + textExtraHeight};
}

QRect CRotationDigitalDisplayWidget::pointRect(const QSize &size, int digit)
{
    return digitRect(size, digit).translated(int(size.height() / heightToPointShift), 0);
}

int CRotationDigitalDisplayWidget::steppedValue(int value, bool up, bool byTens)
{
    const int start = byTens ? value / 10 * 10 : value;
    const int step = byTens ? 10 : 1;
    return up ? start + step : start - step;
}

void CRotationDigitalDisplayWidget::mousePressEvent(QMouseEvent *event)
{
    m_mouseMode = Idle;
    setEditing(false); // a second button ends a hold, whose release reports nothing then
    update();
    if (event->button() == Qt::LeftButton) {
        m_mouseMode = LeftHeld;
        m_startValue = m_value;
        m_pressPosition = mapToGlobal(mousePosition(event));
        emit onRotationStarted();
        // What listens claims the display and may ask the box, and the release may come meanwhile.
        if (m_mouseMode != LeftHeld)
            setEditing(false);
    } else if (event->button() == Qt::MiddleButton) {
        m_mouseMode = MiddleHeld;
    }
}

void CRotationDigitalDisplayWidget::mouseMoveEvent(QMouseEvent *)
{
    if (m_mouseMode != LeftHeld)
        return;
    update();
    emit onRotationChanging(m_value);
}

void CRotationDigitalDisplayWidget::mouseReleaseEvent(QMouseEvent *)
{
    const bool endsHold = m_mouseMode == LeftHeld;
    m_mouseMode = Idle;
    if (!endsHold)
        return;
    setEditing(false);
    update();
    if (m_value == m_startValue)
        return;
    m_startValue = -1;
    m_wheelTimer.stop(); // it would report the value once more, after the next poll has written over it
    emit onRotationChanged(m_value);
}

void CRotationDigitalDisplayWidget::wheelEvent(QWheelEvent *event)
{
    if (m_fixed)
        return;
    setValue(steppedValue(m_value, event->angleDelta().y() >= 0, m_mouseMode == MiddleHeld), true);
    const bool isDialling = m_wheelTimer.isActive();
    m_wheelTimer.start(wheelPauseMs);
    update();
    if (isDialling)
        emit onRotationChanging(m_value);
    else
        emit onRotationStarted();
    // The second begins when the box has been asked, unless the operator was interrupted meanwhile.
    if (m_wheelTimer.isActive())
        m_wheelTimer.start(wheelPauseMs);
}

void CRotationDigitalDisplayWidget::onWheelTimerCheck()
{
    m_wheelTimer.stop();
    setEditing(false);
    update();
    emit onRotationChanged(m_value);
}

void CRotationDigitalDisplayWidget::paintEvent(QPaintEvent *)
{
    const Look present = look();
    if (!(present == m_drawnLook)) {
        m_picture = drawn(present);
        m_drawnLook = present;
    }
    QPainter(this).drawPixmap(0, 0, m_picture);
}

CRotationDigitalDisplayWidget::Look CRotationDigitalDisplayWidget::look() const
{
    Look look;
    look.font = font();
    look.size = size();
    look.pixelRatio = devicePixelRatioF();
    look.digits = digits();
    look.color = digitColor();
    look.withPoints = isEditing();
    return look;
}

QPixmap CRotationDigitalDisplayWidget::drawn(const Look &look) const
{
    QPixmap picture((QSizeF(look.size) * look.pixelRatio).toSize());
    picture.setDevicePixelRatio(look.pixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    paintPanel(painter, look);
    paintDigits(painter, look);
    return picture;
}

void CRotationDigitalDisplayWidget::paintPanel(QPainter &painter, const Look &look)
{
    QPainterPath panel;
    panel.addRoundedRect(QRect(QPoint(), look.size), cornerRadius, cornerRadius);
    painter.setPen(QPen(frameColor, 2));
    painter.setBrush(Qt::black);
    painter.drawPath(panel);
}

void CRotationDigitalDisplayWidget::paintDigits(QPainter &painter, const Look &look) const
{
    QFont digitFont = font();
    digitFont.setPixelSize(look.size.height() + fontExtraHeight);
    painter.setFont(digitFont);
    painter.setPen(look.color);
    for (int digit = 1; digit <= digitCount; ++digit) {
        painter.drawText(digitRect(look.size, digit), Qt::AlignRight, look.digits.mid(digit - 1, 1));
        if (look.withPoints)
            painter.drawText(pointRect(look.size, digit), Qt::AlignRight, QStringLiteral("."));
    }
}

QString CRotationDigitalDisplayWidget::digits() const
{
    return isEnabled() ? QString::asprintf("%03d", m_value) : QStringLiteral("---");
}

QColor CRotationDigitalDisplayWidget::digitColor() const
{
    if (!isEnabled())
        return disabledColor;
    return m_highlighted ? highlightedColor : plainColor;
}
