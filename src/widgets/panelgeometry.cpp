// SPDX-License-Identifier: MIT
#include "widgets/panelgeometry.h"

#include <QWidget>

#include <algorithm>

namespace {

constexpr int margin = 6;
constexpr int topMargin = 4;
constexpr int gap = 2;

// Beside the screen: logo and indicators on the left, the info labels on the right.
constexpr int leftColumn = 91;
constexpr int rightColumn = 85;
constexpr QPoint logoCorner(10, 4);
constexpr QSize indicatorSize(45, 15);
constexpr int infoTop = 5;
constexpr int largeInfoHeight = 20;
constexpr int smallInfoHeight = 14;
constexpr int titleHeight = 30;

// In rows
constexpr QSize rowTransmitSize(48, 20);
constexpr int rowSmallInfoTop = 25;

// In columns
constexpr unsigned columnCount = 4;
constexpr unsigned firstColumn = 92;
constexpr int besideColumns = 177;
constexpr int antennaTop = titleHeight;
constexpr int besideAntennas = 42;
constexpr int transmitTop = 35;
constexpr QSize columnTransmitSize(24, 20);
/// From its left edge to the column's right one.
constexpr unsigned transmitFromRight = 28;
constexpr int powerLeft = 20;
/// Wider than the room: the labels end beyond the panel.
constexpr int columnInfoWidth = 100;
constexpr QPoint columnTitleCorner(10, 1);

/// Cell `index` of `count` equal ones side by side in `row`, a gap apart.
QRect cell(const QRect &row, int index, int count)
{
    const int left = row.left() + row.width() * index / count;
    const int right = row.left() + row.width() * (index + 1) / count;
    return {left + gap / 2, row.top(), right - left - gap, row.height()};
}

std::vector<QRect> cells(const QRect &row, int count)
{
    std::vector<QRect> result;
    result.reserve(std::size_t(std::max(count, 0)));
    for (int i = 0; i < count; ++i)
        result.push_back(cell(row, i, count));
    return result;
}

QRect centred(const QSize &size, const QRect &room)
{
    QRect rect(QPoint(), size.boundedTo(room.size()));
    rect.moveCenter(room.center());
    return rect;
}

/// Antenna and radio rows share the height that a row of transmit buttons leaves, three to two.
void placeRows(PanelGeometry &geometry, const QRect &area, const PanelTraits &traits)
{
    const bool withTransmit = traits.transmitLines > 0;
    const bool withRadios = traits.radios > 0;
    const int transmit = withTransmit ? std::min(rowTransmitSize.height(), area.height() / 4) : 0;
    const int buttons = area.height() - transmit - (withTransmit ? gap : 0) - (withRadios ? gap : 0);
    const int radios = withRadios ? buttons * 2 / 5 : 0;
    const QRect antennaRow(area.left(), area.top(), area.width(), buttons - radios);
    const QRect transmitRow(area.left(), antennaRow.bottom() + 1 + gap, area.width(), transmit);
    const QRect radioRow(area.left(), area.bottom() + 1 - radios, area.width(), radios);

    geometry.antennas = cells(antennaRow, traits.antennas);
    geometry.radios = cells(radioRow, traits.radios);
    for (const QRect &room : cells(transmitRow, traits.transmitLines))
        geometry.transmitLines.push_back(centred(rowTransmitSize, room));
}

/// One under the other in the middle of the left column, under the logo.
void stackIndicators(PanelGeometry &geometry, const QSize &panel, const PanelTraits &traits)
{
    std::vector<QRect *> indicators;
    if (traits.hasSendAndPower)
        indicators = {&geometry.power, &geometry.send};
    if (traits.hasSplit)
        indicators.push_back(&geometry.split);
    const int count = static_cast<int>(indicators.size());
    const int top = traits.logo.isEmpty() ? margin : geometry.logo.bottom() + 1 + gap;
    const QRect column(0, top, leftColumn, panel.height() - top - margin);
    const int stackHeight = count * (indicatorSize.height() + gap) - gap;
    QRect place = centred({indicatorSize.width(), stackHeight}, column);
    place.setSize(indicatorSize);
    for (QRect *indicator : indicators) {
        *indicator = place;
        place.translate(0, indicatorSize.height() + gap);
    }
}

/// Width of an antenna's column. Below the smallest panel it wraps around, which only widgetPixels() makes
/// sane.
unsigned columnWidth(int panelWidth)
{
    return static_cast<unsigned>(panelWidth - besideColumns) / columnCount;
}

unsigned columnLeft(unsigned column, int panelWidth)
{
    return firstColumn + column * columnWidth(panelWidth);
}

int widgetPixels(unsigned pixels)
{
    return static_cast<int>(std::min<unsigned>(pixels, QWIDGETSIZE_MAX));
}

} // namespace

QRect PanelGeometry::screen(const QSize &panel, const PanelTraits &traits)
{
    const bool hasLeftColumn = !traits.logo.isEmpty() || traits.hasSendAndPower || traits.hasSplit;
    const int left = hasLeftColumn ? leftColumn : margin;
    const int right = traits.hasInfoLabels ? rightColumn : margin;
    return {left, topMargin, panel.width() - left - right, panel.height() - topMargin - margin};
}

PanelGeometry PanelGeometry::inRows(const QSize &panel, const PanelTraits &traits)
{
    PanelGeometry geometry;
    QRect area = screen(panel, traits).adjusted(gap, gap + 1, -gap, -gap - 1);
    if (traits.hasTitle)
        area.setTop(titleHeight);
    placeRows(geometry, area, traits);

    if (!traits.logo.isEmpty())
        geometry.logo = QRect(logoCorner, traits.logo);
    stackIndicators(geometry, panel, traits);
    if (traits.hasInfoLabels) {
        const int left = panel.width() - rightColumn + 1;
        geometry.largeInfo = QRect(left, infoTop, rightColumn, largeInfoHeight);
        geometry.smallInfo = QRect(left, rowSmallInfoTop, rightColumn, smallInfoHeight);
    }
    if (traits.hasTitle)
        geometry.title = QRect(0, 0, panel.width(), titleHeight);
    return geometry;
}

PanelGeometry PanelGeometry::inColumns(const QSize &panel, const PanelTraits &traits)
{
    PanelGeometry geometry;
    const int width = panel.width();
    for (int i = 0; i < traits.antennas; ++i) {
        geometry.antennas.emplace_back(widgetPixels(columnLeft(i, width)), antennaTop,
                                       widgetPixels(columnWidth(width)), panel.height() - besideAntennas);
        const QPoint corner(widgetPixels(columnLeft(i + 1, width) - transmitFromRight), transmitTop);
        if (i < traits.transmitLines)
            geometry.transmitLines.emplace_back(corner, columnTransmitSize);
    }

    if (traits.hasSendAndPower)
        geometry.power =
            QRect(QPoint(powerLeft, panel.height() / 2 - indicatorSize.height() / 2), indicatorSize);
    if (!traits.logo.isEmpty())
        geometry.logo = QRect(logoCorner, traits.logo);
    if (traits.hasInfoLabels) {
        const int left = width - rightColumn;
        geometry.largeInfo = QRect(left, infoTop, columnInfoWidth, largeInfoHeight);
        geometry.smallInfo = QRect(left, geometry.largeInfo.bottom(), columnInfoWidth, smallInfoHeight);
    }
    if (traits.hasTitle)
        geometry.title = QRect(columnTitleCorner, QSize(width - 2 * columnTitleCorner.x(), titleHeight));
    return geometry;
}
