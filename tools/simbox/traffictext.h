// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// Bytes of the line, readable: "K0<CR><LF>", "ST=<8F><00>". A '<' of the line shows as "<3C>". Longer ones
/// than `limit` bytes are shortened and end with their full count.
QString trafficText(const QByteArray &bytes, int limit = 200);

/// Several pieces, separated by blanks.
QString trafficText(const QList<QByteArray> &pieces, int limit = 200);
