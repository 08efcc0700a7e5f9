// SPDX-License-Identifier: MIT
#include "stationmap/stationmapdrawer.h"

#include "stationmap/stationmapfile.h"

#include <utility>

StationMapDrawer::StationMapDrawer(QObject *parent) : QThread(parent)
{
    connect(this, &QThread::finished, this, &StationMapDrawer::onFinished);
}

StationMapDrawer::~StationMapDrawer()
{
    wait();
}

void StationMapDrawer::order(const Order &order)
{
    m_waiting = order;
    if (!m_isBusy)
        startNext();
}

void StationMapDrawer::startNext()
{
    m_current = *std::exchange(m_waiting, std::nullopt);
    m_isBusy = true;
    start();
}

void StationMapDrawer::run()
{
    if (m_land.empty())
        m_land = readLandOutlines();
    m_image = m_current.map.drawn(m_land, m_current.side);
    m_file = m_current.asFile ? StationMapFile::encoded(m_image, m_current.map) : QByteArray();
}

void StationMapDrawer::onFinished()
{
    m_isBusy = false;
    const bool wasFile = m_current.asFile;
    const QImage image = m_image;
    const QByteArray file = m_file;
    // The listener may order the next one.
    if (m_waiting)
        startNext();
    if (wasFile)
        emit fileDrawn(file);
    else
        emit drawn(image);
}
