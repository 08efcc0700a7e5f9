// SPDX-License-Identifier: MIT
#include "widgets/rotatorpanel.h"

#include "widgets/antennabutton.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>

namespace {

const QRect displayPlace(115, 5, 80, 45);
const QRect ccwPlace(5, 15, 35, 75);
const QRect cwPlace(75, 15, 35, 75);
const QRect stopPlace(40, 15, 35, 75);
const QRect dialPlace(115, 50, 80, 45);

constexpr int smallestCaption = 9;
constexpr int largestCaption = 16;

QString stopTip()
{
    return RotatorPanel::tr("Stop\tEsc");
}

} // namespace

RotatorPanel::RotatorPanel(QWidget *frontPanel)
    : QObject(frontPanel), m_display(new CRotationDigitalDisplayWidget(frontPanel)),
      m_ccwButton(new CAntennaButton(QStringLiteral("CCW"), frontPanel)),
      m_cwButton(new CAntennaButton(QStringLiteral("CW"), frontPanel)),
      m_stopButton(new CAntennaButton(QStringLiteral("STOP"), frontPanel)),
      m_dial(new CRotationDialWidget(frontPanel)), m_layout(frontPanel)
{
    place(m_display, displayPlace);
    placeButton(m_ccwButton, ccwPlace, tr("Turn counter-clockwise\tLeft or F10"));
    placeButton(m_cwButton, cwPlace, tr("Turn clockwise\tRight or F11"));
    placeButton(m_stopButton, stopPlace, stopTip());
    place(m_dial, dialPlace);
    connect(m_stopButton, &QAbstractButton::pressed, this, &RotatorPanel::onStopPressed);
    connect(m_stopButton, &CAntennaButton::onMouseUp, this, &RotatorPanel::onStopReleased);
    QCoreApplication::instance()->installEventFilter(this);
}

void RotatorPanel::place(QWidget *widget, const QRect &rect)
{
    widget->setGeometry(rect);
    widget->show();
    using Layout = C4SAnchorLayout;
    m_layout.addWidget(Layout::Scaled, Layout::Scaled, Layout::Scaled, Layout::Scaled, widget);
}

void RotatorPanel::placeButton(CAntennaButton *button, const QRect &rect, const QString &toolTip)
{
    button->setFocusPolicy(Qt::NoFocus); // the arrow keys and the space bar go on to the window
    button->setAccessibleName(toolTip.section(QLatin1Char('\t'), 0, 0));
    button->setToolTip(toolTip);
    place(button, rect);
}

void RotatorPanel::relayout()
{
    m_layout.relayout();
    for (CAntennaButton *button : {m_ccwButton, m_stopButton, m_cwButton})
        button->fitCaption(std::clamp(button->width() / 5, smallestCaption, largestCaption));
}

bool RotatorPanel::isChoosing() const
{
    return m_display->isEditing() || m_dial->isPressed();
}

void RotatorPanel::showLamps(const Lamps &lamps)
{
    m_ccwButton->setChecked(lamps.ccw);
    m_stopButton->setChecked(lamps.stop);
    m_cwButton->setChecked(lamps.cw);

    const QString tip = lamps.stopAgain ? tr("the antenna is moving, press again") : stopTip();
    if (tip == m_stopButton->toolTip())
        return;
    m_stopButton->setToolTip(tip);
    if (lamps.stopAgain && m_stopButton->isVisible())
        QToolTip::showText(m_stopButton->mapToGlobal(m_stopButton->rect().bottomLeft()), tip, m_stopButton);
}

void RotatorPanel::showAzimuth(int degrees)
{
    // A dial that was brought back to where it started reports no end.
    if (!m_dial->isPressed())
        m_display->setEditing(false);
    m_display->setValue(degrees, false);
    m_display->setHighlighted(degrees != -1);
    m_display->update();
}

bool RotatorPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (!isStop(watched, event))
        return false;
    // Who listens pumps events, which may delete the receiver of this one.
    const QPointer<QObject> receiver(watched);
    if (event->type() == QEvent::KeyPress)
        stopByKey();
    else
        emit onStopPressed();
    return receiver.isNull();
}

bool RotatorPanel::isStop(const QObject *watched, const QEvent *event) const
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto *key = static_cast<const QKeyEvent *>(event);
        return key->key() == Qt::Key_Escape && !key->isAutoRepeat() && !m_escapeSeen;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // The left one presses the button itself.
        return watched == m_stopButton && static_cast<const QMouseEvent *>(event)->button() != Qt::LeftButton;
    default:
        return false;
    }
}

void RotatorPanel::stopByKey()
{
    const QPointer<RotatorPanel> self(this);
    m_escapeSeen = true;
    emit onStopKey();
    if (self)
        QMetaObject::invokeMethod(
            this, [this] { m_escapeSeen = false; }, Qt::QueuedConnection);
}
