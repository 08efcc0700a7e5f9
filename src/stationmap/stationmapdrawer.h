// SPDX-License-Identifier: MIT
#pragma once

#include "stationmap/stationmap.h"

#include <QByteArray>
#include <QThread>

#include <optional>

/// Draws maps in a thread of its own, one at a time. Of several maps that are ordered while another one is
/// being drawn only the last is drawn.
class StationMapDrawer : public QThread
{
    Q_OBJECT

public:
    explicit StationMapDrawer(QObject *parent = nullptr);
    /// Waits for a map that is being drawn, half a second at most.
    ~StationMapDrawer() override;

    struct Order
    {
        StationMap map;
        int side = 0; ///< Pixels.
        bool asFile = false;
    };
    void order(const Order &order);

signals:
    void drawn(const QImage &image);
    /// A map that was ordered as a file, as a PNG; empty when there is no memory for it.
    void fileDrawn(const QByteArray &file);

protected:
    void run() override;

private:
    void startNext();
    void onFinished();

    // The thread's own while it is busy.
    std::vector<Outline> m_land;
    Order m_current;
    QImage m_image;
    QByteArray m_file;

    std::optional<Order> m_waiting;
    bool m_isBusy = false;
};
