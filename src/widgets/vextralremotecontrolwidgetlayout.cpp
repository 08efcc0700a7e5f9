#include "widgets/vextralremotecontrolwidget.h"

#include "device/vextralremotecontrol.h"
#include "widgets/antennabutton.h"
#include "widgets/ledbutton.h"

#include <QFontMetrics>
#include <QLabel>

#include <algorithm>
#include <utility>

// Where things stand on the panel: handed to the model, or, for a model without a layout of its own, a row of
// antenna buttons across the display area, the transmit buttons under them, the radios below.

namespace {

constexpr int margin = 6;
constexpr int topMargin = 4;
constexpr int leftColumn = 91;
constexpr int rightColumn = 85;
constexpr int titleBottom = 30;
constexpr int gap = 2;

const QPoint logoPlace(10, 4);
const QSize transmitSize(48, 20);
const QSize indicatorSize(45, 15);

constexpr int smallestCaption = 9;
constexpr int usualCaption = 11;
constexpr int largestCaption = 22;
/// Captions are measured in the title's font size: one more size would cost one more search for its font.
constexpr int measuredCaption = 20;
/// Border and padding of an antenna button, on both sides together.
constexpr int captionMargins = 12;

QFont captionFont(const QFont &font, int pixelSize)
{
    QFont result = font;
    result.setPixelSize(pixelSize);
    return result;
}

/// The pixel size at which the button's caption fills the button.
int fillingSize(const QAbstractButton *button)
{
    const QFontMetrics metrics(captionFont(button->font(), measuredCaption));
    const QSizeF needed = metrics.size(Qt::TextShowMnemonic, button->text());
    const QSizeF room = button->size() - QSize(captionMargins, captionMargins);
    if (needed.isEmpty())
        return largestCaption;
    return static_cast<int>(measuredCaption
                            * std::min(room.width() / needed.width(), room.height() / needed.height()));
}

/// One size for all, so that they look like a set: it grows with the buttons and gives way to long names.
void fitCaptions(const QList<CAntennaButton *> &buttons)
{
    if (buttons.isEmpty())
        return;
    const QSize room = buttons.first()->size();
    int size = std::clamp(std::min(room.width(), room.height()) / 5, usualCaption, largestCaption);
    for (const CAntennaButton *button : buttons)
        size = std::min(size, fillingSize(button));
    size = std::max(size, smallestCaption);
    for (CAntennaButton *button : buttons)
        button->setFont(captionFont(button->font(), size));
}

/// Cell `index` of `count` equal ones side by side in `row`, a gap apart.
QRect cell(const QRect &row, int index, int count)
{
    const int left = row.left() + row.width() * index / count;
    const int right = row.left() + row.width() * (index + 1) / count;
    return {left + gap / 2, row.top(), right - left - gap, row.height()};
}

QRect centred(const QSize &size, const QRect &room)
{
    QRect rect(QPoint(), size.boundedTo(room.size()));
    rect.moveCenter(room.center());
    return rect;
}

struct Rows
{
    QRect antennas;
    QRect transmit;
    QRect radios;
};

/// Antenna and radio rows share the height that a row of transmit buttons leaves, three to two.
Rows rowsIn(const QRect &area, bool withTransmit, bool withRadios)
{
    const int transmit = withTransmit ? std::min(transmitSize.height(), area.height() / 4) : 0;
    const int buttons = area.height() - transmit - (withTransmit ? gap : 0) - (withRadios ? gap : 0);
    const int radios = withRadios ? buttons * 2 / 5 : 0;
    Rows rows;
    rows.antennas = QRect(area.left(), area.top(), area.width(), buttons - radios);
    rows.transmit = QRect(area.left(), rows.antennas.bottom() + 1 + gap, area.width(), transmit);
    rows.radios = QRect(area.left(), area.bottom() + 1 - radios, area.width(), radios);
    return rows;
}

template <typename Button>
void fillRow(const QList<Button *> &buttons, const QRect &row)
{
    for (int i = 0; i < buttons.size(); ++i)
        buttons[i]->setGeometry(cell(row, i, buttons.size()));
}

} // namespace

void CVextralRemoteControlWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void CVextralRemoteControlWidget::relayout()
{
    if (!m_controller)
        return;
    if (m_controller->hasOwnPanel()) {
        const QSize before = size();
        m_controller->relayoutPanel(before.width(), before.height());
        // The model may have set a minimum size that made the panel grow under its layout.
        if (size() != before)
            m_controller->relayoutPanel(width(), height());
    } else {
        layoutOwnPanel();
    }
    fitCaptions(m_antennaButtons);
    fitCaptions(m_radioButtons);
}

QRect CVextralRemoteControlWidget::displayArea() const
{
    const bool hasLeftColumn = m_logoLabel || m_powerIndicator || m_splitIndicator;
    const int left = hasLeftColumn ? leftColumn : margin;
    const int right = m_largeInfoLabel ? rightColumn : margin;
    return {left, topMargin, width() - left - right, height() - topMargin - margin};
}

void CVextralRemoteControlWidget::layoutOwnPanel()
{
    if (m_logoLabel)
        m_logoLabel->move(logoPlace);
    layoutOwnButtons();
    layoutOwnIndicators();
    if (m_largeInfoLabel) {
        m_largeInfoLabel->setGeometry(width() - rightColumn + 1, 5, rightColumn, 20);
        m_smallInfoLabel->setGeometry(width() - rightColumn + 1, 25, rightColumn, 14);
    }
    if (m_titleLabel) {
        m_titleLabel->setAlignment(Qt::AlignCenter);
        m_titleLabel->setGeometry(0, 0, width(), titleBottom);
    }
}

void CVextralRemoteControlWidget::layoutOwnButtons()
{
    QRect area = displayArea().adjusted(gap, gap + 1, -gap, -gap - 1);
    if (m_titleLabel)
        area.setTop(titleBottom);
    const Rows rows = rowsIn(area, !m_txButtons.isEmpty(), !m_radioButtons.isEmpty());
    fillRow(m_antennaButtons, rows.antennas);
    fillRow(m_radioButtons, rows.radios);
    for (int i = 0; i < m_txButtons.size(); ++i)
        m_txButtons[i]->setGeometry(centred(transmitSize, cell(rows.transmit, i, m_txButtons.size())));
}

void CVextralRemoteControlWidget::layoutOwnIndicators()
{
    QList<CLedButton *> indicators{m_powerIndicator, m_sendIndicator, m_splitIndicator};
    indicators.removeAll(nullptr);
    const int top = m_logoLabel ? m_logoLabel->geometry().bottom() + 1 + gap : margin;
    const QRect column(0, top, leftColumn, height() - top - margin);
    const int stackHeight = indicators.size() * (indicatorSize.height() + gap) - gap;
    QRect place = centred({indicatorSize.width(), stackHeight}, column);
    place.setSize(indicatorSize);
    for (CLedButton *indicator : std::as_const(indicators)) {
        indicator->setGeometry(place);
        place.translate(0, indicatorSize.height() + gap);
    }
}
