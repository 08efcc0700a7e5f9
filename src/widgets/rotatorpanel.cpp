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
    : QObject(frontPanel), display(new CRotationDigitalDisplayWidget(frontPanel)),
      ccwButton(new CAntennaButton(QStringLiteral("CCW"), frontPanel)),
      cwButton(new CAntennaButton(QStringLiteral("CW"), frontPanel)),
      stopButton(new CAntennaButton(QStringLiteral("STOP"), frontPanel)),
      dial(new CRotationDialWidget(frontPanel)), m_layout(frontPanel)
{
    place(display, displayPlace);
    placeButton(ccwButton, ccwPlace, tr("Turn counter-clockwise\tLeft or F10"));
    placeButton(cwButton, cwPlace, tr("Turn clockwise\tRight or F11"));
    placeButton(stopButton, stopPlace, stopTip());
    place(dial, dialPlace);
    connect(stopButton, &QAbstractButton::pressed, this, &RotatorPanel::onStopPressed);
    connect(stopButton, &CAntennaButton::onMouseUp, this, &RotatorPanel::onStopReleased);
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
    for (CAntennaButton *button : {ccwButton, stopButton, cwButton})
        button->fitCaption(std::clamp(button->width() / 5, smallestCaption, largestCaption));
}

bool RotatorPanel::isChoosing() const
{
    return display->isEditing() || dial->isPressed();
}

void RotatorPanel::showLamps(const Lamps &lamps)
{
    ccwButton->setChecked(lamps.ccw);
    stopButton->setChecked(lamps.stop);
    cwButton->setChecked(lamps.cw);

    const QString tip = lamps.stopAgain ? tr("the antenna is moving, press again") : stopTip();
    if (tip == stopButton->toolTip())
        return;
    stopButton->setToolTip(tip);
    if (lamps.stopAgain && stopButton->isVisible())
        QToolTip::showText(stopButton->mapToGlobal(stopButton->rect().bottomLeft()), tip, stopButton);
}

void RotatorPanel::showAzimuth(int degrees)
{
    // A dial that was brought back to where it started reports no end.
    if (!dial->isPressed())
        display->setEditing(false);
    display->setValue(degrees, false);
    display->setHighlighted(degrees != -1);
    display->update();
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
        return watched == stopButton && static_cast<const QMouseEvent *>(event)->button() != Qt::LeftButton;
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
