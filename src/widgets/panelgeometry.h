// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QSize>

#include <vector>

/// What the front panel of a model has.
struct PanelTraits
{
    int antennas = 0;
    int transmitLines = 0;
    int radios = 0;
    bool hasSendAndPower = false;
    bool hasSplit = false;
    bool hasInfoLabels = false;
    bool hasTitle = false;
    /// Empty without one.
    QSize logo;
};

/// The places of everything on a front panel, in its pixels, as a function of the panel's size and of what
/// the model has. Models choose one of the arrangements, or lay their panel out themselves.
///
///     inRows             title              inColumns          title
///             logo |  antennas  | info              logo |  TX   TX   TX  | info
///             lamps|  transmit  |                   lamp |  antennas      |
///                  |  radios    |                        |                |
struct PanelGeometry
{
    /// A row of antenna buttons across the dark screen, the transmit buttons under them, the radios below.
    static PanelGeometry inRows(const QSize &panel, const PanelTraits &traits);
    /// One column for each of four antennas, its transmit button over the right end of the antenna's. Of the
    /// indicators only POWER is shown. Defined for every size, tidy from the smallest on.
    static PanelGeometry inColumns(const QSize &panel, const PanelTraits &traits);
    static constexpr QSize smallestInColumns{418, 100};

    /// The dark screen in the middle of the face.
    static QRect screen(const QSize &panel, const PanelTraits &traits);

    std::vector<QRect> antennas;
    std::vector<QRect> transmitLines;
    std::vector<QRect> radios;

    // Null for elements that the panel does not have or does not show.
    QRect power;
    QRect send;
    QRect split;
    QRect logo;
    QRect largeInfo;
    QRect smallInfo;
    QRect title;
};
