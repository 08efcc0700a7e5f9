#include "widgets/rotationdigitaldisplaywidget.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

namespace {

constexpr QColor kFrameColor(60, 60, 60);
constexpr QColor kHighlightedColor(255, 153, 0);
constexpr QColor kPlainColor(102, 102, 102);
constexpr QColor kDisabledColor(51, 51, 51);

constexpr int kDigits = 3;
constexpr int kCornerRadius = 10;
constexpr int kTextTop = -8;
constexpr int kTextExtraHeight = 10;
constexpr int kFontExtraHeight = 12;
constexpr double kHeightToPointShift = 4.9;

constexpr int kWheelPauseMs = 1000;

// Qt registers the same file anew on every call, hence once for all displays.
QFont digitalFont()
{
    static const QStringList families =
        QFontDatabase::applicationFontFamilies(QFontDatabase::addApplicationFont(":/images/digital.ttf"));
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
    if (m_editing && !force)
        return;
    if (value < 0)
        value += 360;
    else if (value >= 360)
        value -= 360;
    if (value == m_value)
        return;
    m_value = value;
    setAccessibleDescription(describedValue(value));
}

void CRotationDigitalDisplayWidget::setHighlighted(bool highlighted)
{
    m_highlighted = highlighted;
    update();
}

void CRotationDigitalDisplayWidget::setEditing(bool editing)
{
    if (editing == m_editing)
        return;
    m_editing = editing;
    update();
}

QRect CRotationDigitalDisplayWidget::digitRect(const QSize &size, int digit)
{
    return {0, kTextTop, size.width() / kDigits * digit, size.height() + kTextExtraHeight};
}

QRect CRotationDigitalDisplayWidget::pointRect(const QSize &size, int digit)
{
    return digitRect(size, digit).translated(int(size.height() / kHeightToPointShift), 0);
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
    if (event->button() == Qt::LeftButton) {
        m_mouseMode = LeftHeld;
        m_startValue = m_value;
        setEditing(true);
        emit onRotationStarted();
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
    setEditing(true);
    if (m_wheelTimer.isActive())
        emit onRotationChanging(m_value);
    else
        emit onRotationStarted();
    update();
    m_wheelTimer.start(kWheelPauseMs);
}

void CRotationDigitalDisplayWidget::onWheelTimerCheck()
{
    m_wheelTimer.stop();
    setEditing(false);
    emit onRotationChanged(m_value);
}

void CRotationDigitalDisplayWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    paintPanel(painter);
    paintDigits(painter);
}

void CRotationDigitalDisplayWidget::paintPanel(QPainter &painter) const
{
    QPainterPath panel;
    panel.addRoundedRect(rect(), kCornerRadius, kCornerRadius);
    painter.setPen(QPen(kFrameColor, 2));
    painter.setBrush(Qt::black);
    painter.drawPath(panel);
}

void CRotationDigitalDisplayWidget::paintDigits(QPainter &painter) const
{
    QFont digitFont = font();
    digitFont.setPixelSize(height() + kFontExtraHeight);
    painter.setFont(digitFont);
    painter.setPen(digitColor());
    const QString text = digits();
    for (int digit = 1; digit <= kDigits; ++digit) {
        painter.drawText(digitRect(size(), digit), Qt::AlignRight, text.mid(digit - 1, 1));
        if (m_editing)
            painter.drawText(pointRect(size(), digit), Qt::AlignRight, QStringLiteral("."));
    }
}

QString CRotationDigitalDisplayWidget::digits() const
{
    return isEnabled() ? QString::asprintf("%03d", m_value) : QStringLiteral("---");
}

QColor CRotationDigitalDisplayWidget::digitColor() const
{
    if (!isEnabled())
        return kDisabledColor;
    return m_highlighted ? kHighlightedColor : kPlainColor;
}
